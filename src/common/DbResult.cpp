#include "common/DbResult.h"

#include "common/DbErrors.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace regalon::odbc {

namespace {

// A block takes so many bytes of all its columns together, and at most so many rows: small enough for the
// first read of a session, large enough that a list of a thousand rows is a handful of fetches.
constexpr qsizetype blockBytes = qsizetype{128} * 1024;
constexpr qsizetype blockMaxRows = 256;
// Longer declared texts, and those without a length, are read in pieces.
constexpr SQLULEN longestBoundText = 8000;
constexpr qsizetype numericTextBytes = 64;
constexpr qsizetype guidTextBytes = 48;

void check(SQLRETURN result) {
    if (!SQL_SUCCEEDED(result)) {
        throw StatementFailed{};
    }
}

bool isBoundable(SQLULEN size) {
    return size > 0 && size <= longestBoundText;
}

// C type and bytes of one value in a block; 0 bytes for what is read in pieces.
std::pair<SQLSMALLINT, qsizetype> transferOf(int type, SQLULEN size) {
    switch (type) {
        case DbType::Boolean:
            return {SQL_C_BIT, 1};
        case DbType::TinyInt:
        case DbType::SmallInt:
        case DbType::Integer:
            return {SQL_C_SLONG, sizeof(SQLINTEGER)};
        case DbType::BigInt:
            return {SQL_C_SBIGINT, sizeof(SQLBIGINT)};
        case DbType::Single:
            return {SQL_C_FLOAT, sizeof(SQLREAL)};
        case DbType::Double:
            return {SQL_C_DOUBLE, sizeof(SQLDOUBLE)};
        case DbType::Numeric:
        case DbType::Currency:
            return {SQL_C_CHAR, numericTextBytes};
        case DbType::DateTime:
            return {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)};
        case DbType::Guid:
            return {SQL_C_CHAR, guidTextBytes};
        case DbType::Binary:
        case DbType::VarBinary:
            return {SQL_C_BINARY, isBoundable(size) ? static_cast<qsizetype>(size) : 0};
        case DbType::Image:
            return {SQL_C_BINARY, 0};
        case DbType::Text:
        case DbType::NationalText:
            return {SQL_C_WCHAR, 0};
        default:
            return {SQL_C_WCHAR,
                    isBoundable(size) ? static_cast<qsizetype>((size + 1) * sizeof(SQLWCHAR)) : 0};
    }
}

template <class T>
T load(const char* data) {
    T value;
    std::memcpy(&value, data, sizeof value);
    return value;
}

double decimalNumber(const char* text, qsizetype length) {
    double number = 0;
    std::from_chars(text, text + length, number);
    return number;
}

// A real holds seven digits; widened bit by bit it would show a tail of chance digits.
double widened(float value) {
    constexpr int digits = 7;
    std::array<char, 32> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), static_cast<double>(value),
                                       std::chars_format::general, digits);
    return decimalNumber(text.data(), written.ptr - text.data());
}

// The server's times have no zone. Kept as UTC they stay as they are: local time would move an hour that the
// clock change leaves out.
QVariant toDateTime(const SQL_TIMESTAMP_STRUCT& stamp) {
    constexpr SQLUINTEGER nanosecondsOfMillisecond = 1000000;
    return QDateTime(QDate(stamp.year, stamp.month, stamp.day),
                     QTime(stamp.hour, stamp.minute, stamp.second,
                           static_cast<int>(stamp.fraction / nanosecondsOfMillisecond)),
                     Qt::UTC);
}

QVariant toVariant(int type, SQLSMALLINT cType, const char* data, qsizetype bytes) {
    switch (cType) {
        case SQL_C_BIT:
            return *data != 0;
        case SQL_C_SLONG:
            return static_cast<int>(load<SQLINTEGER>(data));
        case SQL_C_SBIGINT:
            return static_cast<qlonglong>(load<SQLBIGINT>(data));
        case SQL_C_FLOAT:
            return widened(load<SQLREAL>(data));
        case SQL_C_DOUBLE:
            return load<SQLDOUBLE>(data);
        case SQL_C_TYPE_TIMESTAMP:
            return toDateTime(load<SQL_TIMESTAMP_STRUCT>(data));
        case SQL_C_BINARY:
            return QByteArray(data, bytes);
        case SQL_C_CHAR:
            return type == DbType::Guid ? QVariant(u'{' + QString::fromLatin1(data, bytes).toUpper() + u'}')
                                        : QVariant(decimalNumber(data, bytes));
        default: {
            QString text(bytes / static_cast<qsizetype>(sizeof(SQLWCHAR)), Qt::Uninitialized);
            std::memcpy(text.data(), data, static_cast<size_t>(text.size()) * sizeof(SQLWCHAR));
            return text;
        }
    }
}

}  // namespace

