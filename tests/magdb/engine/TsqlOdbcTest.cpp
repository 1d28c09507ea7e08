#include "magdb/tds/RunningServer.h"

#include <gtest/gtest.h>
#include <sql.h>
#include <sqlext.h>

#include <cstring>
#include <string>
#include <vector>

// The catalogue as a real driver reads it: FreeTDS through unixODBC.

namespace {

class OdbcStatement;

/// A connection through FreeTDS's driver.
class OdbcConnection {
public:
    explicit OdbcConnection(std::uint16_t port) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
        std::string text =
            "Driver={FreeTDS};Server=127.0.0.1;Port=" + std::to_string(port) +
            ";UID=regalon;PWD=Magazyn-2024;Database=MAGAZYN;TDS_Version=7.4;ClientCharset=UTF-8";
        const SQLRETURN code =
            SQLDriverConnect(m_connection, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS, nullptr,
                             0, nullptr, SQL_DRIVER_NOPROMPT);
        m_connected = SQL_SUCCEEDED(code);
        if (!m_connected) {
            m_error = diagnostics(SQL_HANDLE_DBC, m_connection);
        }
    }
    ~OdbcConnection() {
        if (m_connected) {
            SQLDisconnect(m_connection);
        }
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }
    OdbcConnection(const OdbcConnection&) = delete;
    OdbcConnection& operator=(const OdbcConnection&) = delete;

    [[nodiscard]] bool connected() const { return m_connected; }
    [[nodiscard]] const std::string& error() const { return m_error; }
    [[nodiscard]] SQLHDBC handle() const { return m_connection; }

    static std::string diagnostics(SQLSMALLINT type, SQLHANDLE handle) {
        std::string out;
        SQLCHAR state[6];
        SQLCHAR text[1024];
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        for (SQLSMALLINT i = 1;
             SQL_SUCCEEDED(SQLGetDiagRec(type, handle, i, state, &native, text, sizeof text, &length)); ++i) {
            out += std::to_string(native) + " " + reinterpret_cast<const char*>(text) + "\n";
        }
        return out;
    }

private:
    SQLHENV m_environment = nullptr;
    SQLHDBC m_connection = nullptr;
    bool m_connected = false;
    std::string m_error;
};

class OdbcStatement {
public:
    explicit OdbcStatement(const OdbcConnection& connection) {
        SQLAllocHandle(SQL_HANDLE_STMT, connection.handle(), &m_statement);
    }
    ~OdbcStatement() { SQLFreeHandle(SQL_HANDLE_STMT, m_statement); }
    OdbcStatement(const OdbcStatement&) = delete;
    OdbcStatement& operator=(const OdbcStatement&) = delete;

    [[nodiscard]] SQLHSTMT handle() const { return m_statement; }

    std::string execute(const std::string& sql) {
        std::string text = sql;
        const SQLRETURN code = SQLExecDirect(m_statement, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS);
        if (code != SQL_NO_DATA && !SQL_SUCCEEDED(code)) {
            return OdbcConnection::diagnostics(SQL_HANDLE_STMT, m_statement);
        }
        return {};
    }

    /// The chosen columns (1-based) of all rows, "|" between columns and ";" between rows.
    std::string rows(const std::vector<SQLUSMALLINT>& columns) {
        std::string out;
        while (SQL_SUCCEEDED(SQLFetch(m_statement))) {
            out += out.empty() ? "" : ";";
            for (std::size_t i = 0; i < columns.size(); ++i) {
                out += (i == 0 ? "" : "|") + cell(columns[i]);
            }
        }
        return out;
    }

    std::string cell(SQLUSMALLINT column) {
        char buffer[4096];
        SQLLEN length = 0;
        const SQLRETURN code = SQLGetData(m_statement, column, SQL_C_CHAR, buffer, sizeof buffer, &length);
        if (!SQL_SUCCEEDED(code)) {
            return "?";
        }
        return length == SQL_NULL_DATA ? "NULL" : buffer;
    }

    /// Names of the columns, joined by "|".
    std::string names() {
        SQLSMALLINT count = 0;
        SQLNumResultCols(m_statement, &count);
        std::string out;
        for (SQLSMALLINT i = 1; i <= count; ++i) {
            SQLCHAR name[256];
            SQLSMALLINT length = 0;
            SQLDescribeCol(m_statement, static_cast<SQLUSMALLINT>(i), name, sizeof name, &length, nullptr,
                           nullptr, nullptr, nullptr);
            out += (i == 1 ? "" : "|") + std::string(reinterpret_cast<const char*>(name));
        }
        return out;
    }

private:
    SQLHSTMT m_statement = nullptr;
};

