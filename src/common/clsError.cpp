#include "common/clsError.h"

#include "platform/Convert.h"
#include "platform/MsgBox.h"
#include "platform/Paths.h"
#include "platform/Screen.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QMetaObject>
#include <QSysInfo>

#include <algorithm>

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

const QString lineEnd = u"\r\n"_s;
const QString userMark = u"##"_s;
const QString className = u"clsError"_s;

// The system's computer names fit a buffer of 32 characters with its end sign; a longer name reads as none.
constexpr qsizetype longestComputerName = 31;

struct Presentation {
    qint32 flags;
    QString label;
    qint16 event;
};

Presentation presentation(eErrType type) {
    constexpr qint16 eventError = 1;
    constexpr qint16 eventWarning = 2;
    constexpr qint16 eventInformation = 4;
    switch (type) {
        case eErrType::Debug:
            return {MsgFlag::OkOnly, u"Debug - "_s, eventInformation};
        case eErrType::Info:
            return {MsgFlag::Information, u"Info "_s, eventInformation};
        case eErrType::Warning:
            return {MsgFlag::Exclamation, u"Warning - "_s, eventWarning};
        case eErrType::Error:
            break;
    }
    return {MsgFlag::Critical, u"Error - "_s, eventError};
}

QString numbered(const ErrorRecord& error) {
    return QString::number(error.Number) + lineEnd + error.Description;
}

// Runs a routine of the service itself. It must not report through ShowError, so it has a box of its own.
template <class Body>
bool guarded(const QString& routine, bool visible, Body&& body) {
    try {
        body();
        return true;
    } catch (...) {
        if (visible) {
            MsgBox(numbered(currentError()), MsgFlag::Critical, className + u" ["_s + routine + u']');
        }
        return false;
    }
}

QString momentDigits() {
    const QTime now = QTime::currentTime();
    return QString::number(now.hour()) + QString::number(now.minute()) + QString::number(now.second());
}

QString machinePart() {
    QString name = QSysInfo::machineHostName();
    if (name.size() > longestComputerName) {
        name.clear();
    }
    name = TrimBlanks(name);
    name = TrimBlanks(name.remove(u'\r').remove(u'\n'));
    return name.isEmpty() ? momentDigits() : name;
}

bool anotherInstanceRuns() {
    const QString own = QCoreApplication::applicationFilePath();
    const QString ownPid = QString::number(QCoreApplication::applicationPid());
    const QStringList entries = QDir(u"/proc"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return std::any_of(entries.begin(), entries.end(), [&](const QString& entry) {
        return entry.front().isDigit() && entry != ownPid &&
               QFileInfo(u"/proc/"_s + entry + u"/exe"_s).symLinkTarget() == own;
    });
}

}  // namespace

clsError::clsError() {
    guarded(u"Class_Initialize"_s, true, [this] { SetLogging(eLogMode::Off); });
}

clsError::~clsError() {
    guarded(u"Class_Terminate"_s, true, [this] {
        m_showObject.clear();
        SetLogging(eLogMode::Off);
    });
}

void clsError::ShowError(eErrType type, const QString& strObjectName, const QString& strFunctionName,
                         const ErrorRecord& vErr, const QString& strMsg) {
    guarded(u"ShowError"_s, true, [&] { report(type, strObjectName, strFunctionName, vErr, strMsg); });
}

void clsError::report(eErrType type, const QString& objectName, const QString& functionName,
                      const ErrorRecord& error, const QString& replacement) {
    m_lastErrorNumber = error.Number;
    QString message = chooseMessage(type, error, replacement);
    m_lastErrorDescription = message;

    const Presentation look = presentation(type);
    const bool named = type != eErrType::Info;
    const QString object = named ? objectName : QString();
    const QString bracket = named ? u'[' + functionName + u']' : QString();

    const QString title = look.label + object + u' ' + bracket;
    QString entry = lineEnd + TrimBlanks(DateTimeText(QDateTime::currentDateTime())) + u':' + title +
                    lineEnd + message + lineEnd + u"Source: "_s + TrimBlanks(error.Source);
    if (error.LastDllError != 0) {
        entry += lineEnd + u"LastDllError: "_s + QString::number(error.LastDllError);
    }
    LogError(entry, look.event);

    if (type != eErrType::Debug) {
        message = Extract(message, userMark);
    }
    const PlainPointer pointer;
    if (m_debugMode || type != eErrType::Debug) {
        ShowMessage(message, look.flags, title);
    }
}

