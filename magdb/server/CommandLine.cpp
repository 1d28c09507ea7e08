#include "server/CommandLine.h"

#include <charconv>
#include <map>
#include <utility>

namespace magdb::server {

namespace {

std::uint16_t readPort(const std::string& text) {
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw UsageError("'" + text + "' is not a port");
    }
    return port;
}

Command readCommand(const std::string& word) {
    static const std::map<std::string, Command> commands = {
        {"--help", Command::Help}, {"-h", Command::Help}, {"--version", Command::Version},
        {"serve", Command::Serve}, {"run", Command::Run}, {"add-login", Command::AddLogin},
    };
    const auto found = commands.find(word);
    if (found == commands.end()) {
        throw UsageError("unknown command '" + word + "'");
    }
    return found->second;
}

/// Takes the options off the front to back; what is no option is returned in order.
std::vector<std::string> readOptions(const std::vector<std::string>& words, CommandLine& line) {
    const bool serves = line.command == Command::Serve;
    std::vector<std::string> rest;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--help" || word == "-h") {
            line.command = Command::Help;
            return {};
        }
        if (word.size() < 2 || word.front() != '-') {
            rest.push_back(word);
            continue;
        }
        const bool known = word == "--database" ||
                           (serves && (word == "--port" || word == "--port-file" || word == "--trace"));
        if (!known) {
            throw UsageError("unknown option '" + word + "'");
        }
        if (++i == words.size() || words[i].empty()) {
            throw UsageError("'" + word + "' needs a value");
        }
        if (word == "--database") {
            line.database = words[i];
        } else if (word == "--port") {
            line.port = readPort(words[i]);
        } else if (word == "--port-file") {
            line.portFile = words[i];
        } else {
            line.traceFile = words[i];
        }
    }
    return rest;
}

}  // namespace

CommandLine readCommandLine(const std::vector<std::string>& arguments) {
    if (arguments.empty()) {
        throw UsageError("a command is missing");
    }
    CommandLine line;
    line.command = readCommand(arguments.front());
    if (line.command == Command::Help || line.command == Command::Version) {
        return line;
    }
    std::vector<std::string> rest = readOptions(arguments, line);
    if (line.command == Command::Help) {
        return line;
    }
    if (line.database.empty()) {
        throw UsageError("--database is missing");
    }
    switch (line.command) {
        case Command::Serve:
            if (!rest.empty()) {
                throw UsageError("'" + rest.front() + "' is too much");
            }
            break;
        case Command::Run:
            if (rest.empty()) {
                throw UsageError("a script is missing");
            }
            line.scripts = std::move(rest);
            break;
        default:
            if (rest.size() != 1) {
                throw UsageError("add-login takes one name");
            }
            line.login = rest.front();
    }
    return line;
}

std::string helpText() {
    return R"(magdb - a local database server: T-SQL over TDS 7.1 to 7.4 on one SQLite file

  magdb serve --database FILE [--port N] [--port-file FILE] [--trace FILE]
      Serves the file on 127.0.0.1. Port 0, the default, takes a free one. The port is printed once the
      server listens, and written to the port file. The trace takes every request as it comes, a line each:
      session, BATCH, RPC or TRANSACTION, and the text, separated by tabs. SIGTERM or SIGINT stops the server.

  magdb run --database FILE SCRIPT...
      Runs T-SQL scripts on the file, which is created when it is missing. GO alone on a line ends a batch.
      Stops at the first error with exit code 1.

  magdb add-login --database FILE NAME
      Stores a login of the file. The password is the first line of standard input.

  magdb --help | --version

Exit codes: 0 success, 1 failure, 2 wrong usage.
)";
}

}  // namespace magdb::server
