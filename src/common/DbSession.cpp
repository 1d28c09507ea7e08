#include "common/DbSession.h"

#include "common/DbErrors.h"
#include "common/DbParameterBuffer.h"

#include <algorithm>
#include <deque>

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

// The driver's default; the system sets no other.
constexpr SQLULEN statementTimeoutSeconds = 30;

// Columns of the driver's parameter list, from 0.
enum ListColumn {
    procedureSchema = 1,
    procedureName = 2,
    columnName = 3,
    columnKind = 4,
    dataType = 5,
    typeName = 6,
    columnSize = 7,
    decimalDigits = 9
};

void setPlain(SQLHSTMT statement, SQLINTEGER attribute, SQLULEN value) {
    SQLSetStmtAttr(statement, attribute, odbc::asAttribute(value), 0);
}

QString withoutBrackets(const QString& name) {
    const bool bracketed = name.size() > 1 && name.startsWith(u'[') && name.endsWith(u']');
    return bracketed ? name.mid(1, name.size() - 2) : name;
}

// A name comes from some servers with the number of its overload behind a semicolon.
QString listedName(const QVariant& value) {
    return value.toString().section(u';', 0, 0);
}

bool sameName(const QString& one, const QString& other) {
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

DbParameterInfo readParameter(const DbTable& list, qsizetype row) {
    DbParameterInfo info;
    info.name = list.at(row, columnName).toString();
    info.size = list.at(row, columnSize).toInt();
    info.scale = list.at(row, decimalDigits).toInt();
    info.output = list.at(row, columnKind).toInt() != SQL_PARAM_INPUT;
    info.type = odbc::typeCode(static_cast<SQLSMALLINT>(list.at(row, dataType).toInt()),
                               static_cast<SQLULEN>(info.size), list.at(row, typeName).toString());
    return info;
}

// The driver keeps the addresses of what it is bound to, so the buffers must not move.
using Buffers = std::deque<odbc::ParameterBuffer>;

// The return value comes first and only comes out.
SQLRETURN bindParameters(SQLHSTMT statement, const std::vector<DbParameter>& parameters, Buffers& buffers) {
    SQLRETURN result = SQL_SUCCESS;
    for (size_t i = 0; i < buffers.size() && SQL_SUCCEEDED(result); ++i) {
        const SQLSMALLINT inOut = parameters[i].info().output ? SQL_PARAM_INPUT_OUTPUT : SQL_PARAM_INPUT;
        result = buffers[i].bind(statement, static_cast<SQLUSMALLINT>(i + 1),
                                 i == 0 ? SQLSMALLINT{SQL_PARAM_OUTPUT} : inOut);
    }
    return result;
}

QString callText(const QString& procedure, size_t parameterCount) {
    const QStringList marks(static_cast<qsizetype>(parameterCount), u"?"_s);
    const QString list = marks.isEmpty() ? QString() : u'(' + marks.join(u", "_s) + u')';
    return u"{? = call "_s + procedure + list + u'}';
}

DbParameterInfo returnValueInfo() {
    return {u"@RETURN_VALUE"_s, DbType::Integer, 0, 0, true};
}

// A server that does not answer the login in time is no server to the user. Without a user's name the driver
// breaks the login off by itself, with a failure like any other, although the server is there.
RunTimeError loginError(SQLHDBC connection, const DbLogin& login) {
    const auto records = odbc::diagnostics(SQL_HANDLE_DBC, connection);
    const RunTimeError error = odbc::toRunTimeError(records, login.source);
    if (error.number() == DbError::Timeout) {
        return {DbError::General, error.record().Description, login.source};
    }
    if (error.number() == DbError::General && !login.namesUser && !odbc::serverUnreached(records)) {
        return {DbError::Authentication, error.record().Description, login.source};
    }
    return error;
}

}  // namespace

DbSession::Link::Link(const DbLogin& login) {
    m_environment = odbc::Environment(SQL_NULL_HANDLE);
    SQLSetEnvAttr(m_environment.get(), SQL_ATTR_ODBC_VERSION, odbc::asAttribute(SQL_OV_ODBC3), 0);
    m_connection = odbc::Handle<SQL_HANDLE_DBC>(m_environment.get());
    SQLSetConnectAttr(m_connection.get(), SQL_ATTR_LOGIN_TIMEOUT,
                      odbc::asAttribute(static_cast<SQLULEN>(login.timeoutSeconds)), 0);
    const SQLRETURN result = SQLDriverConnectW(m_connection.get(), nullptr, odbc::wide(login.driverText),
                                               static_cast<SQLSMALLINT>(login.driverText.size()), nullptr, 0,
                                               nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result)) {
        throw loginError(m_connection.get(), login);
    }
    m_connected = true;
}

DbSession::Link::~Link() {
    if (m_connected) {
        SQLDisconnect(m_connection.get());
    }
    m_connection.reset();
}

DbSession::Work::Work(SQLHDBC connection, bool escapes) : statement(connection), reader(statement.get()) {
    setPlain(statement.get(), SQL_ATTR_QUERY_TIMEOUT, statementTimeoutSeconds);
    if (!escapes) {
        // Texts go to the server as they are, braces included.
        setPlain(statement.get(), SQL_ATTR_NOSCAN, SQL_NOSCAN_ON);
    }
}

DbSession::DbSession(const DbLogin& login)
    : m_source(login.source), m_link(login), m_texts(m_link.get(), false), m_calls(m_link.get(), true) {}

