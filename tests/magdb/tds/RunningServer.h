#pragma once

#include "engine/Session.h"
#include "tds/Server.h"

#include <unistd.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

/// A server on a fresh database in a temporary folder, with the login regalon / Magazyn-2024.
class RunningServer {
public:
    explicit RunningServer(const magdb::tds::ServerOptions& options = {}) {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "magdb-").string() + std::string(6, 'X');
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        folder_ = pattern;
        engine_ = std::make_unique<magdb::Engine>((folder_ / "MAGAZYN.db").string());
        engine_->setLogin("regalon", "Magazyn-2024");
        server_ = std::make_unique<magdb::tds::Server>(*engine_, options);
        thread_ = std::thread([this] { server_->run(); });
    }
    ~RunningServer() {
        stop();
        server_.reset();
        engine_.reset();
        std::filesystem::remove_all(folder_);
    }
    RunningServer(const RunningServer&) = delete;
    RunningServer& operator=(const RunningServer&) = delete;

    [[nodiscard]] std::uint16_t port() const { return server_->port(); }
    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

    /// Returns when every connection has ended.
    void stop() {
        if (thread_.joinable()) {
            server_->stop();
            thread_.join();
        }
    }

private:
    std::filesystem::path folder_;
    std::unique_ptr<magdb::Engine> engine_;
    std::unique_ptr<magdb::tds::Server> server_;
    std::thread thread_;
};