SQLCHAR* odbcText(const char* text) {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text));
}

class CatalogueThroughOdbc : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_connection.connected()) << m_connection.error();
        for (const char* sql :
             {"CREATE TABLE Towar (Id int IDENTITY NOT NULL CONSTRAINT PK_Towar PRIMARY KEY, Nazwa "
              "nvarchar(50) NOT NULL, "
              "Cena decimal(10,2))",
              "CREATE TABLE Ruch (Lp int, Towar int CONSTRAINT FK_Ruch REFERENCES Towar (Id))",
              "CREATE PROCEDURE Przesun @Kod nvarchar(20), @Ile decimal(10,2), @Komunikat nvarchar(200) "
              "OUTPUT AS "
              "SET NOCOUNT ON SET @Komunikat = @Kod + N' żółw' SELECT @Ile AS Ile RETURN 3"}) {
            OdbcStatement statement(m_connection);
            ASSERT_EQ(statement.execute(sql), "");
        }
    }

    RunningServer m_server;
    OdbcConnection m_connection{m_server.port()};
};

TEST_F(CatalogueThroughOdbc, ProcedureColumnsBeginWithTheReturnValue) {
    OdbcStatement statement(m_connection);
    ASSERT_TRUE(SQL_SUCCEEDED(SQLProcedureColumns(statement.handle(), nullptr, 0, nullptr, 0,
                                                  odbcText("Przesun"), SQL_NTS, nullptr, 0)))
        << OdbcConnection::diagnostics(SQL_HANDLE_STMT, statement.handle());
    EXPECT_EQ(statement.names(),
              "PROCEDURE_CAT|PROCEDURE_SCHEM|PROCEDURE_NAME|COLUMN_NAME|COLUMN_TYPE|DATA_TYPE|TYPE_NAME|"
              "COLUMN_SIZE|"
              "BUFFER_LENGTH|DECIMAL_DIGITS|NUM_PREC_RADIX|NULLABLE|REMARKS|COLUMN_DEF|SQL_DATA_TYPE|"
              "SQL_DATETIME_SUB|CHAR_OCTET_LENGTH|ORDINAL_POSITION|IS_NULLABLE|SS_DATA_TYPE");
    EXPECT_EQ(statement.rows({4, 5, 6, 7, 8, 10, 18}),
              "@RETURN_VALUE|5|4|int|10|0|0;@Kod|1|-9|nvarchar|20|NULL|1;@Ile|1|3|decimal|10|2|2;"
              "@Komunikat|2|-9|nvarchar|200|NULL|3");
}

TEST_F(CatalogueThroughOdbc, ACallGivesReturnValueAndOutput) {
    OdbcStatement statement(m_connection);
    SQLINTEGER status = 0;
    SQLLEN statusLength = 0;
    char code[] = "A1";
    SQLLEN codeLength = SQL_NTS;
    char amount[] = "2.50";
    SQLLEN amountLength = SQL_NTS;
    SQLWCHAR message[201] = {};
    SQLLEN messageLength = SQL_NULL_DATA;
    SQLHSTMT handle = statement.handle();
    SQLBindParameter(handle, 1, SQL_PARAM_OUTPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0, &status, 0, &statusLength);
    SQLBindParameter(handle, 2, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_WVARCHAR, 20, 0, code, 0, &codeLength);
    SQLBindParameter(handle, 3, SQL_PARAM_INPUT, SQL_C_CHAR, SQL_DECIMAL, 10, 2, amount, 0, &amountLength);
    SQLBindParameter(handle, 4, SQL_PARAM_OUTPUT, SQL_C_WCHAR, SQL_WVARCHAR, 200, 0, message, sizeof message,
                     &messageLength);
    ASSERT_EQ(statement.execute("{? = call Przesun(?, ?, ?)}"), "");
    EXPECT_EQ(statement.rows({1}), "2.50");
    while (SQLMoreResults(handle) != SQL_NO_DATA) {
    }
    EXPECT_EQ(status, 3);
    std::u16string text(reinterpret_cast<const char16_t*>(message),
                        static_cast<std::size_t>(messageLength) / 2);
    EXPECT_EQ(text, u"A1 żółw");
}