DbSession::~DbSession() = default;

DbSession::Failure DbSession::failure(SQLHSTMT statement) {
    const auto records = odbc::diagnostics(SQL_HANDLE_STMT, statement);
    SQLULEN dead = SQL_CD_FALSE;
    SQLGetConnectAttr(m_link.get(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr);
    RunTimeError error = odbc::toRunTimeError(records, m_source);
    // Of a peer that went away the driver knows nothing but "Unknown error".
    const bool lost = dead == SQL_CD_TRUE;
    m_dead = m_dead || lost;
    if (lost && error.number() == DbError::General) {
        return RunTimeError(DbError::General, u"The connection to the server is lost."_s, m_source);
    }
    return error;
}

void DbSession::requireAlive() const {
    if (m_dead) {
        throw RunTimeError(DbError::General, u"The connection to the server is lost."_s, m_source);
    }
}

// Everything of an answer is taken even after an error in it: the next statement needs an idle connection,
// and outputs arrive last. The first error is the one that counts.
std::shared_ptr<const DbTable> DbSession::drain(Work& work, SQLRETURN result) {
    const SQLHSTMT statement = work.statement.get();
    std::shared_ptr<const DbTable> first;
    Failure failed;
    for (; result != SQL_NO_DATA; result = SQLMoreResults(statement)) {
        SQLSMALLINT columns = 0;
        bool bad = !SQL_SUCCEEDED(result);
        if (!bad && !first && SQL_SUCCEEDED(SQLNumResultCols(statement, &columns)) && columns > 0) {
            try {
                first = work.reader.read(columns);
            } catch (const odbc::StatementFailed&) {
                bad = true;
            }
        }
        if (bad) {
            Failure next = failure(statement);
            if (!failed) {
                failed = std::move(next);
            } else if (result == SQL_INVALID_HANDLE ||
                       failed->record().Description == next->record().Description) {
                break;  // the driver repeats itself: nothing more will come
            }
            if (m_dead) {
                break;
            }
        }
    }
    SQLFreeStmt(statement, SQL_CLOSE);
    if (failed) {
        SQLFreeStmt(statement, SQL_UNBIND);
        throw RunTimeError(*failed);
    }
    return first;
}

std::shared_ptr<const DbTable> DbSession::run(const QString& sql) {
    requireAlive();
    return drain(m_texts, SQLExecDirectW(m_texts.statement.get(), odbc::wide(sql),
                                         static_cast<SQLINTEGER>(sql.size())));
}

const std::vector<DbParameterInfo>& DbSession::parameters(const QString& procedure) {
    const QString key = procedure.toLower();
    const auto known = m_parameters.constFind(key);
    if (known != m_parameters.constEnd()) {
        return *known;
    }
    return *m_parameters.insert(key, askParameters(procedure));
}

std::vector<DbParameterInfo> DbSession::askParameters(const QString& procedure) {
    requireAlive();
    const QStringList parts = procedure.split(u'.');
    const QString name = withoutBrackets(parts.last());
    const QString schema = parts.size() > 1 ? withoutBrackets(parts.at(parts.size() - 2)) : QString();
    const auto list =
        drain(m_calls, SQLProcedureColumnsW(m_calls.statement.get(), nullptr, 0,
                                            schema.isEmpty() ? nullptr : odbc::wide(schema),
                                            static_cast<SQLSMALLINT>(schema.size()), odbc::wide(name),
                                            static_cast<SQLSMALLINT>(name.size()), nullptr, 0));
    std::vector<DbParameterInfo> infos{returnValueInfo()};
    QString owner;
    bool found = false;
    for (qsizetype row = 0; list && row < list->rowCount; ++row) {
        // "_" in the name is a pattern to the server, and equal names may stand in two schemas.
        const QString rowOwner = list->at(row, procedureSchema).toString();
        if (!sameName(listedName(list->at(row, procedureName)), name) || (found && rowOwner != owner)) {
            continue;
        }
        found = true;
        owner = rowOwner;
        if (list->at(row, columnKind).toInt() == SQL_RETURN_VALUE) {
            infos.front().name = list->at(row, columnName).toString();
        } else {
            infos.push_back(readParameter(*list, row));
        }
    }
    if (!found) {
        throw RunTimeError(DbError::Statement,
                           u"The server lists no stored procedure named '%1'."_s.arg(procedure), m_source);
    }
    return infos;
}

void DbSession::call(const QString& procedure, std::vector<DbParameter>& parameters) {
    requireAlive();
    const SQLHSTMT statement = m_calls.statement.get();
    Buffers buffers(parameters.begin(), parameters.end());
    try {
        SQLRETURN result = bindParameters(statement, parameters, buffers);
        if (SQL_SUCCEEDED(result)) {
            const QString text = callText(procedure, parameters.size() - 1);
            result = SQLExecDirectW(statement, odbc::wide(text), static_cast<SQLINTEGER>(text.size()));
        }
        drain(m_calls, result);
    } catch (...) {
        SQLFreeStmt(statement, SQL_RESET_PARAMS);
        m_parameters.remove(procedure.toLower());
        throw;
    }
    SQLFreeStmt(statement, SQL_RESET_PARAMS);
    for (size_t i = 0; i < buffers.size(); ++i) {
        if (parameters[i].info().output) {
            parameters[i].setValue(buffers[i].value());
        }
    }
}

}  // namespace regalon