QString clsError::chooseMessage(eErrType type, const ErrorRecord& error, const QString& replacement) {
    if (!replacement.isEmpty()) {
        return replacement;
    }
    if (type == eErrType::Info || error.Number == userErrorNumber) {
        return error.Description;
    }
    return numbered(error);
}

void clsError::SetShowErrorFunction(QObject* vObject, const QString& strFunctionName) {
    reported(u"SetShowErrorFunction"_s, [&] {
        m_showObject = vObject;
        m_showFunction = strFunctionName;
    });
}

void clsError::SaveError(const ErrorRecord& vErr) {
    m_lastErrorDescription = vErr.Description;
    m_lastErrorNumber = vErr.Number;
}

QString clsError::Extract(const QString& text, const QString& key) {
    QString result = text;
    reported(u"Extract"_s, [&] { result = marked(text, key); });
    return result;
}

// These two routines alone report through the service that they belong to.
template <class Body>
void clsError::reported(const QString& routine, Body&& body) {
    try {
        body();
    } catch (...) {
        ShowError(eErrType::Error, className, routine, currentError());
    }
}

QString clsError::marked(const QString& text, const QString& key) {
    if (!text.contains(key, Qt::CaseInsensitive)) {
        return text;
    }
    QString collected;
    // A last single character is never looked at: it cannot hold the mark.
    for (qsizetype position = 0; position < text.size() - 1;) {
        const qsizetype lineFeed = text.indexOf(u'\n', position);
        const QString line = text.mid(position, lineFeed < 0 ? -1 : lineFeed - position);
        if (line.isEmpty()) {
            break;
        }
        const qsizetype mark = line.indexOf(key, 0, Qt::CaseInsensitive);
        const QString piece = mark < 0 ? QString() : line.mid(mark + key.size());
        if (!piece.isEmpty()) {
            collected += collected.isEmpty() ? piece : lineEnd + piece;
        }
        if (lineFeed < 0) {
            break;
        }
        position = lineFeed + 1;
    }
    return collected.isEmpty() ? text : collected;
}

void clsError::ShowMessage(const QString& text, qint32 flags, const QString& title) {
    guarded(u"ShowMessage"_s, true, [&] {
        if (m_showFunction.isEmpty() || !m_showObject) {
            MsgBox(text, flags, title);
            return;
        }
        const bool called = QMetaObject::invokeMethod(
            m_showObject.data(), m_showFunction.toUtf8().constData(), Qt::DirectConnection,
            Q_ARG(QString, text), Q_ARG(int, flags), Q_ARG(QString, title));
        if (!called) {
            throw RunTimeError(RunTime::NoSuchMember,
                               u"The object has no method '%1'."_s.arg(m_showFunction));
        }
    });
}

void clsError::LogError(const QString& text, qint16 eventType) {
    const bool written = guarded(u"LogError"_s, m_debugMode, [&] {
        if (m_debugMode || !m_doNotLogNextError) {
            LogEvent(text, eventType);
        }
    });
    m_doNotLogNextError = false;
    if (!written) {
        SetLogging(eLogMode::Off);
    }
}

// Entries begin with the line end of their text; the event type stands in a line of its own behind it.
void clsError::LogEvent(const QString& text, qint16 eventType) const {
    if (m_logFileName.isEmpty()) {
        return;
    }
    QFile file;
    Paths::open(file, m_logFileName, QIODevice::WriteOnly | QIODevice::Append);
    const QByteArray entry =
        (text + lineEnd + u"Event type: "_s + QString::number(eventType) + lineEnd).toUtf8();
    if (file.write(entry) != entry.size() || !file.flush()) {
        throw RunTimeError(RunTime::DeviceIOError);
    }
}

void clsError::SetLogging(eLogMode mode) {
    const bool started = guarded(u"SetLogging"_s, m_debugMode, [&] { startLog(mode); });
    if (!started) {
        m_logFileName.clear();
    }
}

void clsError::startLog(eLogMode mode) {
    if (mode != eLogMode::ToFile) {
        m_logFileName.clear();
        return;
    }
    const QFileInfo program(QCoreApplication::applicationFilePath());
    // A program that was replaced while it started does not know where it lies.
    if (program.filePath().isEmpty()) {
        throw RunTimeError(RunTime::PathNotFound);
    }
    QString name =
        program.path() + u'\\' + TrimBlanks(program.completeBaseName()) + u'_' + TrimBlanks(machinePart());
    if (anotherInstanceRuns()) {
        name += momentDigits();
    }
    m_logFileName = name + u".log"_s;
}

}  // namespace regalon
