#pragma once

#include "platform/RunTimeError.h"

#include <QObject>
#include <QPointer>
#include <QString>

namespace regalon {

enum class eErrType : qint16 { Debug = 1, Info = 2, Warning = 3, Error = 4 };

enum class eLogMode : qint16 { Off = 1, ToFile = 2 };

/// Reports failures of data classes and modules to the user, remembers the last one, and writes a log when
/// logging is on (it is off, and nothing in the system turns it on). One instance, held by AppContext.
/// No operation throws: what fails inside is shown in a box of its own.
class clsError {
public:
    /// Failures raised under this number are the system's own messages, shown without their number.
    static constexpr qint32 userErrorNumber = static_cast<qint32>(0x80040201U);

    clsError();
    ~clsError();
    clsError(const clsError&) = delete;
    clsError& operator=(const clsError&) = delete;

    /// The report: remembers, logs, and shows. strMsg replaces the error's own text when it is not empty.
    void ShowError(eErrType type, const QString& strObjectName, const QString& strFunctionName,
                   const ErrorRecord& vErr, const QString& strMsg = QString());

    /// From now on messages go to the invokable method `strFunctionName(QString text, int flags, QString
    /// title)` of vObject instead of a message box. A deleted object falls back to the message box.
    void SetShowErrorFunction(QObject* vObject, const QString& strFunctionName);

    /// Remembers description and number, and reports nothing.
    void SaveError(const ErrorRecord& vErr);

    bool DebugMode() const { return m_debugMode; }
    void setDebugMode(bool on) { m_debugMode = on; }
    /// The whole message of the last report, before the "##" lines were picked out of it.
    QString LastErrorDescription() const { return m_lastErrorDescription; }
    qint32 LastErrorNumber() const { return m_lastErrorNumber; }
    qint32 UserErrorNumber() const { return userErrorNumber; }
    void SetLogging(eLogMode mode);
    /// The next log entry is skipped (once).
    void setDoNotLogNextError(bool skip) { m_doNotLogNextError = skip; }

    /// Path of the log file in the system's form; empty while logging is off.
    QString logFileName() const { return m_logFileName; }

private:
    void report(eErrType type, const QString& objectName, const QString& functionName,
                const ErrorRecord& error, const QString& replacement);
    static QString chooseMessage(eErrType type, const ErrorRecord& error, const QString& replacement);
    void LogError(const QString& text, qint16 eventType);
    void LogEvent(const QString& text, qint16 eventType) const;
    void ShowMessage(const QString& text, qint32 flags, const QString& title);
    QString Extract(const QString& text, const QString& key);
    static QString marked(const QString& text, const QString& key);
    template <class Body>
    void reported(const QString& routine, Body&& body);
    void startLog(eLogMode mode);

    bool m_debugMode = false;
    bool m_doNotLogNextError = false;
    QPointer<QObject> m_showObject;
    QString m_showFunction;
    QString m_lastErrorDescription;
    qint32 m_lastErrorNumber = 0;
    QString m_logFileName;
};

}  // namespace regalon
