#include "program/Client.h"

namespace regalon::test {

namespace {

constexpr int patience = 60000;  // milliseconds

}  // namespace

Client::Client(const Display& display)
    : m_display(display), m_environment(QProcessEnvironment::systemEnvironment()) {
    setEnvironment(QStringLiteral("DISPLAY"), display.name());
    setEnvironment(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    for (const char* variable : {"QT_SCALE_FACTOR", "WAYLAND_DISPLAY", "LC_ALL", "LANGUAGE", "LC_MESSAGES"}) {
        setEnvironment(QString::fromLatin1(variable), {});
    }
    setEnvironment(QStringLiteral("LANG"), QStringLiteral("C.UTF-8"));
}

Client::~Client() {
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(patience);
    }
}

void Client::setEnvironment(const QString& name, const QString& value) {
    if (value.isEmpty()) {
        m_environment.remove(name);
    } else {
        m_environment.insert(name, value);
    }
}

bool Client::start(const QStringList& arguments) {
    m_process.setProcessEnvironment(m_environment);
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.start(QStringLiteral(REGALON_BINARY_DIR "/bin/regalon"), arguments);
    return m_process.waitForStarted(patience);
}

int Client::exitCode() {
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(patience)) {
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QString Client::window(const QString& title) const {
    QStringList found;
    eventually([&] {
        found = m_display.windows(process(), title);
        return !found.isEmpty() || !running();
    });
    return found.value(0);
}

bool Client::windowGone(const QString& title) const {
    return eventually([&] { return m_display.windows(process(), title).isEmpty(); });
}

QString Client::turnTo(const QString& title) const {
    const QString number = window(title);
    return !number.isEmpty() && m_display.activate(number) ? number : QString();
}

bool Client::backFrom(const QString& window) const {
    return eventually([&] {
        const QStringList open = m_display.windows(process());
        if (!running() || (!open.contains(window) && open.contains(m_display.keyboardOwner()))) {
            return true;
        }
        // A window manager that gives the keyboard to a window which is closing just then leaves it with
        // none.
        if (!open.isEmpty() && !open.contains(window)) {
            m_display.askFor(open.last());
        }
        return false;
    });
}

bool Client::answer(const QString& title, const QString& key) const {
    const QString number = turnTo(title);
    if (number.isEmpty()) {
        return false;
    }
    m_display.key(key);
    return backFrom(number);
}

QString Client::messageTitle() const {
    QStringList others;
    eventually([&] {
        others = m_display.titles(process());
        others.removeAll(mainTitle());
        return !others.isEmpty() || !running();
    });
    return others.value(0);
}

QString Client::mainTitle() {
    return QStringLiteral("Regalon ");
}

}  // namespace regalon::test
