#pragma once

#include <QAnyStringView>
#include <QString>
#include <QVariant>
#include <QVector>

#include <memory>

namespace regalon {

class DbConnection;

/// A column of a result set.
struct DbColumn {
    QString name;  ///< empty for an unnamed expression
    int type = 0;  ///< DbType
};

/// A whole result set, read and disconnected.
struct DbTable {
    QVector<DbColumn> columns;
    QVector<QVariant> values;  ///< row by row; NULL is an invalid QVariant
    qsizetype rowCount = 0;

    const QVariant& at(qsizetype row, qsizetype column) const {
        return values.at(row * columns.size() + column);
    }
    /// Position of a column by its name, letter case aside; -1 when there is none. Of equal names the first.
    qsizetype indexOf(QAnyStringView name) const;
};

/// One field of the current row. Valid until its recordset is closed, opened anew or destroyed.
class DbField {
public:
    DbField(const DbTable& table, qsizetype row, qsizetype column)
        : m_table(table), m_row(row), m_column(column) {}

    QString Name() const { return m_table.columns.at(m_column).name; }
    /// A code of DbType.
    int Type() const { return m_table.columns.at(m_column).type; }
    /// NULL is an invalid QVariant. Integers of up to 32 bits come as int, bigint as qlonglong, bit as bool,
    /// real, float, numeric and money as double, dates as QDateTime (in UTC, since they have no zone), binary
    /// data as QByteArray, the rest as QString. Throws NoCurrentRow behind the last row.
    QVariant Value() const;

private:
    const DbTable& m_table;
    qsizetype m_row;
    qsizetype m_column;
};

/// The fields of a recordset. Valid as a DbField is.
class DbFields {
public:
    DbFields(const DbTable* table, qsizetype row) : m_table(table), m_row(row) {}

    /// 0 for a closed recordset.
    int Count() const;
    /// By 0-based position. Throws ItemNotFound, or ObjectClosed on a closed recordset.
    DbField Item(int position) const;
    /// By name, letter case aside. Throws as above.
    DbField Item(QAnyStringView name) const;

private:
    const DbTable* m_table;
    qsizetype m_row;
};

/// A client-side result set: Open reads everything and lets go of the connection, so that other statements
/// may run and the connection may even close while its rows are walked.
class DbRecordset {
public:
    DbRecordset();
    ~DbRecordset();
    DbRecordset(const DbRecordset&) = delete;
    DbRecordset& operator=(const DbRecordset&) = delete;

    static constexpr int openStatic = 3;    ///< cursor type
    static constexpr int lockReadOnly = 1;  ///< lock type

    /// Sends the text byte for byte as given, in one round trip. The first result with columns becomes this
    /// recordset; a text without any leaves it closed, and that is no failure. Every further result is
    /// drained, and an error in one of them fails the call. Cursor, lock and options are taken for the look
    /// of the call only: a client-side set is static and read-only whatever they say. Throws ObjectOpen when
    /// open, InvalidConnection, or the server's error; then it stays closed.
    void Open(const QString& sql, DbConnection& connection, int cursorType = -1, int lockType = -1,
              int options = -1);
    /// Throws ObjectClosed when closed.
    void Close();
    /// Closes when open.
    void closeIfOpen() noexcept;
    /// 1 = open, 0 = closed.
    int State() const { return m_table ? 1 : 0; }

    /// Whether the walk is behind the last row. Throws ObjectClosed when closed, as the others below.
    bool Eof() const;
    /// Throws NoCurrentRow when already behind the last row.
    void MoveNext();
    int RecordCount() const;
    DbFields Fields() const { return DbFields(m_table.get(), m_row); }
    /// Shorthand for Fields().Item(x).Value().
    QVariant Value(QAnyStringView name) const { return Fields().Item(name).Value(); }
    QVariant Value(int position) const { return Fields().Item(position).Value(); }

    /// The rows themselves, for controls that outlive the recordset. Null when closed.
    std::shared_ptr<const DbTable> table() const { return m_table; }

private:
    std::shared_ptr<const DbTable> m_table;
    qsizetype m_row = 0;
};

}  // namespace regalon
