#pragma once

#include "common/DbGateway.h"
#include "common/ErrorTrap.h"

#include <QAnyStringView>
#include <QString>
#include <QVariant>

#include <initializer_list>
#include <utility>

namespace regalon {

struct AppContext;

/// The result of a stored procedure: above 0 means refused, with the reason in the message.
struct ProcedureOutcome {
    qint16 returnValue = 0;
    QString message;  ///< the last parameter; "" for NULL
    bool accepted() const { return returnValue <= 0; }
};

/// What every data class has: one recordset and one command on ConnMain, and the ways in which they are used.
/// A class derives from it and hands in the name under which it reports, which is not always its own.
class DataClass {
public:
    using Inputs = std::initializer_list<std::pair<const char*, QVariant>>;

    DataClass(const DataClass&) = delete;
    DataClass& operator=(const DataClass&) = delete;

    /// Runs a text that returns rows into Recordset. True also after a failure, which it reports: the caller
    /// then finds the recordset closed.
    bool EcexProcedure(const QString& strSQL);
    /// What the last read left, for the caller of EcexProcedure.
    const DbRecordset& rows() const { return Recordset; }
    /// Whether there is no connection, or a failure has shown that the server has gone: whatever is asked
    /// next fails as well.
    bool connectionIsLost() const;

    /// Runs a procedure from a ready "exec" text ("exec name arg,arg"), by position. The arguments are split
    /// at every comma; N'...' loses every "N'" and "'" in it. True when the return value is 0 or below;
    /// strErrDesc takes the procedure's message. Reports its own failures, and then keeps false and
    /// strErrDesc.
    bool EcexProcedureParam(const QString& strSQL, QString& strErrDesc);

    /// Hands over what the last call left in the last parameter, for callers of routines that give no message
    /// out: "" if the procedure has no output there, after a failure, and the second time.
    QString takeMessage() { return std::exchange(m_message, QString()); }

protected:
    DataClass(AppContext& context, QString reportName);
    ~DataClass() = default;

    AppContext& context() const { return m_context; }

    /// Form A of the standard handler under this class's name. False after a report.
    template <class Body>
    bool trap(QAnyStringView routine, Body&& body) {
        return ClassTrap(m_context, m_reportName, routine, std::forward<Body>(body));
    }

    /// The opening steps of a keyed read: closes what the last read left open, then opens the text. Throws.
    void openRead(const QString& sql);

    /// A column of the row that Recordset stands on: as text, and as a 16-bit number or a fraction with 0 for
    /// NULL. Throws.
    QString text(QAnyStringView column, const QString& fallback = QString()) const;
    qint16 number(QAnyStringView column) const;
    double fraction(QAnyStringView column) const;

    /// Binds Command to the procedure and takes its parameter list. Throws.
    void bindProcedure(const QString& procedure);

    /// Binds, sets the inputs in their order, executes. Throws. Return value and outputs can be read from
    /// Command afterwards.
    void execute(const QString& procedure, Inputs inputs);

    /// What the executed call left in a parameter, counted from the end of the list: 1 is the last. NULL is
    /// an invalid value. Throws.
    QVariant parameterFromEnd(int place);

    /// Return value and message of the executed call. Throws for a return value beyond 16 bits.
    ProcedureOutcome outcome();

    /// The named call: execute() and outcome().
    ProcedureOutcome callProcedure(const QString& procedure, Inputs inputs);

    /// The same under the standard handler: true when the return value is 0 or below. strErrDesc takes the
    /// message and stays as it was after a failure.
    bool callProcedure(QAnyStringView routine, const QString& procedure, Inputs inputs, QString& strErrDesc);

    /// The same for a routine whose caller gets no message.
    bool callProcedure(QAnyStringView routine, const QString& procedure, Inputs inputs);

    DbRecordset Recordset;
    DbCommand Command;

private:
    AppContext& m_context;
    QString m_reportName;
    QString m_message;
};

}  // namespace regalon
