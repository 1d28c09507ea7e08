#pragma once

#include "common/AppContext.h"
#include "platform/MsgBox.h"
#include "shell/ChildWindow.h"
#include "support/LocalWarehouse.h"

#include <QString>
#include <QStringList>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

class QAction;

namespace regalon {

class mdiKolvestra;

namespace test {

/// A child window of the program, with a line of state and counts of its load and unload routines.
class ChildStandIn : public QWidget {
public:
    explicit ChildStandIn(AppContext* context = nullptr);

    int loads = 0;
    int unloads = 0;
    qint32 top = -1;
    qint32 left = -1;
    QString state;
    bool connectedAtUnload = false;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    AppContext* m_context;
    bool m_loaded = false;
};

/// While it lives a server named without a port is sought on port 1, where nobody listens.
class ClosedDefaultPort {
public:
    ClosedDefaultPort();
    ~ClosedDefaultPort();
    ClosedDefaultPort(const ClosedDefaultPort&) = delete;
    ClosedDefaultPort& operator=(const ClosedDefaultPort&) = delete;
};

/// Settings of a site that no test connects to, a value for every key.
ConnectionSettings sampleSettings();

/// Drive C of this test, recorded messages and a program context.
class ShellFixture : public ::testing::Test {
protected:
    ShellFixture();
    ~ShellFixture() override;

    /// Makes a temporary folder drive C.
    void useDriveC(const QString& folder);
    /// File of this machine for a name in C:\Regalon.
    QString inRegalon(const QString& name) const;
    /// Settings that open the demo database of a running server.
    static ConnectionSettings settingsOf(const LocalWarehouse& warehouse);

    /// The main window after its load routine.
    mdiKolvestra& start(const QString& commandLine, ChildWindows children = {});
    /// Chooses a menu item with the mouse.
    void chooseItem(const QString& menu, const QString& item);
    QAction* action(const QString& name) const;
    QString panel(const QString& key) const;
    QStringList messageTexts() const;

    MsgBoxRecorder messages;
    AppContext context;
    std::unique_ptr<mdiKolvestra> window;

private:
    QTemporaryDir m_drive;
    QString m_driveC;
};

/// The same with a demo warehouse and a running server whose connection file is C:\Regalon\connect.txt.
class WarehouseFixture : public ShellFixture {
protected:
    void SetUp() override;

    LocalWarehouse warehouse;
};

}  // namespace test
}  // namespace regalon
