#include "engine/Sqlite.h"

#include "engine/Collation.h"
#include "engine/Convert.h"
#include "engine/Decimal.h"
#include "engine/Text.h"

#include <sqlite3.h>

#include <array>
#include <cstdio>
#include <utility>

namespace magdb {

namespace {

constexpr std::size_t kDecimalBytes = 16;

[[noreturn]] void fail(sqlite3* connection, int code) {
    throw SqliteError(connection != nullptr ? sqlite3_extended_errcode(connection) : code,
                      connection != nullptr ? sqlite3_errmsg(connection) : sqlite3_errstr(code));
}

}  // namespace

std::int64_t encodeDateTime(const DateTimeValue& value) {
    return std::int64_t{value.days} * kTicksPerDay + value.ticks;
}

DateTimeValue decodeDateTime(std::int64_t encoded) {
    std::int64_t days = encoded / kTicksPerDay;
    std::int64_t ticks = encoded % kTicksPerDay;
    if (ticks < 0) {
        ticks += kTicksPerDay;
        --days;
    }
    return {static_cast<std::int32_t>(days), static_cast<std::int32_t>(ticks)};
}

std::string encodeDecimal(const DecimalValue& value) {
    UInt128 shifted = static_cast<UInt128>(value.unscaled) ^ (UInt128(1) << 127);
    std::string bytes(kDecimalBytes, '\0');
    for (std::size_t i = kDecimalBytes; i-- > 0;) {
        bytes[i] = static_cast<char>(shifted & 0xFF);
        shifted >>= 8;
    }
    return bytes;
}

DecimalValue decodeDecimal(const void* blob, int size, int scale) {
    UInt128 shifted = 0;
    const auto* bytes = static_cast<const std::uint8_t*>(blob);
    for (int i = 0; i < size && i < static_cast<int>(kDecimalBytes); ++i) {
        shifted = shifted << 8 | bytes[i];
    }
    return {static_cast<Int128>(shifted ^ (UInt128(1) << 127)), static_cast<std::uint8_t>(scale)};
}

std::string sqliteLiteral(const Value& value) {
    if (isNull(value)) {
        return "NULL";
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        // The most negative number has no literal of its own: its digits alone are a float.
        return *integer == INT64_MIN ? "(-9223372036854775807-1)" : std::to_string(*integer);
    }
    if (const auto* real = std::get_if<double>(&value)) {
        std::array<char, 40> text{};
        std::snprintf(text.data(), text.size(), "%.17e", *real);
        return text.data();
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        return textLiteral(*text);
    }
    if (const auto* date = std::get_if<DateTimeValue>(&value)) {
        return std::to_string(encodeDateTime(*date));
    }
    if (const auto* bytes = std::get_if<Bytes>(&value)) {
        return "x'" + toHex(*bytes) + "'";
    }
    const std::string encoded = encodeDecimal(std::get<DecimalValue>(value));
    return "x'" + toHex(Bytes(encoded.begin(), encoded.end())) + "'";
}

std::int64_t packType(const SqlType& type) {
    return static_cast<std::int64_t>(type.id) | std::int64_t{type.precision} << 8 |
           std::int64_t{type.scale} << 16 | (std::int64_t{type.length} + 1) << 24;
}

SqlType unpackType(std::int64_t packed) {
    SqlType type;
    type.id = static_cast<TypeId>(packed & 0xFF);
    type.precision = static_cast<std::uint8_t>(packed >> 8 & 0xFF);
    type.scale = static_cast<std::uint8_t>(packed >> 16 & 0xFF);
    type.length = static_cast<int>((packed >> 24) - 1);
    return type;
}

std::string storageClass(const SqlType& type) {
    if (isText(type)) {
        return "TEXT COLLATE T";
    }
    if (type.id == TypeId::UniqueIdentifier) {
        return "TEXT";
    }
    if (isApproximate(type)) {
        return "REAL";
    }
    return isExact(type) || type.id == TypeId::VarBinary ? "BLOB" : "INTEGER";
}

Value readValue(sqlite3_value* value, const SqlType& type) {
    const int kind = sqlite3_value_type(value);
    if (kind == SQLITE_NULL) {
        return {};
    }
    if (isText(type) || type.id == TypeId::UniqueIdentifier) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        return std::string(text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
    if (isApproximate(type)) {
        return sqlite3_value_double(value);
    }
    if (isExact(type)) {
        const void* blob = sqlite3_value_blob(value);
        return decodeDecimal(blob, sqlite3_value_bytes(value), type.scale);
    }
    if (type.id == TypeId::VarBinary) {
        const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_value_blob(value));
        return Bytes(bytes, bytes + sqlite3_value_bytes(value));
    }
    const std::int64_t integer = sqlite3_value_int64(value);
    return isDate(type) ? Value(decodeDateTime(integer)) : Value(integer);
}

void returnValue(sqlite3_context* context, const Value& value) {
    if (isNull(value)) {
        sqlite3_result_null(context);
    } else if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        sqlite3_result_int64(context, *integer);
    } else if (const auto* real = std::get_if<double>(&value)) {
        sqlite3_result_double(context, *real);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        sqlite3_result_text64(context, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    } else if (const auto* date = std::get_if<DateTimeValue>(&value)) {
        sqlite3_result_int64(context, encodeDateTime(*date));
    } else if (const auto* bytes = std::get_if<Bytes>(&value)) {
        sqlite3_result_blob64(context,
                              bytes->empty() ? reinterpret_cast<const std::uint8_t*>("") : bytes->data(),
                              bytes->size(), SQLITE_TRANSIENT);
    } else {
        const std::string encoded = encodeDecimal(std::get<DecimalValue>(value));
        sqlite3_result_blob64(context, encoded.data(), encoded.size(), SQLITE_TRANSIENT);
    }
}

// ------------------------------------------------------------------------------------------- statements

SqliteStatement::SqliteStatement(sqlite3* connection, std::string_view sql) {
    const int code = sqlite3_prepare_v3(connection, sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &m_handle, nullptr);
    if (code != SQLITE_OK) {
        fail(connection, code);
    }
}

SqliteStatement::~SqliteStatement() {
    sqlite3_finalize(m_handle);
}

SqliteStatement::SqliteStatement(SqliteStatement&& other) noexcept
    : m_handle(std::exchange(other.m_handle, nullptr)) {}

SqliteStatement& SqliteStatement::operator=(SqliteStatement&& other) noexcept {
    std::swap(m_handle, other.m_handle);
    return *this;
}

void SqliteStatement::bind(int position, const Value& value) {
    if (magdb::isNull(value)) {
        sqlite3_bind_null(m_handle, position);
    } else if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        sqlite3_bind_int64(m_handle, position, *integer);
    } else if (const auto* real = std::get_if<double>(&value)) {
        sqlite3_bind_double(m_handle, position, *real);
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        sqlite3_bind_text64(m_handle, position, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    } else if (const auto* date = std::get_if<DateTimeValue>(&value)) {
        sqlite3_bind_int64(m_handle, position, encodeDateTime(*date));
    } else if (const auto* bytes = std::get_if<Bytes>(&value)) {
        sqlite3_bind_blob64(m_handle, position,
                            bytes->empty() ? reinterpret_cast<const std::uint8_t*>("") : bytes->data(),
                            bytes->size(), SQLITE_TRANSIENT);
    } else {
        const std::string encoded = encodeDecimal(std::get<DecimalValue>(value));
        sqlite3_bind_blob64(m_handle, position, encoded.data(), encoded.size(), SQLITE_TRANSIENT);
    }
}

void SqliteStatement::bind(int position, std::int64_t value) {
    sqlite3_bind_int64(m_handle, position, value);
}

void SqliteStatement::bind(int position, std::string_view value) {
    sqlite3_bind_text64(m_handle, position, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

bool SqliteStatement::step() {
    const int code = sqlite3_step(m_handle);
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        fail(sqlite3_db_handle(m_handle), code);
    }
    return false;
}

void SqliteStatement::reset() noexcept {
    sqlite3_reset(m_handle);
}

Value SqliteStatement::value(int column, const SqlType& type) const {
    return readValue(sqlite3_column_value(m_handle, column), type);
}

std::int64_t SqliteStatement::integer(int column) const {
    return sqlite3_column_int64(m_handle, column);
}

std::string SqliteStatement::text(int column) const {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_handle, column));
    return text == nullptr
               ? std::string()
               : std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(m_handle, column)));
}

