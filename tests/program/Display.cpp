#include "program/Display.h"

#include "support/Events.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>

namespace regalon::test {

namespace {

constexpr int patience = 60000;  // milliseconds

/// The title as a pattern that nothing else matches.
QString exactly(const QString& title) {
    QString pattern;
    for (const QChar sign : title) {
        if (QStringLiteral(".[]()*+?^$|\\{}").contains(sign)) {
            pattern += u'\\';
        }
        pattern += sign;
    }
    return u'^' + pattern + u'$';
}

/// What a file of the kernel says, which has no size before it is read.
QByteArray readAll(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList threadsOf(const QString& process) {
    const QString folder = QStringLiteral("/proc/%1/task").arg(process);
    QStringList threads = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (QString& thread : threads) {
        thread.prepend(folder + u'/');
    }
    return threads;
}

/// Whether a thread computes, waits for its turn to, or for a disk. Its state stands behind its name.
bool works(const QString& thread) {
    const QByteArray told = readAll(thread + QStringLiteral("/stat"));
    const char state = told.mid(told.lastIndexOf(')') + 2, 1).append(' ').at(0);
    return state == 'R' || state == 'D';
}

/// Whether nothing that this program started has anything to do: neither the display nor the clients on it
/// nor their server. What waits in a socket makes its reader work.
bool allRest() {
    const QStringList own = threadsOf(QString::number(QCoreApplication::applicationPid()));
    for (const QString& thread : own) {
        const QList<QByteArray> children =
            readAll(thread + QStringLiteral("/children")).simplified().split(' ');
        for (const QByteArray& child : children) {
            const QStringList threads = threadsOf(QString::fromLatin1(child));
            if (!child.isEmpty() && std::any_of(threads.begin(), threads.end(), works)) {
                return false;
            }
        }
    }
    return true;
}

void end(QProcess& process) {
    if (process.state() == QProcess::NotRunning) {
        return;
    }
    process.terminate();
    if (!process.waitForFinished(patience)) {
        process.kill();
        process.waitForFinished(patience);
    }
}

}  // namespace

bool eventually(const std::function<bool()>& condition) {
    return waitFor(condition, patience);
}

Display::~Display() {
    end(m_manager);
    end(m_server);
}

bool Display::start() {
    const QString screen = QStringLiteral("%1x%2x24").arg(m_size.width()).arg(m_size.height());
    m_server.setStandardErrorFile(QProcess::nullDevice());
    m_server.start(
        QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
         screen, QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-noreset")});
    QByteArray number;
    while (!number.endsWith('\n') && m_server.waitForReadyRead(patience)) {
        number += m_server.readAllStandardOutput();
    }
    if (!number.endsWith('\n')) {
        m_why = QStringLiteral("Xvfb: ") + m_server.errorString();
        return false;
    }
    m_name = u':' + QString::fromLatin1(number.trimmed());

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_name);
    m_manager.setProcessEnvironment(environment);
    m_manager.setStandardOutputFile(QProcess::nullDevice());
    m_manager.setStandardErrorFile(QProcess::nullDevice());
    m_manager.start(QStringLiteral("openbox"),
                    {QStringLiteral("--sm-disable"), QStringLiteral("--config-file"),
                     QStringLiteral(REGALON_SOURCE_DIR "/scripts/openbox.xml")});
    const auto managed = [this] {
        return run(QStringLiteral("xprop"),
                   {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")})
            .contains("0x");
    };
    if (!m_manager.waitForStarted() || !eventually(managed)) {
        m_why = QStringLiteral("openbox: ") + m_manager.errorString();
        return false;
    }
    run(QStringLiteral("setxkbmap"), {QStringLiteral("pl")});
    return true;
}

QByteArray Display::run(const QString& program, const QStringList& arguments) const {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_name);
    process.setProcessEnvironment(environment);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    process.waitForFinished(patience);
    return process.readAllStandardOutput();
}

QStringList Display::windows(qint64 process, const QString& title) const {
    const QString pattern = title.isEmpty() ? QStringLiteral(".") : exactly(title);
    const QByteArray found =
        run(QStringLiteral("xdotool"),
            {QStringLiteral("search"), QStringLiteral("--all"), QStringLiteral("--onlyvisible"),
             QStringLiteral("--pid"), QString::number(process), QStringLiteral("--name"), pattern});
    return QString::fromLatin1(found).split(u'\n', Qt::SkipEmptyParts);
}

QStringList Display::titles(qint64 process) const {
    QStringList titles;
    const QStringList all = windows(process);
    for (const QString& window : all) {
        const QByteArray title = run(QStringLiteral("xdotool"), {QStringLiteral("getwindowname"), window});
        titles.append(QString::fromUtf8(title).remove(u'\n'));
    }
    return titles;
}

QRect Display::geometry(const QString& window) const {
    // xdotool counts the frame of a window twice.
    const QList<QByteArray> told =
        run(QStringLiteral("xwininfo"), {QStringLiteral("-id"), window}).split('\n');
    const auto value = [&told](const char* label) {
        for (const QByteArray& line : told) {
            if (line.trimmed().startsWith(label)) {
                return line.mid(line.indexOf(':') + 1).trimmed().toInt();
            }
        }
        return 0;
    };
    return {value("Absolute upper-left X"), value("Absolute upper-left Y"), value("Width"), value("Height")};
}

QString Display::property(const QString& window, const QString& name) const {
    return QString::fromUtf8(
        run(QStringLiteral("xprop"), {QStringLiteral("-id"), window, QStringLiteral("-notype"), name}));
}

void Display::askForSize(const QString& window, QSize size) const {
    run(QStringLiteral("xdotool"), {QStringLiteral("windowsize"), window, QString::number(size.width()),
                                    QString::number(size.height())});
}

QString Display::keyboardOwner() const {
    const auto number = [this](const char* question) {
        return QString::fromLatin1(run(QStringLiteral("xdotool"), {QString::fromLatin1(question)}).trimmed());
    };
    // What the window manager means to have done and what the display has done.
    const QString active = number("getactivewindow");
    return active == number("getwindowfocus") ? active : QString();
}

void Display::askFor(const QString& window) const {
    run(QStringLiteral("xdotool"), {QStringLiteral("windowactivate"), window});
}

bool Display::activate(const QString& window) const {
    return eventually([&] {
        if (keyboardOwner() == window) {
            return true;
        }
        askFor(window);
        return false;
    });
}

// The next event goes to what this one leaves: a key that comes while a list is closing would be lost with
// it.
void Display::act(const QStringList& event) const {
    run(QStringLiteral("xdotool"), event);
    EXPECT_TRUE(eventually(allRest)) << qPrintable(event.join(u' '));
}

void Display::moveTo(QPoint at) const {
    act({QStringLiteral("mousemove"), QString::number(at.x()), QString::number(at.y())});
}

void Display::click(QPoint at) const {
    act({QStringLiteral("mousemove"), QString::number(at.x()), QString::number(at.y()),
         QStringLiteral("click"), QStringLiteral("1")});
}

void Display::drag(QPoint from, QPoint to) const {
    act({QStringLiteral("mousemove"), QString::number(from.x()), QString::number(from.y()),
         QStringLiteral("mousedown"), QStringLiteral("1"), QStringLiteral("mousemove"),
         QString::number(to.x()), QString::number(to.y()), QStringLiteral("mouseup"), QStringLiteral("1")});
}

void Display::key(const QString& keys, int times) const {
    act({QStringLiteral("key"), QStringLiteral("--repeat"), QString::number(times), keys});
}

void Display::type(const QString& text) const {
    act({QStringLiteral("type"), text});
}

QImage Display::picture() const {
    const QByteArray shot = run(QStringLiteral("import"),
                                {QStringLiteral("-window"), QStringLiteral("root"), QStringLiteral("-depth"),
                                 QStringLiteral("8"), QStringLiteral("ppm:-")});
    return QImage::fromData(shot, "PPM").convertToFormat(QImage::Format_RGB32);
}

QImage Display::settledPicture() const {
    QImage last;
    eventually([&] {
        if (!allRest()) {
            return false;
        }
        const QImage before = last;
        last = picture();
        return last == before && allRest();
    });
    return last;
}

QImage Display::changedPicture(const QImage& before, const QRect& part) const {
    const QImage old = before.copy(part);
    if (!eventually([&] { return picture().copy(part) != old; })) {
        return {};
    }
    return settledPicture();
}

}  // namespace regalon::test