TEST_F(CatalogueThroughOdbc, TablesColumnsAndKeysAreListed) {
    OdbcStatement tables(m_connection);
    ASSERT_TRUE(SQL_SUCCEEDED(SQLTables(tables.handle(), nullptr, 0, nullptr, 0, odbcText("%"), SQL_NTS,
                                        odbcText("TABLE"), SQL_NTS)));
    EXPECT_EQ(tables.rows({1, 2, 3, 4}), "MAGAZYN|dbo|Ruch|TABLE;MAGAZYN|dbo|Towar|TABLE");

    OdbcStatement columns(m_connection);
    ASSERT_TRUE(SQL_SUCCEEDED(SQLColumns(columns.handle(), nullptr, 0, nullptr, 0, odbcText("Towar"), SQL_NTS,
                                         odbcText("%"), SQL_NTS)));
    EXPECT_EQ(columns.rows({4, 5, 6, 7, 11, 17}),
              "Id|4|int identity|10|0|1;Nazwa|-9|nvarchar|50|0|2;Cena|3|decimal|10|1|3");

    OdbcStatement keys(m_connection);
    ASSERT_TRUE(
        SQL_SUCCEEDED(SQLPrimaryKeys(keys.handle(), nullptr, 0, nullptr, 0, odbcText("Towar"), SQL_NTS)));
    EXPECT_EQ(keys.rows({3, 4, 5, 6}), "Towar|Id|1|PK_Towar");

    OdbcStatement foreign(m_connection);
    ASSERT_TRUE(SQL_SUCCEEDED(SQLForeignKeys(foreign.handle(), nullptr, 0, nullptr, 0, odbcText("Towar"),
                                             SQL_NTS, nullptr, 0, nullptr, 0, nullptr, 0)));
    EXPECT_EQ(foreign.rows({3, 4, 7, 8}), "Towar|Id|Ruch|Towar");
}

TEST_F(CatalogueThroughOdbc, ProceduresAndTypesAreListed) {
    OdbcStatement procedures(m_connection);
    ASSERT_TRUE(SQL_SUCCEEDED(
        SQLProcedures(procedures.handle(), nullptr, 0, nullptr, 0, odbcText("Prze%"), SQL_NTS)));
    EXPECT_EQ(procedures.rows({1, 2, 3}), "MAGAZYN|dbo|Przesun;1");

    OdbcStatement types(m_connection);
    ASSERT_TRUE(SQL_SUCCEEDED(SQLGetTypeInfo(types.handle(), SQL_INTEGER)))
        << OdbcConnection::diagnostics(SQL_HANDLE_STMT, types.handle());
    EXPECT_EQ(types.rows({1, 2, 3}), "int|4|10");
    OdbcStatement dates(m_connection);
    ASSERT_TRUE(SQL_SUCCEEDED(SQLGetTypeInfo(dates.handle(), SQL_TYPE_DATE)));
    EXPECT_EQ(dates.rows({1, 2, 16, 17}), "date|91|9|1");

    OdbcStatement statistics(m_connection);
    ASSERT_TRUE(SQL_SUCCEEDED(SQLStatistics(statistics.handle(), nullptr, 0, nullptr, 0, odbcText("Towar"),
                                            SQL_NTS, SQL_INDEX_UNIQUE, SQL_QUICK)));
    EXPECT_EQ(statistics.rows({4, 6, 9}), "NULL|NULL|NULL;0|PK_Towar|Id");
}

TEST_F(CatalogueThroughOdbc, DatabasesAreListedAsTheConnectionEditorAsks) {
    OdbcStatement statement(m_connection);
    ASSERT_EQ(statement.execute("select name from sysdatabases order by name"), "");
    EXPECT_EQ(statement.rows({1}), "MAGAZYN;master;tempdb");
}

TEST_F(CatalogueThroughOdbc, AMissingProcedureHasNoColumns) {
    OdbcStatement statement(m_connection);
    ASSERT_TRUE(SQL_SUCCEEDED(SQLProcedureColumns(statement.handle(), nullptr, 0, nullptr, 0,
                                                  odbcText("nie_ma"), SQL_NTS, nullptr, 0)));
    EXPECT_EQ(statement.rows({4}), "");
}

}  // namespace
