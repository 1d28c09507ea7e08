#include "database/Worker.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <stdexcept>

namespace regalon::test {

Worker::Worker(const std::string& program, std::vector<std::string> arguments) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    posix_spawn_file_actions_addclose(&actions, ends[1]);
    arguments.insert(arguments.begin(),
                     (std::filesystem::path(REGALON_BINARY_DIR) / "bin" / program).string());
    std::vector<char*> texts;
    for (std::string& text : arguments)
        texts.push_back(text.data());
    texts.push_back(nullptr);
    const int result = posix_spawn(&process_, texts[0], &actions, nullptr, texts.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    output_ = ends[0];
    if (result != 0)
        throw std::runtime_error("no program: " + arguments.front());
}

Worker::~Worker() {
    kill();
    waitpid(process_, nullptr, 0);
    close(output_);
}

void Worker::kill() const {
    ::kill(process_, SIGKILL);
}

bool Worker::read(const std::function<void(const std::string&)>& take) {
    std::array<char, 4096> part{};
    const ssize_t length = ::read(output_, part.data(), part.size());
    if (length <= 0)
        return false;
    text_.append(part.data(), static_cast<std::size_t>(length));
    for (std::size_t end = text_.find('\n'); end != std::string::npos; end = text_.find('\n')) {
        const std::string line = text_.substr(0, end);
        text_.erase(0, end + 1);
        take(line);
    }
    return true;
}

}  // namespace regalon::test
