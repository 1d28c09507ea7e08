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
    /// Writes the warehouse's connection file with the program that administrators use.
    void writeConnectionFile(const QString& file, const QString& password = LocalWarehouse::password()) const;

    /// Starts `client` on the warehouse and waits for its main window.
    void startClient(const QStringList& furtherArguments = {});
    /// Opens the warehouse view by keys and waits for its plan.
    void openPlan();
    void click(const Spot& spot) const;
    /// Clicks a button of the warehouse view's toolbar, 1 to 4, and of the panel below the plan, 1 or 2.
    void clickToolBar(int button) const;
    void clickPanelBar(int button) const;
    /// Waits for a statement in the server's trace.
    bool traced(const QString& statement) const;

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

/// What the warehouse view asks for on a click on a location.
QString materialStatement(const Spot& spot);
/// What it sends for the list of materials, by phase.
QString listStatement(const Spot& spot, int phase);

}  // namespace regalon::test
