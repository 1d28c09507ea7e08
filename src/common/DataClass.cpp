#include "common/DataClass.h"

#include "common/AppContext.h"
#include "common/modSQL.h"
#include "platform/Convert.h"
#include "platform/RunTimeError.h"

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

struct ExecText {
    QString procedure;
    QStringList arguments;
};

// "exec name arg,arg": the arguments begin at the second blank itself, so that the first one keeps a blank in
// front.
ExecText splitExecText(const QString& text) {
    const qsizetype first = text.indexOf(u' ');
    const qsizetype second = first < 0 ? -1 : text.indexOf(u' ', first + 1);
    if (second < 0) {
        throw RunTimeError(RunTime::InvalidProcedureCall);
    }
    return {text.mid(first + 1, second - first - 1), text.mid(second).split(u',')};
}

// A text that itself holds an apostrophe or "N'" loses that as well.
QString unquoted(QString argument) {
    if (argument.startsWith(u"N'")) {
        argument.remove(u"N'"_s).remove(u'\'');
    }
    return argument;
}

}  // namespace

DataClass::DataClass(AppContext& context, QString reportName)
    : m_context(context), m_reportName(std::move(reportName)) {}

bool DataClass::connectionIsLost() const {
    return !m_context.ConnMain || m_context.ConnMain->isLost();
}

void DataClass::openRead(const QString& sql) {
    Recordset.closeIfOpen();
    Recordset.Open(sql, mainConnection(m_context));
}

QString DataClass::text(QAnyStringView column, const QString& fallback) const {
    return ToText(NullToValue(Recordset.Value(column), fallback));
}

qint16 DataClass::number(QAnyStringView column) const {
    return ToInt16(NullToValue(Recordset.Value(column), 0));
}

double DataClass::fraction(QAnyStringView column) const {
    return ToDouble(NullToValue(Recordset.Value(column), 0));
}

bool DataClass::EcexProcedure(const QString& strSQL) {
    trap("EcexProcedure", [&] {
        Recordset.closeIfOpen();
        Recordset.Open(strSQL, mainConnection(m_context), DbRecordset::openStatic, DbRecordset::lockReadOnly);
    });
    return true;
}

void DataClass::bindProcedure(const QString& procedure) {
    m_message.clear();
    Command.setActiveConnection(mainConnection(m_context));
    Command.setCommandType(DbCommand::storedProcedure);
    Command.setCommandText(procedure);
    Command.Parameters().Refresh();
}

void DataClass::execute(const QString& procedure, Inputs inputs) {
    bindProcedure(procedure);
    for (const auto& [name, value] : inputs) {
        Command.Parameters().Item(name).setValue(value);
    }
    Command.Execute();
}

QVariant DataClass::parameterFromEnd(int place) {
    DbParameters& parameters = Command.Parameters();
    return parameters.Item(parameters.Count() - place).Value();
}

ProcedureOutcome DataClass::outcome() {
    DbParameters& parameters = Command.Parameters();
    const DbParameter& last = parameters.Item(parameters.Count() - 1);
    const QString message = ToText(NullToValue(last.Value()));
    const qint16 returned = ToInt16(parameters.Item(0).Value());
    // What merely went in says nothing.
    if (last.info().output)
        m_message = message;
    return {returned, message};
}

ProcedureOutcome DataClass::callProcedure(const QString& procedure, Inputs inputs) {
    execute(procedure, inputs);
    return outcome();
}

bool DataClass::callProcedure(QAnyStringView routine, const QString& procedure, Inputs inputs,
                              QString& strErrDesc) {
    bool accepted = false;
    trap(routine, [&] {
        const ProcedureOutcome answer = callProcedure(procedure, inputs);
        strErrDesc = answer.message;
        accepted = answer.accepted();
    });
    return accepted;
}

bool DataClass::callProcedure(QAnyStringView routine, const QString& procedure, Inputs inputs) {
    QString unread;
    return callProcedure(routine, procedure, inputs, unread);
}

bool DataClass::EcexProcedureParam(const QString& strSQL, QString& strErrDesc) {
    bool accepted = false;
    trap("EcexProcedureParam", [&] {
        const ExecText text = splitExecText(strSQL);
        Recordset.closeIfOpen();
        bindProcedure(text.procedure);
        for (int i = 0; i < text.arguments.size(); ++i) {
            Command.Parameters().Item(i + 1).setValue(unquoted(text.arguments.at(i)));
        }
        Command.Execute();
        const ProcedureOutcome answer = outcome();
        strErrDesc = answer.message;
        accepted = answer.accepted();
    });
    return accepted;
}

}  // namespace regalon
