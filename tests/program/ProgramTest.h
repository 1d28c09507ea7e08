#pragma once

#include "program/Client.h"
#include "program/Display.h"
#include "program/Plan.h"
#include "program/Printers.h"
#include "support/LocalWarehouse.h"

#include <gtest/gtest.h>

#include <memory>

namespace regalon::test {

/// The program as it is delivered, in a window, on a demo warehouse and its server: everything is done by
/// mouse and keys, and seen by the display, the server's trace, files and exit codes.
class ProgramTest : public testing::Test {
protected:
    explicit ProgramTest(QSize screen = {1280, 1024}) : display(screen) {}

    void SetUp() override;
    /// Keeps what the display shows at the end of a test that failed.
    void TearDown() override;
    /// A client with the warehouse's drive C, not started.
    std::unique_ptr<Client> newClient() const;
    /// Starts `client` on the warehouse and waits for its main window.
    void startClient(const QStringList& furtherArguments = {});
    /// Opens a menu of the main window by its key and takes an item, counted from 1.
    void chooseInMenu(const QString& menu, int item = 1) const;
    /// Opens a window of the warehouse's menu by keys, the warehouse view if none is named, and sees its
    /// plan.
    void openPlan(int item = 1);
    /// Waits for a plan on the display or a part of it and takes it for the one to click on.
    void seePlan(const QRect& within = {});
    void click(const Spot& spot) const;
    /// Clicks a button of the warehouse view's toolbar, 1 to 4, and of the panel below the plan, 1 or 2.
    void clickToolBar(int button) const;
    void clickPanelBar(int button) const;
    /// Waits for a statement in the server's trace.
    bool traced(const QString& statement) const;

    /// Waits for a window, answers it by a key and waits until it is gone and the keyboard back.
    void answer(const QString& title, const QString& key) const;
    /// Closes the main window by its frame.
    void closeFrame() const;
    /// Answers the exit question by key and waits until it is gone.
    void answerExit(bool yes) const;
    /// Leaves the program by its menu's key. The exit code.
    int leave() const;
    /// Established connections of the server, from the kernel's table.
    int sessions() const;

    /// Keeps a picture beside the build, for people to look at.
    static void keep(const QImage& picture, const QString& name);

    void clickButton(const QRect& strip, int button, int outOf) const;
    QString inDriveC(const QString& name) const;

    Display display;
    LocalWarehouse warehouse;
    std::unique_ptr<Client> client;
    Plan plan;
    double scale = 1;
};

/// Writes a connection file for a warehouse with the program that administrators use.
void writeConnectionFile(const LocalWarehouse& warehouse, const QString& file,
                         const QString& password = LocalWarehouse::password(),
                         const QString& database = LocalWarehouse::database());
/// What the warehouse view asks for on a click on a location.
QString materialStatement(const Spot& spot);
/// What it sends for the list of materials, by phase.
QString listStatement(const Spot& spot, int phase);

}  // namespace regalon::test
