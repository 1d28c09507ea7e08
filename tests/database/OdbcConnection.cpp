#include "database/OdbcConnection.h"

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <array>

namespace regalon::test {
namespace {

std::u16string wide(std::string_view utf8) {
    std::u16string out;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        char32_t code = length == 1 ? lead : lead & (0x7F >> length);
        for (std::size_t k = 1; k < length && i + k < utf8.size(); ++k)
            code = (code << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        if (code >= 0x10000) {
            out += static_cast<char16_t>(0xD7C0 + (code >> 10));
            out += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
        } else {
            out += static_cast<char16_t>(code);
        }
        i += length;
    }
    return out;
}

void append(std::string& out, char32_t code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

/// The database holds no text outside the basic plane.
std::string narrow(const SQLWCHAR* text, std::size_t length) {
    std::string out;
    for (std::size_t i = 0; i < length; ++i)
        append(out, text[i]);
    return out;
}

[[noreturn]] void fail(SQLSMALLINT kind, SQLHANDLE handle) {
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 2048> text{};
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    if (!SQL_SUCCEEDED(SQLGetDiagRecW(kind, handle, 1, state.data(), &number, text.data(),
                                      static_cast<SQLSMALLINT>(text.size()), &length)))
        throw SqlFailure(0, "the driver gave no reason");
    throw SqlFailure(number, narrow(text.data(), static_cast<std::size_t>(length)));
}

}  // namespace

struct OdbcConnection::Handles {
    SQLHENV environment = SQL_NULL_HENV;
    SQLHDBC connection = SQL_NULL_HDBC;

    ~Handles() {
        if (connection != SQL_NULL_HDBC) {
            SQLDisconnect(connection);
            SQLFreeHandle(SQL_HANDLE_DBC, connection);
        }
        if (environment != SQL_NULL_HENV)
            SQLFreeHandle(SQL_HANDLE_ENV, environment);
    }
};

namespace {

class Statement {
public:
    explicit Statement(SQLHDBC connection) {
        if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, connection, &handle_)))
            fail(SQL_HANDLE_DBC, connection);
    }
    ~Statement() { SQLFreeHandle(SQL_HANDLE_STMT, handle_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// False when there is nothing (more) to read.
    bool good(SQLRETURN result) const {
        if (result == SQL_NO_DATA)
            return false;
        if (!SQL_SUCCEEDED(result))
            fail(SQL_HANDLE_STMT, handle_);
        return true;
    }

    void readRows(Rows& rows) const {
        SQLSMALLINT count = 0;
        good(SQLNumResultCols(handle_, &count));
        for (SQLSMALLINT c = 1; c <= count; ++c)
            rows.columns.push_back(describe(c));
        while (count > 0 && good(SQLFetch(handle_))) {
            auto& row = rows.values.emplace_back();
            for (SQLSMALLINT c = 1; c <= count; ++c)
                row.push_back(value(c));
        }
    }

    [[nodiscard]] SQLHSTMT handle() const { return handle_; }

private:
    [[nodiscard]] Rows::Column describe(SQLSMALLINT column) const {
        std::array<SQLWCHAR, 256> name{};
        SQLSMALLINT length = 0;
        SQLSMALLINT type = 0;
        SQLSMALLINT digits = 0;
        SQLSMALLINT nullable = 0;
        SQLULEN size = 0;
        good(SQLDescribeColW(handle_, static_cast<SQLUSMALLINT>(column), name.data(),
                             static_cast<SQLSMALLINT>(name.size()), &length, &type, &size, &digits,
                             &nullable));
        return {narrow(name.data(), static_cast<std::size_t>(length)), type};
    }

    [[nodiscard]] std::optional<std::string> value(SQLSMALLINT column) const {
        std::string out;
        std::array<SQLWCHAR, 2048> part{};
        SQLLEN length = 0;
        while (good(SQLGetData(handle_, static_cast<SQLUSMALLINT>(column), SQL_C_WCHAR, part.data(),
                               sizeof(part), &length))) {
            if (length == SQL_NULL_DATA)
                return std::nullopt;
            // A part that does not hold all of the rest is full up to its terminating zero.
            const auto room = static_cast<SQLLEN>(sizeof(part) - sizeof(SQLWCHAR));
            const bool last = length != SQL_NO_TOTAL && length <= room;
            out += narrow(part.data(), static_cast<std::size_t>(last ? length : room) / sizeof(SQLWCHAR));
            if (last)
                break;
        }
        return out;
    }

    SQLHSTMT handle_ = SQL_NULL_HSTMT;
};

}  // namespace

OdbcConnection::OdbcConnection(const std::string& connectionString) : handles_(std::make_unique<Handles>()) {
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handles_->environment);
    SQLSetEnvAttr(handles_->environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3),
                  0);
    SQLHDBC connection = SQL_NULL_HDBC;
    SQLAllocHandle(SQL_HANDLE_DBC, handles_->environment, &connection);
    std::u16string text = wide(connectionString);
    if (!SQL_SUCCEEDED(SQLDriverConnectW(connection, nullptr, reinterpret_cast<SQLWCHAR*>(text.data()),
                                         static_cast<SQLSMALLINT>(text.size()), nullptr, 0, nullptr,
                                         SQL_DRIVER_NOPROMPT))) {
        try {
            fail(SQL_HANDLE_DBC, connection);
        } catch (...) {
            SQLFreeHandle(SQL_HANDLE_DBC, connection);
            throw;
        }
    }
    handles_->connection = connection;
}

OdbcConnection::~OdbcConnection() = default;
OdbcConnection::OdbcConnection(OdbcConnection&&) noexcept = default;

Rows OdbcConnection::run(std::string_view sql) {
    const Statement statement(handles_->connection);
    std::u16string text = wide(sql);
    Rows rows;
    bool read = false;
    for (SQLRETURN result = SQLExecDirectW(statement.handle(), reinterpret_cast<SQLWCHAR*>(text.data()),
                                           static_cast<SQLINTEGER>(text.size()));
         ; result = SQLMoreResults(statement.handle())) {
        if (!statement.good(result))
            break;
        if (read) {
            Rows further;
            statement.readRows(further);
        } else {
            statement.readRows(rows);
            read = !rows.columns.empty();
        }
    }
    return rows;
}

std::string Rows::text(std::size_t row, std::size_t column) const {
    return values.at(row).at(column).value_or("<NULL>");
}

double Rows::number(std::size_t row, std::size_t column) const {
    return std::stod(values.at(row).at(column).value());
}

long Rows::whole(std::size_t row, std::size_t column) const {
    return std::stol(values.at(row).at(column).value());
}

}  // namespace regalon::test
