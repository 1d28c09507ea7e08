#pragma once

#include "engine/Session.h"

#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// Keeps everything that a session sends.
class Collector : public magdb::ResultSink {
public:
    struct Result {
        std::vector<magdb::ResultColumn> columns;
        std::vector<std::vector<magdb::Value>> rows;
    };

    void columns(const std::vector<magdb::ResultColumn>& columns) override {
        results.push_back({columns, {}});
    }
    void row(std::span<const magdb::Value> values) override {
        results.back().rows.emplace_back(values.begin(), values.end());
    }
    void statementDone(std::optional<std::int64_t> rowCount, bool, bool) override {
        counts.push_back(rowCount);
    }
    void message(const magdb::ServerMessage& message) override { messages.push_back(message); }
    void databaseChanged(const std::string&, const std::string& to) override { database = to; }

    /// Numbers of the errors, in their order.
    [[nodiscard]] std::vector<int> errors() const {
        std::vector<int> numbers;
        for (const magdb::ServerMessage& message : messages) {
            if (message.severity > 10) {
                numbers.push_back(message.number);
            }
        }
        return numbers;
    }
    /// The first value of the last result; NULL without one.
    [[nodiscard]] magdb::Value single() const {
        return results.empty() || results.back().rows.empty() ? magdb::Value()
                                                              : results.back().rows.front().front();
    }

    std::vector<Result> results;
    std::vector<std::optional<std::int64_t>> counts;
    std::vector<magdb::ServerMessage> messages;
    std::string database;
};

/// A folder that goes with the test.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        m_path = std::filesystem::temp_directory_path() / ("magdb-engine-" + std::to_string(random()));
        std::filesystem::create_directories(m_path);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::string file(const std::string& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

/// Runs a batch and keeps its answer.
inline Collector runBatch(magdb::Session& session, std::string_view sql) {
    Collector answer;
    session.executeBatch(sql, answer);
    return answer;
}

/// The one number that a query gives; -1 when it gives none.
inline std::int64_t number(magdb::Session& session, std::string_view sql) {
    const magdb::Value value = runBatch(session, sql).single();
    const auto* found = std::get_if<std::int64_t>(&value);
    return found == nullptr ? -1 : *found;
}

/// The one text that a query gives.
inline std::string text(magdb::Session& session, std::string_view sql) {
    const magdb::Value value = runBatch(session, sql).single();
    const auto* found = std::get_if<std::string>(&value);
    return found == nullptr ? "<none>" : *found;
}
