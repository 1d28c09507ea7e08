#include "platform/FocusGuard.h"
#include "support/Events.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

class FocusGuardTest : public ::testing::Test {
protected:
    FocusGuardTest() {
        auto* layout = new QVBoxLayout(&form);
        layout->addWidget(&guarded);
        layout->addWidget(&other);
        new FocusGuard(&guarded, [this] { return guarded.text() == u"ok"; });
        showAndWait(&form);
        guarded.setFocus();
    }

    QWidget form;
    QLineEdit guarded{&form};
    QLineEdit other{&form};
};

TEST_F(FocusGuardTest, AMouseClickElsewhereComesBackToABadText) {
    click(&other);
    EXPECT_TRUE(waitFor([this] { return guarded.hasFocus(); }));
    type(&guarded, QStringLiteral("ok"));
    click(&other);
    EXPECT_TRUE(waitFor([this] { return other.hasFocus(); }));
}

TEST_F(FocusGuardTest, TheTabKeyComesBackToABadText) {
    key(&guarded, Qt::Key_Tab);
    EXPECT_TRUE(waitFor([this] { return guarded.hasFocus(); }));
    type(&guarded, QStringLiteral("ok"));
    key(&guarded, Qt::Key_Tab);
    EXPECT_TRUE(waitFor([this] { return other.hasFocus(); }));
}

TEST_F(FocusGuardTest, CodeMayTakeTheFocusFromABadText) {
    other.setFocus();
    QCoreApplication::processEvents();
    EXPECT_TRUE(other.hasFocus());
}

}  // namespace
