#include "shell/ShellFixture.h"

#include "platform/Paths.h"
#include "platform/Settings.h"
#include "shell/ConnectionFile.h"
#include "shell/mdiKolvestra.h"
#include "support/Events.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

namespace regalon::test {

ChildStandIn::ChildStandIn(AppContext* context) : m_context(context) {
    setWindowTitle(QStringLiteral("Okno próbne"));
    resize(300, 200);
}

void ChildStandIn::showEvent(QShowEvent* event) {
    if (!m_loaded) {
        m_loaded = true;
        ++loads;
    }
    QWidget::showEvent(event);
}

void ChildStandIn::closeEvent(QCloseEvent* event) {
    m_loaded = false;
    ++unloads;
    connectedAtUnload = m_context != nullptr && m_context->ConnMain && m_context->ConnMain->State() == 1;
    event->accept();
}

ClosedDefaultPort::ClosedDefaultPort() {
    Settings settings;
    settings.OdbcDefaultPort = 1;
    useDatabaseSettings(settings);
}

ClosedDefaultPort::~ClosedDefaultPort() {
    useDatabaseSettings(Settings());
}

ConnectionSettings sampleSettings() {
    ConnectionSettings settings;
    settings.Login = QStringLiteral("sa");
    settings.Haslo = QStringLiteral("zażółć");
    settings.Server = QStringLiteral("SRV1,1433");
    settings.Baza = QStringLiteral("WMS");
    settings.LoginSAP = QStringLiteral("manager");
    settings.HasloSAP = QStringLiteral("tajne");
    return settings;
}

ShellFixture::ShellFixture() {
    useDriveC(m_drive.path());
}

ShellFixture::~ShellFixture() {
    Paths::setMapping({});
}

void ShellFixture::useDriveC(const QString& folder) {
    m_driveC = folder;
    QDir(folder).mkpath(QStringLiteral("Regalon"));
    Paths::Mapping mapping;
    mapping.DriveC = folder;
    Paths::setMapping(mapping);
}

QString ShellFixture::inRegalon(const QString& name) const {
    return m_driveC + QStringLiteral("/Regalon/") + name;
}

ConnectionSettings ShellFixture::settingsOf(const LocalWarehouse& warehouse) {
    ConnectionSettings settings;
    settings.Login = LocalWarehouse::login();
    settings.Haslo = LocalWarehouse::password();
    settings.Baza = LocalWarehouse::database();
    settings.Server = warehouse.server();
    return settings;
}

mdiKolvestra& ShellFixture::start(const QString& commandLine, ChildWindows children) {
    window = std::make_unique<mdiKolvestra>(context, std::move(children));
    window->MDIForm_Load(commandLine);
    showAndWait(window.get());
    return *window;
}

void ShellFixture::chooseItem(const QString& menuName, const QString& item) {
    auto* menu = window->findChild<QMenu*>(menuName);
    ASSERT_NE(menu, nullptr);
    QMenuBar* bar = window->menuBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu->menuAction()).center());
    if (!waitFor([menu] { return menu->isVisible(); }, 1000)) {
        return;
    }
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action(item)).center());
    if (menu->isVisible()) {
        menu->close();
    }
}

QAction* ShellFixture::action(const QString& name) const {
    return window->findChild<QAction*>(name);
}

QString ShellFixture::panel(const QString& key) const {
    const auto* label = window->findChild<QLabel*>(key);
    return label == nullptr ? QStringLiteral("(no such panel)") : label->text();
}

QStringList ShellFixture::messageTexts() const {
    QStringList texts;
    for (const MsgBoxRecorder::Message& message : messages.messages()) {
        texts.append(message.Text);
    }
    return texts;
}

void WarehouseFixture::SetUp() {
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
    useDriveC(warehouse.driveC());
    ConnectionFile::write(QStringLiteral("C:\\Regalon\\connect.txt"), settingsOf(warehouse));
}

}  // namespace regalon::test