bool SqliteStatement::isNull(int column) const {
    return sqlite3_column_type(m_handle, column) == SQLITE_NULL;
}

// ------------------------------------------------------------------------------------------- connections

SqliteConnection::SqliteConnection(const std::string& file) {
    const int code = sqlite3_open_v2(
        file.c_str(), &m_handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK) {
        const std::string text = m_handle != nullptr ? sqlite3_errmsg(m_handle) : sqlite3_errstr(code);
        sqlite3_close_v2(m_handle);
        throw SqliteError(code, text);
    }
    try {
        sqlite3_extended_result_codes(m_handle, 1);
        // Other processes on the same file are rare; sessions of this one queue before they write.
        sqlite3_busy_timeout(m_handle, 30000);
        registerCollations(m_handle);
        execute("PRAGMA journal_mode=WAL");
        execute("PRAGMA synchronous=NORMAL");
        execute("PRAGMA cache_size=-16000");
        execute("PRAGMA temp_store=MEMORY");
        execute("ATTACH ':memory:' AS tmp");
    } catch (...) {
        sqlite3_close_v2(m_handle);
        throw;
    }
}

SqliteConnection::~SqliteConnection() {
    sqlite3_close_v2(m_handle);
}

void SqliteConnection::execute(const std::string& sql) {
    const int code = sqlite3_exec(m_handle, sql.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        fail(m_handle, code);
    }
}

bool SqliteConnection::inTransaction() const {
    return sqlite3_get_autocommit(m_handle) == 0;
}

}  // namespace magdb
