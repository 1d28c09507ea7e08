#include "engine/Session.h"
#include "server/CommandLine.h"
#include "server/Script.h"
#include "tds/Server.h"

#include <sys/resource.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

using magdb::server::CommandLine;

/// The server that a signal stops.
std::atomic<magdb::tds::Server*> signalledServer{nullptr};

extern "C" void stopOnSignal(int /*signal*/) {
    if (auto* server = signalledServer.load()) {
        server->stop();
    }
}

/// Each session needs descriptors for its socket and its view of the file; the usual soft limit is too low
/// for a full house.
void raiseDescriptorLimit() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = limit.rlim_max;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
}

void requireFile(const std::string& file) {
    if (!std::filesystem::is_regular_file(file)) {
        throw std::runtime_error(file + ": no such database; 'magdb run' makes one");
    }
}

/// Written aside and renamed, so that whoever waits for the file never reads half a number.
void writePortFile(const std::string& file, std::uint16_t port) {
    const std::string aside = file + ".new";
    {
        std::ofstream out(aside);
        out << port << '\n';
        if (!out.flush()) {
            throw std::runtime_error(aside + ": cannot be written");
        }
    }
    std::filesystem::rename(aside, file);
}

int serve(const CommandLine& line) {
    requireFile(line.database);
    raiseDescriptorLimit();
    magdb::Engine engine(line.database);
    magdb::tds::Server server(engine, {.port = line.port, .traceFile = line.traceFile});
    signalledServer = &server;
    std::signal(SIGTERM, stopOnSignal);
    std::signal(SIGINT, stopOnSignal);
    std::cout << "magdb: listening on 127.0.0.1:" << server.port() << std::endl;
    if (!line.portFile.empty()) {
        writePortFile(line.portFile, server.port());
    }
    server.run();
    signalledServer = nullptr;
    return 0;
}

int run(const CommandLine& line) {
    magdb::Engine engine(line.database);
    const auto session = engine.connectAsOwner();
    for (const std::string& script : line.scripts) {
        std::ifstream in(script, std::ios::binary);
        std::ostringstream text;
        if (!in || !(text << in.rdbuf())) {
            throw std::runtime_error(script + ": cannot be read");
        }
        if (!magdb::server::runScript(*session, script, text.str(), std::cout, std::cerr)) {
            return 1;
        }
    }
    return 0;
}

int addLogin(const CommandLine& line) {
    requireFile(line.database);
    std::string password;
    std::getline(std::cin, password);
    if (!password.empty() && password.back() == '\r') {
        password.pop_back();
    }
    if (password.empty()) {
        throw std::runtime_error("the first line of standard input must be the password");
    }
    magdb::Engine(line.database).setLogin(line.login, password);
    return 0;
}

int execute(const CommandLine& line) {
    switch (line.command) {
        case magdb::server::Command::Help:
            std::cout << magdb::server::helpText();
            return 0;
        case magdb::server::Command::Version:
            std::cout << "magdb " MAGDB_VERSION "\n";
            return 0;
        case magdb::server::Command::Serve:
            return serve(line);
        case magdb::server::Command::Run:
            return run(line);
        case magdb::server::Command::AddLogin:
            return addLogin(line);
    }
    return 2;
}

}  // namespace

int main(int count, char** words) {
    try {
        return execute(magdb::server::readCommandLine({words + 1, words + count}));
    } catch (const magdb::server::UsageError& error) {
        std::cerr << "magdb: " << error.what() << "\nTry 'magdb --help'.\n";
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "magdb: " << error.what() << '\n';
        return 1;
    }
}
