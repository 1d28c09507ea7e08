// regalon-stock: runs the operations of the document services from the command line or from a script, all of
// a run on one connection, since what is staged belongs to the connection.
#include "app/ErrorSink.h"
#include "app/StockOperation.h"
#include "app/StockServices.h"
#include "common/AppContext.h"
#include "platform/Settings.h"
#include "shell/ConnectionFile.h"
#include "shell/modConnection.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QLoggingCategory>
#include <QProcess>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

using namespace regalon;

enum ExitStatus { Done = 0, Refused = 1, WrongArguments = 2, Failed = 3 };

/// Arguments and script lines that make no sense.
struct UsageError {
    QString what;
};

struct Call {
    const StockOperation* operation = nullptr;
    QVariantList values;
};

/// Tells on standard error, and answers the status.
int fail(ExitStatus status, const QString& what) {
    std::fputs((QStringLiteral("regalon-stock: ") + oneLine(what) + u'\n').toUtf8().constData(), stderr);
    return status;
}

void printHelp() {
    QTextStream out(stdout);
    out << "usage: regalon-stock [--keep-going] FILE OPERATION [ARGUMENT...]\n"
           "       regalon-stock [--keep-going] [--script SCRIPT] FILE\n\n"
           "Runs operations of the document services on the connection that the connection file FILE names,\n"
           "and prints the result and the outputs of each, one a line, as \"name: value\".\n\n"
           "What is staged belongs to the connection and goes with it. A story of several operations is\n"
           "therefore one run: a script, or standard input, with an operation and its arguments a line.\n"
           "Arguments with blanks stand in \"quotes\", \"\" is an empty text, three quotes are a quote; "
           "lines\n"
           "that begin with # are passed over. A script is read whole before its first line runs, standard\n"
           "input line by line. The run ends at the first line that is refused or fails; with --keep-going\n"
           "refusals do not end it.\n\n"
           "Exit status: 0 all was done; 1 an operation answered False (a procedure refused, or a question\n"
           "was answered with no); 2 wrong arguments; 3 no connection, or an operation failed at run "
           "time.\n\n"
           "Operations (int16 and int32 are whole numbers, a number has a point or a comma):\n\n";
    for (const StockOperation& operation : stockOperations())
        out << "  " << operation.usage() << '\n';
}

Call readCall(const QStringList& words) {
    const StockOperation* operation = findStockOperation(words.first());
    if (operation == nullptr)
        throw UsageError{
            QStringLiteral("there is no operation \"%1\"; --help lists them").arg(words.first())};
    Call call{operation, {}};
    QString error;
    if (!operation->parse(words.mid(1), call.values, error))
        throw UsageError{error};
    return call;
}

/// The operations on one connection.
class Session {
public:
    /// False, with `error` telling, when there is no connection.
    bool open(const QString& file, QString& error) {
        ConnectionFile::read(file, m_context.Settings);
        const ConnectionSettings& settings = m_context.Settings;
        if (settings.Server.isEmpty()) {
            error = file + QStringLiteral(": not a connection file, or not readable");
            return false;
        }
        ErrorRecord record;
        if (OpenConnections(m_context, settings.Server, settings.Baza, settings.Login, settings.Haslo,
                            record) != 0) {
            error = QStringLiteral("no connection to %1: %2").arg(settings.Server, record.Description);
            return false;
        }
        m_context.ErrorService = std::make_unique<clsError>();
        m_context.ErrorService->SetShowErrorFunction(&m_sink, QStringLiteral("show"));
        return true;
    }

    ExitStatus run(const Call& call) {
        const int reported = m_sink.count();
        const StockAnswer answer = call.operation->run(m_services, call.values);
        QTextStream out(stdout);
        for (const auto& [name, text] : answer.lines)
            out << name << ": " << text << '\n';
        out.flush();
        if (m_sink.count() > reported)
            return Failed;  // and has been reported; the result does not tell
        if (!answer.refused) {
            // A success may warn, and one without the output Message has said nothing of it yet.
            if (!answer.reason.isEmpty() && !call.operation->outputs.contains(QStringLiteral("Message")))
                fail(Done, call.operation->name + QStringLiteral(": ") + answer.reason);
            return Done;
        }
        fail(Refused, call.operation->name + QStringLiteral(": ") +
                          (answer.reason.isEmpty() ? QStringLiteral("False") : answer.reason));
        return Refused;
    }

private:
    ErrorSink m_sink;
    AppContext m_context;
    StockServices m_services{m_context};
};

