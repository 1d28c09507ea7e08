#pragma once

// Private to the gateway.

#include "common/DbCommand.h"
#include "common/DbOdbc.h"

#include <QByteArray>

namespace regalon::odbc {

/// The memory of one parameter during a call.
class ParameterBuffer {
public:
    /// Takes the value in the form that the declared type wants.
    /// Throws RunTimeError WrongValueType for a value that it cannot hold.
    explicit ParameterBuffer(const DbParameter& parameter);
    ParameterBuffer(const ParameterBuffer&) = delete;
    ParameterBuffer& operator=(const ParameterBuffer&) = delete;

    /// Binds to a statement, which keeps this object's address until the call has ended.
    SQLRETURN bind(SQLHSTMT statement, SQLUSMALLINT position, SQLSMALLINT direction);

    /// The value after the call.
    QVariant value() const;

private:
    void takeWhole(const DbParameterInfo& info, const QVariant& value);
    void takeReal(const DbParameterInfo& info, const QVariant& value);
    void takeDecimal(const DbParameterInfo& info, const QVariant& value);
    void takeText(const DbParameterInfo& info, const QVariant& value);
    void takeBinary(const DbParameterInfo& info, const QVariant& value);
    void put(const void* data, qsizetype bytes, qsizetype room);

    int m_type;
    SQLSMALLINT m_cType = SQL_C_WCHAR;
    SQLSMALLINT m_sqlType = SQL_WVARCHAR;
    SQLULEN m_size = 0;
    SQLSMALLINT m_scale = 0;
    QByteArray m_data;
    SQLLEN m_length = SQL_NULL_DATA;
};

}  // namespace regalon::odbc