int typeCode(SQLSMALLINT sqlType, SQLULEN size, const QString& typeName) {
    switch (sqlType) {
        case SQL_BIT:
            return DbType::Boolean;
        case SQL_TINYINT:
            return DbType::TinyInt;
        case SQL_SMALLINT:
            return DbType::SmallInt;
        case SQL_INTEGER:
            return DbType::Integer;
        case SQL_BIGINT:
            return DbType::BigInt;
        case SQL_REAL:
            return DbType::Single;
        case SQL_FLOAT:
        case SQL_DOUBLE:
            return DbType::Double;
        case SQL_NUMERIC:
        case SQL_DECIMAL:
            return typeName.contains(u"money", Qt::CaseInsensitive) ? DbType::Currency : DbType::Numeric;
        case SQL_TYPE_TIMESTAMP:
            return DbType::DateTime;
        case SQL_GUID:
            return DbType::Guid;
        case SQL_CHAR:
            return DbType::Char;
        case SQL_VARCHAR:
            return isBoundable(size) ? DbType::VarChar : DbType::Text;
        case SQL_LONGVARCHAR:
            return DbType::Text;
        case SQL_WCHAR:
            return DbType::NationalChar;
        case SQL_WVARCHAR:
            return isBoundable(size) ? DbType::NationalVarChar : DbType::NationalText;
        case SQL_WLONGVARCHAR:
            return DbType::NationalText;
        case SQL_BINARY:
            return DbType::Binary;
        case SQL_VARBINARY:
            return isBoundable(size) ? DbType::VarBinary : DbType::Image;
        case SQL_LONGVARBINARY:
            return DbType::Image;
        default:
            // date, time and what a newer server adds come as text, as they do for an older client.
            return DbType::NationalVarChar;
    }
}

std::shared_ptr<const DbTable> ResultReader::read(SQLSMALLINT columnCount) {
    auto table = std::make_shared<DbTable>();
    describe(columnCount, *table);
    if (m_pieces) {
        readPieces(*table);
    } else {
        readBlocks(*table);
    }
    return table;
}

void ResultReader::describe(SQLSMALLINT columnCount, DbTable& table) {
    m_count = columnCount;
    m_pieces = false;
    if (m_columns.size() < static_cast<size_t>(columnCount)) {
        m_columns.resize(static_cast<size_t>(columnCount));
    }
    table.columns.reserve(columnCount);
    qsizetype rowBytes = 0;
    for (SQLSMALLINT i = 0; i < columnCount; ++i) {
        std::array<SQLWCHAR, 256> name{};
        SQLSMALLINT nameLength = 0;
        SQLSMALLINT sqlType = 0;
        SQLULEN size = 0;
        SQLSMALLINT scale = 0;
        SQLSMALLINT nullable = 0;
        const auto position = static_cast<SQLUSMALLINT>(i + 1);
        check(SQLDescribeColW(m_statement, position, name.data(), static_cast<SQLSMALLINT>(name.size()),
                              &nameLength, &sqlType, &size, &scale, &nullable));
        QString typeName;
        if (sqlType == SQL_DECIMAL || sqlType == SQL_NUMERIC) {
            std::array<SQLWCHAR, 64> buffer{};
            SQLSMALLINT bytes = 0;
            check(SQLColAttributeW(m_statement, position, SQL_DESC_TYPE_NAME, buffer.data(),
                                   static_cast<SQLSMALLINT>(sizeof buffer), &bytes, nullptr));
            typeName = QString::fromUtf16(reinterpret_cast<const char16_t*>(buffer.data()));
        }
        Column& column = m_columns[static_cast<size_t>(i)];
        column.type = typeCode(sqlType, size, typeName);
        std::tie(column.cType, column.width) = transferOf(column.type, size);
        m_pieces = m_pieces || column.width == 0;
        rowBytes += column.width + static_cast<qsizetype>(sizeof(SQLLEN));
        table.columns.append(
            {QString(reinterpret_cast<const QChar*>(name.data()),
                     std::min<qsizetype>(nameLength, static_cast<qsizetype>(name.size()) - 1)),
             column.type});
    }
    setBlockRows(
        m_pieces ? 1 : static_cast<SQLULEN>(std::clamp<qsizetype>(blockBytes / rowBytes, 1, blockMaxRows)));
}

