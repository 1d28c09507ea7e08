#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace magdb::server {

/// The command line makes no sense; the text says why.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum class Command : std::uint8_t { Help, Version, Serve, Run, AddLogin };

struct CommandLine {
    Command command = Command::Help;
    std::string database;
    std::uint16_t port = 0;
    std::string portFile;
    std::string traceFile;
    std::vector<std::string> scripts;
    std::string login;
};

/// Reads the arguments behind the program's name. Throws UsageError.
[[nodiscard]] CommandLine readCommandLine(const std::vector<std::string>& arguments);

[[nodiscard]] std::string helpText();

}  // namespace magdb::server
