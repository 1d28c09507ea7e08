#include "common/DbParameterBuffer.h"

#include "common/DbErrors.h"
#include "common/DbParameterValue.h"

#include <algorithm>
#include <cstring>

namespace regalon::odbc {

namespace {

// The messages of procedures end here. Some servers name no length for an output, and a length of 0 would cut
// it to one character.
constexpr qsizetype outputTextCharacters = 4000;
// Longer values than these cannot be declared by a length and go as large objects.
constexpr qsizetype longestShortText = 4000;
constexpr qsizetype longestShortBinary = 8000;
constexpr int largestPrecision = 38;
constexpr qsizetype decimalTextBytes = 64;
constexpr SQLSMALLINT moneyScale = 4;
constexpr int moneyPrecision = 19;

SQLSMALLINT wholeSqlType(int type) {
    switch (type) {
        case DbType::Boolean:
            return SQL_BIT;
        case DbType::TinyInt:
            return SQL_TINYINT;
        case DbType::SmallInt:
            return SQL_SMALLINT;
        case DbType::BigInt:
            return SQL_BIGINT;
        default:
            return SQL_INTEGER;
    }
}

template <class T>
T load(const QByteArray& data) {
    T value;
    std::memcpy(&value, data.constData(), sizeof value);
    return value;
}

}  // namespace

ParameterBuffer::ParameterBuffer(const DbParameter& parameter) : m_type(parameter.Type()) {
    const DbParameterInfo& info = parameter.info();
    const QVariant value = parameter.Value();
    switch (m_type) {
        case DbType::Boolean:
        case DbType::TinyInt:
        case DbType::SmallInt:
        case DbType::Integer:
        case DbType::BigInt:
            takeWhole(info, value);
            break;
        case DbType::Single:
        case DbType::Double:
            takeReal(info, value);
            break;
        case DbType::Numeric:
        case DbType::Currency:
            takeDecimal(info, value);
            break;
        case DbType::Binary:
        case DbType::VarBinary:
        case DbType::Image:
            takeBinary(info, value);
            break;
        default:
            takeText(info, value);
            break;
    }
}

void ParameterBuffer::put(const void* data, qsizetype bytes, qsizetype room) {
    m_data = QByteArray(std::max(bytes, room), '\0');
    std::memcpy(m_data.data(), data, static_cast<size_t>(bytes));
    m_length = bytes;
}

void ParameterBuffer::takeWhole(const DbParameterInfo& info, const QVariant& value) {
    const SQLBIGINT number = value.isValid() ? wholeNumber(value, info) : 0;
    m_cType = SQL_C_SBIGINT;
    m_sqlType = wholeSqlType(m_type);
    put(&number, sizeof number, 0);
    if (!value.isValid()) {
        m_length = SQL_NULL_DATA;
    }
}

void ParameterBuffer::takeReal(const DbParameterInfo& info, const QVariant& value) {
    const SQLDOUBLE number = value.isValid() ? realNumber(value, info) : 0;
    m_cType = SQL_C_DOUBLE;
    m_sqlType = m_type == DbType::Single ? SQL_REAL : SQL_DOUBLE;
    put(&number, sizeof number, 0);
    if (!value.isValid()) {
        m_length = SQL_NULL_DATA;
    }
}

void ParameterBuffer::takeDecimal(const DbParameterInfo& info, const QVariant& value) {
    const bool money = m_type == DbType::Currency;
    const QByteArray text = value.isValid() ? decimalText(value, info) : QByteArray();
    m_cType = SQL_C_CHAR;
    m_sqlType = SQL_DECIMAL;
    m_size = static_cast<SQLULEN>(money ? moneyPrecision : info.size > 0 ? info.size : largestPrecision);
    m_scale = money ? moneyScale : static_cast<SQLSMALLINT>(info.scale);
    put(text.constData(), text.size(), decimalTextBytes);
    if (!value.isValid()) {
        m_length = SQL_NULL_DATA;
    }
}

void ParameterBuffer::takeText(const DbParameterInfo& info, const QVariant& value) {
    const QString text = value.isValid() ? parameterText(value) : QString();
    constexpr qsizetype unit = sizeof(SQLWCHAR);
    m_cType = SQL_C_WCHAR;
    m_sqlType = text.size() > longestShortText ? SQL_WLONGVARCHAR : SQL_WVARCHAR;
    m_size = static_cast<SQLULEN>(info.output ? std::max(outputTextCharacters, text.size())
                                              : std::max<qsizetype>(text.size(), 1));
    put(text.utf16(), text.size() * unit, info.output ? (outputTextCharacters + 1) * unit : unit);
    if (!value.isValid()) {
        m_length = SQL_NULL_DATA;
    }
}

void ParameterBuffer::takeBinary(const DbParameterInfo& info, const QVariant& value) {
    const QByteArray bytes = value.toByteArray();
    m_cType = SQL_C_BINARY;
    m_sqlType = bytes.size() > longestShortBinary ? SQL_LONGVARBINARY : SQL_VARBINARY;
    m_size = static_cast<SQLULEN>(info.output ? std::max(longestShortBinary, bytes.size())
                                              : std::max<qsizetype>(bytes.size(), 1));
    put(bytes.constData(), bytes.size(), info.output ? longestShortBinary : 1);
    if (!value.isValid()) {
        m_length = SQL_NULL_DATA;
    }
}

SQLRETURN ParameterBuffer::bind(SQLHSTMT statement, SQLUSMALLINT position, SQLSMALLINT direction) {
    return SQLBindParameter(statement, position, direction, m_cType, m_sqlType, m_size, m_scale,
                            m_data.data(), m_data.size(), &m_length);
}

QVariant ParameterBuffer::value() const {
    if (m_length == SQL_NULL_DATA) {
        return {};
    }
    const auto bytes = std::clamp<qsizetype>(m_length, 0, m_data.size());
    switch (m_cType) {
        case SQL_C_SBIGINT: {
            const auto number = load<SQLBIGINT>(m_data);
            return m_type == DbType::BigInt    ? QVariant(static_cast<qlonglong>(number))
                   : m_type == DbType::Boolean ? QVariant(number != 0)
                                               : QVariant(static_cast<int>(number));
        }
        case SQL_C_DOUBLE:
            return load<SQLDOUBLE>(m_data);
        case SQL_C_CHAR:
            return m_data.left(bytes).toDouble();
        case SQL_C_BINARY:
            return m_data.left(bytes);
        default:
            return QString::fromUtf16(reinterpret_cast<const char16_t*>(m_data.constData()),
                                      bytes / static_cast<qsizetype>(sizeof(SQLWCHAR)));
    }
}

}  // namespace regalon::odbc
