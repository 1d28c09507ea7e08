#pragma once

#include "engine/Session.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Runs T-SQL on a database of its own and says what came back, as text.
class TsqlRunner : public magdb::ResultSink {
public:
    TsqlRunner();
    ~TsqlRunner() override;

    /// Result sets as "type value|type value" with ";" between rows and " / " between sets; errors as "Msg
    /// number", in their place. Nothing for statements without either.
    std::string run(std::string_view sql);
    /// The same without types, rows only.
    std::string values(std::string_view sql);
    /// Names of the columns of the last result set, joined by "|".
    std::string names(std::string_view sql);
    /// Texts of all messages, one to a line, each behind its number.
    std::string messages(std::string_view sql);

    [[nodiscard]] magdb::Engine& engine() { return *m_engine; }
    [[nodiscard]] magdb::Session& session() { return *m_session; }

    void columns(const std::vector<magdb::ResultColumn>& columns) override;
    void row(std::span<const magdb::Value> values) override;
    void statementDone(std::optional<std::int64_t> rowCount, bool hadResult, bool inProcedure) override;
    void message(const magdb::ServerMessage& message) override;
    void databaseChanged(const std::string& from, const std::string& to) override;

private:
    std::filesystem::path m_folder;
    std::unique_ptr<magdb::Engine> m_engine;
    std::unique_ptr<magdb::Session> m_session;
    std::vector<magdb::ResultColumn> m_columns;
    bool m_typed = true;
    bool m_firstRow = true;
    std::string m_out;
    std::string m_messages;
};

/// A value as text: numbers as written, texts in quotes, dates as yyyy-mm-dd hh:mm:ss.mmm.
std::string describe(const magdb::Value& value);
