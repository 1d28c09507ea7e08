#pragma once

#include "engine/SqlType.h"
#include "engine/Value.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;
struct sqlite3_value;
struct sqlite3_context;

namespace magdb {

/// How values stand in SQLite: integers and bit as INTEGER, real and float as REAL, text as TEXT,
/// uniqueidentifier as upper-case TEXT, date and datetime as INTEGER ticks since 1900-01-01, money and
/// decimal as a BLOB of 16 bytes (big-endian, offset by 2^127) whose byte order is the order of the numbers.
/// The scale of a number stands in its declared type alone.
[[nodiscard]] std::int64_t encodeDateTime(const DateTimeValue& value);
[[nodiscard]] DateTimeValue decodeDateTime(std::int64_t encoded);
[[nodiscard]] std::string encodeDecimal(const DecimalValue& value);
[[nodiscard]] DecimalValue decodeDecimal(const void* blob, int size, int scale);

/// A literal of SQLite for a value.
[[nodiscard]] std::string sqliteLiteral(const Value& value);
/// A type as one number, to hand it to functions inside SQLite, and back.
[[nodiscard]] std::int64_t packType(const SqlType& type);
[[nodiscard]] SqlType unpackType(std::int64_t packed);
/// INTEGER, REAL, TEXT COLLATE T or BLOB.
[[nodiscard]] std::string storageClass(const SqlType& type);

[[nodiscard]] Value readValue(sqlite3_value* value, const SqlType& type);
void returnValue(sqlite3_context* context, const Value& value);

/// A failure that SQLite reports by itself.
class SqliteError : public std::exception {
public:
    SqliteError(int resultCode, std::string text) : code(resultCode), m_text(std::move(text)) {}
    [[nodiscard]] const char* what() const noexcept override { return m_text.c_str(); }

    int code;  ///< extended result code

private:
    std::string m_text;
};

/// A prepared statement. Positions of parameters begin at 1, of columns at 0.
class SqliteStatement {
public:
    SqliteStatement() = default;
    SqliteStatement(sqlite3* connection, std::string_view sql);
    ~SqliteStatement();
    SqliteStatement(SqliteStatement&& other) noexcept;
    SqliteStatement& operator=(SqliteStatement&& other) noexcept;
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;

    void bind(int position, const Value& value);
    void bind(int position, std::int64_t value);
    void bind(int position, std::string_view value);
    /// True while there is a row. Throws SqliteError.
    bool step();
    /// Ready to run again; bindings stay.
    void reset() noexcept;

    [[nodiscard]] Value value(int column, const SqlType& type) const;
    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] std::string text(int column) const;
    [[nodiscard]] bool isNull(int column) const;

private:
    sqlite3_stmt* m_handle = nullptr;
};

/// Resets a statement at the end of a block, so that it holds no read transaction.
class SqliteReset {
public:
    explicit SqliteReset(SqliteStatement& statement) : m_statement(statement) {}
    ~SqliteReset() { m_statement.reset(); }
    SqliteReset(const SqliteReset&) = delete;
    SqliteReset& operator=(const SqliteReset&) = delete;

private:
    SqliteStatement& m_statement;
};

/// A connection to the database file with the memory store of its session attached as "tmp".
class SqliteConnection {
public:
    explicit SqliteConnection(const std::string& file);
    ~SqliteConnection();
    SqliteConnection(const SqliteConnection&) = delete;
    SqliteConnection& operator=(const SqliteConnection&) = delete;

    [[nodiscard]] sqlite3* handle() const { return m_handle; }
    void execute(const std::string& sql);
    [[nodiscard]] SqliteStatement prepare(std::string_view sql) { return {m_handle, sql}; }
    [[nodiscard]] bool inTransaction() const;

private:
    sqlite3* m_handle = nullptr;
};

}  // namespace magdb
