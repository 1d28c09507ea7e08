#pragma once

// Private to the gateway: the only place where ODBC types meet the rest of the code.

#include "platform/RunTimeError.h"

#include <QString>
#include <QVector>

#include <sql.h>
#include <sqlext.h>

#include <bit>
#include <utility>

namespace regalon::odbc {

/// Owns one ODBC handle of the given kind.
template <SQLSMALLINT Kind>
class Handle {
public:
    Handle() = default;
    explicit Handle(SQLHANDLE parent) { SQLAllocHandle(Kind, parent, &m_handle); }
    ~Handle() { reset(); }
    Handle(Handle&& other) noexcept : m_handle(std::exchange(other.m_handle, SQLHANDLE{})) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    SQLHANDLE get() const { return m_handle; }
    explicit operator bool() const { return m_handle != SQL_NULL_HANDLE; }
    void reset() {
        if (m_handle != SQL_NULL_HANDLE) {
            SQLFreeHandle(Kind, std::exchange(m_handle, SQLHANDLE{}));
        }
    }

private:
    SQLHANDLE m_handle = SQL_NULL_HANDLE;
};

using Environment = Handle<SQL_HANDLE_ENV>;
using Statement = Handle<SQL_HANDLE_STMT>;

/// One diagnostic record.
struct Diagnostic {
    QString state;
    qint32 native = 0;
    QString text;  ///< without the "[driver][server]" tags in front
};

/// Every diagnostic record of a handle, in the driver's order.
QVector<Diagnostic> diagnostics(SQLSMALLINT kind, SQLHANDLE handle);

/// The run-time error that the records of a failed operation stand for. `source` names the driver.
RunTimeError toRunTimeError(const QVector<Diagnostic>& records, const QString& source);

/// Whether the driver says that it did not get to the server at all: nothing listens there, or the host is
/// unknown.
bool serverUnreached(const QVector<Diagnostic>& records);

/// Removes the tags that driver manager, driver and server put in front of a message. Brackets that belong to
/// the message stay.
QString withoutDriverTags(const QString& text);

/// A whole number as the calls that set attributes take it: in the place of a pointer.
inline SQLPOINTER asAttribute(SQLULEN number) {
    return std::bit_cast<SQLPOINTER>(number);
}

inline SQLWCHAR* wide(const QString& text) {
    return reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(text.utf16()));
}

}  // namespace regalon::odbc
