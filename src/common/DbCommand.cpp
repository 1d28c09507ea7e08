#include "common/DbCommand.h"

#include "common/DbConnection.h"
#include "common/DbErrors.h"
#include "common/DbSession.h"
#include "platform/Convert.h"
#include "platform/RunTimeError.h"

namespace regalon {

using namespace Qt::StringLiterals;

void DbParameters::Refresh() {
    m_items.clear();
    for (const DbParameterInfo& info : m_command.connection().session().parameters(m_command.m_commandText)) {
        m_items.emplace_back(info);
    }
}

DbParameter& DbParameters::Item(int position) {
    if (position < 0 || position >= Count()) {
        throw RunTimeError(DbError::ItemNotFound,
                           u"The procedure has no parameter number %1."_s.arg(position));
    }
    return m_items[static_cast<size_t>(position)];
}

DbParameter& DbParameters::Item(QAnyStringView name) {
    for (DbParameter& parameter : m_items) {
        if (QAnyStringView::compare(parameter.info().name, name, Qt::CaseInsensitive) == 0) {
            return parameter;
        }
    }
    throw RunTimeError(DbError::ItemNotFound,
                       u"The procedure has no parameter named '%1'."_s.arg(name.toString()));
}

void DbCommand::setCommandText(const QString& name) {
    m_commandText = TrimBlanks(name);
    m_parameters.m_items.clear();
}

void DbCommand::Execute(int) {
    if (m_parameters.m_items.empty()) {
        m_parameters.Refresh();
    }
    connection().session().call(m_commandText, m_parameters.m_items);
}

DbConnection& DbCommand::connection() const {
    if (!m_connection) {
        throw RunTimeError(DbError::InvalidConnection, u"The command has no connection."_s);
    }
    return *m_connection;
}

}  // namespace regalon