void ResultReader::setBlockRows(SQLULEN rows) {
    if (rows != m_rows) {
        check(SQLSetStmtAttr(m_statement, SQL_ATTR_ROW_ARRAY_SIZE, odbc::asAttribute(rows), 0));
        m_rows = rows;
    }
}

void ResultReader::bindBlock() {
    check(SQLSetStmtAttr(m_statement, SQL_ATTR_ROWS_FETCHED_PTR, &m_fetched, 0));
    for (SQLSMALLINT i = 0; i < m_count; ++i) {
        Column& column = m_columns[static_cast<size_t>(i)];
        const size_t bytes = static_cast<size_t>(column.width) * m_rows;
        if (column.block.size() < bytes) {
            column.block.resize(bytes);
        }
        if (column.lengths.size() < m_rows) {
            column.lengths.resize(m_rows);
        }
        check(SQLBindCol(m_statement, static_cast<SQLUSMALLINT>(i + 1), column.cType, column.block.data(),
                         column.width, column.lengths.data()));
    }
}

void ResultReader::readBlocks(DbTable& table) {
    bindBlock();
    for (;;) {
        const SQLRETURN result = SQLFetch(m_statement);
        if (result == SQL_NO_DATA) {
            break;
        }
        check(result);
        for (SQLULEN row = 0; row < m_fetched; ++row) {
            for (SQLSMALLINT i = 0; i < m_count; ++i) {
                table.values.append(
                    blockValue(m_columns[static_cast<size_t>(i)], static_cast<qsizetype>(row)));
            }
        }
        table.rowCount += static_cast<qsizetype>(m_fetched);
    }
    SQLFreeStmt(m_statement, SQL_UNBIND);
}

QVariant ResultReader::blockValue(const Column& column, qsizetype row) const {
    const SQLLEN length = column.lengths[static_cast<size_t>(row)];
    if (length == SQL_NULL_DATA) {
        return {};
    }
    const qsizetype ending = column.cType == SQL_C_WCHAR  ? static_cast<qsizetype>(sizeof(SQLWCHAR))
                             : column.cType == SQL_C_CHAR ? 1
                                                          : 0;
    const auto bytes = std::clamp<qsizetype>(length, 0, column.width - ending);
    return toVariant(column.type, column.cType, column.block.data() + row * column.width, bytes);
}

void ResultReader::readPieces(DbTable& table) {
    for (;;) {
        const SQLRETURN result = SQLFetch(m_statement);
        if (result == SQL_NO_DATA) {
            return;
        }
        check(result);
        for (SQLSMALLINT i = 0; i < m_count; ++i) {
            table.values.append(
                pieceValue(static_cast<SQLUSMALLINT>(i + 1), m_columns[static_cast<size_t>(i)]));
        }
        ++table.rowCount;
    }
}

QVariant ResultReader::pieceValue(SQLUSMALLINT position, Column& column) {
    constexpr size_t pieceBytes = size_t{16} * 1024;
    const size_t capacity = std::max(pieceBytes, static_cast<size_t>(column.width));
    if (column.block.size() < capacity) {
        column.block.resize(capacity);
    }
    const size_t ending = column.cType == SQL_C_WCHAR ? sizeof(SQLWCHAR) : column.cType == SQL_C_CHAR ? 1 : 0;
    QByteArray whole;
    for (;;) {
        SQLLEN length = 0;
        const SQLRETURN result = SQLGetData(m_statement, position, column.cType, column.block.data(),
                                            static_cast<SQLLEN>(capacity), &length);
        if (result == SQL_NO_DATA) {
            break;
        }
        check(result);
        if (length == SQL_NULL_DATA) {
            return {};
        }
        const size_t room = capacity - ending;
        const bool more = length == SQL_NO_TOTAL || static_cast<size_t>(length) > room;
        whole.append(column.block.data(), static_cast<qsizetype>(more ? room : static_cast<size_t>(length)));
        if (!more) {
            break;
        }
    }
    return toVariant(column.type, column.cType, whole.constData(), whole.size());
}

}  // namespace regalon::odbc
