#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace regalon::test {

/// A program of the tests that works on a server as a process of its own, so that a kill cuts a call, an
/// answer or a connection wherever it is. It tells what it does in lines.
class Worker {
public:
    /// The program of this name in the folder of the built programs.
    Worker(const std::string& program, std::vector<std::string> arguments);
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void kill() const;
    [[nodiscard]] int output() const { return output_; }
    /// Reads what is there and hands on each whole line. False at the end.
    bool read(const std::function<void(const std::string&)>& take);

private:
    pid_t process_ = 0;
    int output_ = -1;
    std::string text_;
};

}  // namespace regalon::test
