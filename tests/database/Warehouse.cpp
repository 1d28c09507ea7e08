#include "database/Warehouse.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

namespace regalon::test {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Login =
    "DRIVER=FreeTDS;TDS_Version=7.4;UID=regalon;PWD=Magazyn-2024;DATABASE=MAGAZYN;";

constexpr std::chrono::milliseconds LookAgain{10};

fs::path makeFolder() {
    std::string pattern = (fs::temp_directory_path() / "regalon-database-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no folder for the test");
    return pattern;
}

std::string waitForPort(const fs::path& file, pid_t server) {
    for (int i = 0; i < 1000; ++i) {
        std::string port;
        if (std::ifstream(file) >> port)
            return port;
        if (waitpid(server, nullptr, WNOHANG) != 0)
            throw std::runtime_error("magdb ended at its start");
        std::this_thread::sleep_for(LookAgain);  // wait: nothing tells when the port file appears
    }
    throw std::runtime_error("magdb did not start within 10 seconds");
}

bool isGo(const std::string& line) {
    const auto first = line.find_first_not_of(" \t");
    const auto last = line.find_last_not_of(" \t\r");
    return first != std::string::npos && last - first == 1 && (line[first] | 0x20) == 'g' &&
           (line[last] | 0x20) == 'o';
}

}  // namespace

Warehouse::Warehouse(Content content) : folder_(makeFolder()) {
    if (const char* given = std::getenv("REGALON_TEST_SERVER"); given != nullptr && *given != '\0') {
        connectionString_ = given;
        OdbcConnection connection = connect();
        install(connection, "install.list");
        if (content == Content::Demo)
            install(connection, "demo.list");
    } else {
        copyDatabase(content);
        startServer();
    }
}

Warehouse::~Warehouse() {
    if (server_ != 0) {
        kill(server_, SIGTERM);
        waitpid(server_, nullptr, 0);
    }
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void Warehouse::copyDatabase(Content content) {
    const fs::path built = fs::path(REGALON_BINARY_DIR) / "share" / (content == Content::Demo ? "" : "empty");
    fs::copy_file(built / "MAGAZYN.db", folder_ / "MAGAZYN.db");
}

void Warehouse::killServer() {
    kill(server_, SIGKILL);
    waitpid(server_, nullptr, 0);
    server_ = 0;
    fs::remove(folder_ / "port");
}

void Warehouse::startServer() {
    const fs::path database = folder_ / "MAGAZYN.db";
    const fs::path portFile = folder_ / "port";
    std::string program = (fs::path(REGALON_BINARY_DIR) / "bin" / "magdb").string();
    std::string file = database.string();
    std::string port = portFile.string();
    std::string serve = "serve";
    std::string databaseOption = "--database";
    std::string portOption = "--port-file";
    std::array<char*, 7> arguments{program.data(), serve.data(),      databaseOption.data(),
                                   file.data(),    portOption.data(), port.data(),
                                   nullptr};
    if (posix_spawn(&server_, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0) {
        server_ = 0;
        throw std::runtime_error("magdb does not run: " + program);
    }
    connectionString_ = std::string(Login) + "SERVER=127.0.0.1;PORT=" + waitForPort(portFile, server_) + ";";
}

std::string Warehouse::connectionString(const std::string& workstation) const {
    return workstation.empty() ? connectionString_ : connectionString_ + "WSID=" + workstation + ";";
}

OdbcConnection Warehouse::connect(const std::string& workstation) const {
    return OdbcConnection(connectionString(workstation));
}

std::vector<fs::path> scriptsOf(std::string_view list) {
    const fs::path room = fs::path(REGALON_SOURCE_DIR) / "database";
    std::ifstream file(room / list);
    std::vector<fs::path> scripts;
    for (std::string line; std::getline(file, line);)
        if (!line.empty() && line.front() != '#')
            scripts.push_back(room / line);
    if (scripts.empty())
        throw std::runtime_error("no scripts in " + std::string(list));
    return scripts;
}

std::vector<std::string> batchesOf(const fs::path& script) {
    std::ifstream file(script);
    if (!file)
        throw std::runtime_error("no script " + script.string());
    std::vector<std::string> batches(1);
    for (std::string line; std::getline(file, line);) {
        if (isGo(line))
            batches.emplace_back();
        else
            batches.back() += line + "\n";
    }
    if (batches.back().find_first_not_of(" \t\r\n") == std::string::npos)
        batches.pop_back();
    return batches;
}

void install(OdbcConnection& connection, std::string_view list) {
    for (const fs::path& script : scriptsOf(list))
        for (const std::string& batch : batchesOf(script))
            connection.run(batch);
}

Answer call(OdbcConnection& connection, const std::string& procedure, const std::string& arguments) {
    const Rows rows =
        connection.run("DECLARE @Value int; DECLARE @Message nvarchar(250); EXEC @Value = " + procedure +
                       " " + arguments + ", @Message OUTPUT; SELECT @Value, @Message;");
    return {rows.whole(0, 0), rows.text(0, 1)};
}

}  // namespace regalon::test
