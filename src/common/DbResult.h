#pragma once

// Private to the gateway.

#include "common/DbOdbc.h"
#include "common/DbRecordset.h"

#include <memory>
#include <vector>

namespace regalon::odbc {

/// Type code of the platform for what ODBC says of a column or parameter. `typeName` is the server's name of
/// the type; it parts money from decimal, which ODBC does not.
int typeCode(SQLSMALLINT sqlType, SQLULEN size, const QString& typeName);

/// Reads whole result sets of one statement. Kept with the statement, so that its buffers are made once.
class ResultReader {
public:
    explicit ResultReader(SQLHSTMT statement) : m_statement(statement) {}

    /// Reads the current result of the statement to its end. Throws std::runtime_error never; a failing ODBC
    /// call throws StatementFailed.
    std::shared_ptr<const DbTable> read(SQLSMALLINT columnCount);

private:
    struct Column {
        SQLSMALLINT cType = 0;
        qsizetype width = 0;      ///< bytes of one value in the block; 0 = read in pieces
        std::vector<char> block;  ///< m_rows values
        std::vector<SQLLEN> lengths;
        int type = 0;
    };

    void describe(SQLSMALLINT columnCount, DbTable& table);
    void bindBlock();
    void readBlocks(DbTable& table);
    void readPieces(DbTable& table);
    QVariant blockValue(const Column& column, qsizetype row) const;
    QVariant pieceValue(SQLUSMALLINT position, Column& column);
    void setBlockRows(SQLULEN rows);

    SQLHSTMT m_statement;
    std::vector<Column> m_columns;
    SQLSMALLINT m_count = 0;
    SQLULEN m_rows = 1;
    SQLULEN m_fetched = 0;
    bool m_pieces = false;
};

/// A failed call on the statement; its records are still to be read.
struct StatementFailed {};

}  // namespace regalon::odbc