/// Runs one call after the other and remembers how they ended.
class Run {
public:
    Run(Session& session, bool keepGoing) : m_session(session), m_keepGoing(keepGoing) {}

    /// False when nothing may follow.
    bool add(const Call& call) {
        const ExitStatus status = m_session.run(call);
        m_status = std::max(m_status, status);
        return status == Done || (status == Refused && m_keepGoing);
    }
    ExitStatus status() const { return m_status; }

private:
    Session& m_session;
    bool m_keepGoing;
    ExitStatus m_status = Done;
};

/// The calls of a text, one a line.
class Script {
public:
    explicit Script(QIODevice* device) : m_input(device) {}

    /// False at the end.
    bool next(Call& call) {
        QString line;
        while (m_input.readLineInto(&line)) {
            ++m_line;
            const QStringList words = QProcess::splitCommand(line);
            if (words.isEmpty() || words.first().startsWith(u'#'))
                continue;
            try {
                call = readCall(words);
            } catch (const UsageError& error) {
                throw UsageError{QStringLiteral("line %1: %2").arg(m_line).arg(error.what)};
            }
            return true;
        }
        return false;
    }

private:
    QTextStream m_input;
    int m_line = 0;
};

QList<Call> readScript(const QString& name) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        throw UsageError{name + QStringLiteral(": ") + file.errorString()};
    Script script(&file);
    QList<Call> calls;
    for (Call call; script.next(call);)
        calls.append(call);
    return calls;
}

struct Options {
    bool help = false;
    bool keepGoing = false;
    bool fromInput = false;
    QString file;
    QList<Call> calls;
};

Options readOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    // An argument may be a negative number.
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption keepGoing(QStringList{QStringLiteral("k"), QStringLiteral("keep-going")});
    const QCommandLineOption script(QStringLiteral("script"), QString(), QStringLiteral("SCRIPT"));
    parser.addOptions({help, keepGoing, script});
    if (!parser.parse(arguments))
        throw UsageError{parser.errorText()};
    Options options;
    options.help = parser.isSet(help);
    options.keepGoing = parser.isSet(keepGoing);
    QStringList words = parser.positionalArguments();
    if (options.help)
        return options;
    if (words.isEmpty())
        throw UsageError{QStringLiteral("which connection file? --help tells how it is used")};
    options.file = words.takeFirst();
    if (parser.isSet(script) && !words.isEmpty())
        throw UsageError{QStringLiteral("either a script or an operation")};
    if (parser.isSet(script))
        options.calls = readScript(parser.value(script));
    else if (words.isEmpty())
        options.fromInput = true;
    else
        options.calls = {readCall(words)};
    return options;
}

int runAll(const Options& options) {
    Session session;
    QString error;
    if (!session.open(options.file, error))
        return fail(Failed, error);
    Run run(session, options.keepGoing);
    for (const Call& call : options.calls) {
        if (!run.add(call))
            return run.status();
    }
    if (options.fromInput) {
        QFile input;
        if (!input.open(stdin, QIODevice::ReadOnly))
            throw UsageError{input.errorString()};
        Script script(&input);
        for (Call call; script.next(call);) {
            if (!run.add(call))
                break;
        }
    }
    return run.status();
}

}  // namespace

int main(int argc, char** argv) {
    // Templates are shown on controls; nothing of them is ever on a screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // What the toolkit remarks about a machine without a desktop is nothing to a script.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    const QApplication application(argc, argv);
    const Settings settings = Settings::load();
    settings.apply();
    useDatabaseSettings(settings);
    try {
        const Options options = readOptions(QApplication::arguments());
        if (options.help) {
            printHelp();
            return Done;
        }
        return runAll(options);
    } catch (const UsageError& error) {
        return fail(WrongArguments, error.what);
    }
}
