#include "common/DbConnection.h"

#include "common/DbConnectionString.h"
#include "common/DbErrors.h"
#include "common/DbSession.h"
#include "platform/RunTimeError.h"
#include "platform/Settings.h"

#include <QFileInfo>

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

Settings& databaseSettings() {
    static Settings settings;
    return settings;
}

}  // namespace

void useDatabaseSettings(const Settings& settings) {
    databaseSettings() = settings;
}

DbConnection::DbConnection() = default;
DbConnection::~DbConnection() = default;

void DbConnection::Open() {
    if (m_session) {
        throw RunTimeError(DbError::ObjectOpen, u"The connection is open already."_s);
    }
    const Settings& settings = databaseSettings();
    const QString source = u"ODBC "_s + QFileInfo(settings.OdbcDriver).completeBaseName();
    const DbTarget target = parseConnectionString(m_connectionString);
    m_session = std::make_unique<DbSession>(DbLogin{driverConnectionString(target, settings), source,
                                                    m_connectionTimeout, !target.user.isEmpty()});
}

void DbConnection::Open(const QString& connectionString, int timeoutSeconds) {
    m_connectionString = connectionString;
    m_connectionTimeout = timeoutSeconds;
    Open();
}

void DbConnection::Close() {
    if (!m_session) {
        throw RunTimeError(DbError::ObjectClosed, u"The connection is closed."_s);
    }
    m_session.reset();
}

int DbConnection::State() const {
    return m_session ? 1 : 0;
}

bool DbConnection::isLost() const {
    return m_session && m_session->isLost();
}

void DbConnection::Execute(const QString& sql) {
    session().run(sql);
}

DbSession& DbConnection::session() {
    if (!m_session) {
        throw RunTimeError(DbError::InvalidConnection, u"The connection is not open."_s);
    }
    return *m_session;
}

}  // namespace regalon
