#include "BareOdbc.h"

#include <sql.h>
#include <sqlext.h>

#include <array>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace bench {

namespace {

constexpr SQLLEN outputSize = 8001;

std::string diagnostics(SQLSMALLINT kind, SQLHANDLE handle) {
    std::array<SQLCHAR, 6> state{};
    std::array<SQLCHAR, 1024> text{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    if (!SQL_SUCCEEDED(SQLGetDiagRec(kind, handle, 1, state.data(), &native, text.data(),
                                     static_cast<SQLSMALLINT>(text.size()), &length)))
        return "no diagnostics";
    return reinterpret_cast<const char*>(text.data());
}

std::string unescaped(const std::string& field) {
    std::string out;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] != '\\' || i + 1 == field.size()) {
            out += field[i];
            continue;
        }
        const char next = field[++i];
        out += next == 'n' ? '\n' : next == 'r' ? '\r' : next == 't' ? '\t' : next;
    }
    return out;
}

/// A driver's own question for the parameters of a procedure names its arguments, and has no output among
/// them.
bool isNamed(const Statement& statement) {
    return statement.call && !statement.arguments.empty() &&
           statement.arguments.front().first.starts_with('@');
}

std::string asText(const Statement& statement) {
    std::string text = "exec " + statement.text;
    const char* separator = " ";
    for (const auto& [name, value] : statement.arguments) {
        text += separator + name + "=N'";
        for (const char letter : value)
            text += letter == '\'' ? std::string(2, letter) : std::string(1, letter);
        text += '\'';
        separator = ", ";
    }
    return text;
}

}  // namespace

BareOdbc::BareOdbc(const std::string& connectionString) {
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_);
    SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
    std::string text = connectionString;
    const SQLRETURN result = SQLDriverConnect(connection_, nullptr, reinterpret_cast<SQLCHAR*>(text.data()),
                                              SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result))
        throw std::runtime_error("connect: " + diagnostics(SQL_HANDLE_DBC, connection_));
    SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement_);
}

BareOdbc::~BareOdbc() {
    if (statement_)
        SQLFreeHandle(SQL_HANDLE_STMT, statement_);
    SQLDisconnect(connection_);
    SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

void BareOdbc::check(long result, const char* what) {
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA)
        throw std::runtime_error(std::string(what) + ": " + diagnostics(SQL_HANDLE_STMT, statement_));
}

long BareOdbc::readAll() {
    long rows = 0;
    std::array<char, 4096> buffer{};
    do {
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement_, &columns);
        while (columns > 0 && SQL_SUCCEEDED(SQLFetch(statement_))) {
            ++rows;
            for (SQLSMALLINT i = 1; i <= columns; ++i) {
                SQLLEN length = 0;
                check(SQLGetData(statement_, static_cast<SQLUSMALLINT>(i), SQL_C_CHAR, buffer.data(),
                                 static_cast<SQLLEN>(buffer.size()), &length),
                      "read");
            }
        }
    } while (SQL_SUCCEEDED(SQLMoreResults(statement_)));
    SQLFreeStmt(statement_, SQL_CLOSE);
    return rows;
}

long BareOdbc::run(const std::vector<Statement>& statements) {
    long rows = 0;
    for (const Statement& statement : statements) {
        const bool call = statement.call && !isNamed(statement);
        std::string text = isNamed(statement) ? asText(statement) : statement.text;
        std::vector<std::vector<char>> values;
        SQLINTEGER status = 0;
        SQLLEN statusLength = 0;
        std::vector<SQLLEN> lengths(statement.arguments.size());
        if (call) {
            text = "{? = call " + statement.text + "(";
            for (std::size_t i = 0; i < statement.arguments.size(); ++i)
                text += i == 0 ? "?" : ", ?";
            text += ")}";
            SQLBindParameter(statement_, 1, SQL_PARAM_OUTPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0, &status, 0,
                             &statusLength);
            for (std::size_t i = 0; i < statement.arguments.size(); ++i) {
                const std::string& value = statement.arguments[i].second;
                // The last argument is the message that comes back, if the procedure has one.
                const bool output = i > 0 && i + 1 == statement.arguments.size() && value == "NULL";
                values.emplace_back(outputSize);
                std::copy(value.begin(), value.end(), values.back().begin());
                lengths[i] = output ? SQL_NULL_DATA : static_cast<SQLLEN>(value.size());
                SQLBindParameter(statement_, static_cast<SQLUSMALLINT>(i + 2),
                                 output ? SQL_PARAM_INPUT_OUTPUT : SQL_PARAM_INPUT, SQL_C_CHAR, SQL_VARCHAR,
                                 output          ? 4000
                                 : value.empty() ? 1
                                                 : value.size(),
                                 0, values.back().data(), outputSize, &lengths[i]);
            }
        }
        check(SQLExecDirect(statement_, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS), text.c_str());
        rows += readAll();
        if (call)
            SQLFreeStmt(statement_, SQL_RESET_PARAMS);
    }
    return rows;
}

std::vector<Statement> readTrace(const std::string& file, std::size_t first) {
    std::ifstream in(file, std::ios::binary);
    std::vector<Statement> statements;
    std::string line;
    for (std::size_t entry = 0; std::getline(in, line); ++entry) {
        if (entry < first)
            continue;
        std::istringstream fields(line);
        std::string session;
        std::string kind;
        Statement statement;
        std::getline(fields, session, '\t');
        std::getline(fields, kind, '\t');
        std::getline(fields, statement.text, '\t');
        statement.text = unescaped(statement.text);
        statement.call = kind == "RPC";
        std::string argument;
        while (statement.call && std::getline(fields, argument, '\t')) {
            const std::size_t equals = argument.find('=');
            if (equals != std::string::npos)
                statement.arguments.emplace_back(argument.substr(0, equals),
                                                 unescaped(argument.substr(equals + 1)));
        }
        statements.push_back(std::move(statement));
    }
    return statements;
}

}  // namespace bench
