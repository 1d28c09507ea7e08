#include "common/DbRecordset.h"

#include "common/DbConnection.h"
#include "common/DbErrors.h"
#include "common/DbSession.h"
#include "platform/RunTimeError.h"

#include <algorithm>

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void closedError() {
    throw RunTimeError(DbError::ObjectClosed, u"The result set is closed."_s);
}

[[noreturn]] void noRowError() {
    throw RunTimeError(DbError::NoCurrentRow, u"The result set has no current row."_s);
}

}  // namespace

qsizetype DbTable::indexOf(QAnyStringView name) const {
    const auto found = std::find_if(columns.begin(), columns.end(), [name](const DbColumn& column) {
        // Callers write names as the server does; folding letter case costs ten times as much.
        return QAnyStringView::compare(column.name, name) == 0 ||
               QAnyStringView::compare(column.name, name, Qt::CaseInsensitive) == 0;
    });
    return found == columns.end() ? -1 : found - columns.begin();
}

QVariant DbField::Value() const {
    if (m_row >= m_table.rowCount) {
        noRowError();
    }
    return m_table.at(m_row, m_column);
}

int DbFields::Count() const {
    return m_table ? static_cast<int>(m_table->columns.size()) : 0;
}

DbField DbFields::Item(int position) const {
    if (!m_table) {
        closedError();
    }
    if (position < 0 || position >= Count()) {
        throw RunTimeError(DbError::ItemNotFound, u"The result set has no field number %1."_s.arg(position));
    }
    return {*m_table, m_row, position};
}

DbField DbFields::Item(QAnyStringView name) const {
    if (!m_table) {
        closedError();
    }
    const qsizetype position = m_table->indexOf(name);
    if (position < 0) {
        throw RunTimeError(DbError::ItemNotFound,
                           u"The result set has no field named '%1'."_s.arg(name.toString()));
    }
    return {*m_table, m_row, position};
}

DbRecordset::DbRecordset() = default;
DbRecordset::~DbRecordset() = default;

void DbRecordset::Open(const QString& sql, DbConnection& connection, int, int, int) {
    if (m_table) {
        throw RunTimeError(DbError::ObjectOpen, u"The result set is open already."_s);
    }
    m_table = connection.session().run(sql);
    m_row = 0;
}

void DbRecordset::Close() {
    if (!m_table) {
        closedError();
    }
    closeIfOpen();
}

void DbRecordset::closeIfOpen() noexcept {
    m_table.reset();
    m_row = 0;
}

bool DbRecordset::Eof() const {
    if (!m_table) {
        closedError();
    }
    return m_row >= m_table->rowCount;
}

void DbRecordset::MoveNext() {
    if (Eof()) {
        noRowError();
    }
    ++m_row;
}

int DbRecordset::RecordCount() const {
    if (!m_table) {
        closedError();
    }
    return static_cast<int>(m_table->rowCount);
}

}  // namespace regalon
