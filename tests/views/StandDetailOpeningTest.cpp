// The stand detail as the warehouse view opens it.

#include "support/Events.h"
#include "views/WatchWindow.h"
#include "views/frmMagWatchDetal.h"

#include <QApplication>
#include <QPushButton>

namespace regalon {
namespace {

using test::WatchWindow;

class StandDetailOpening : public WatchWindow {
protected:
    void openView() {
        window = std::make_unique<frmMagWatch>(warehouse.context, standDetail(warehouse.context));
        window->resize(window->sizeHint());
        test::showAndWait(window.get());
    }

    /// What the modal detail of a stand says, after which it is closed.
    struct Seen {
        QString topLine;
        QPoint place;
        QWidget* window = nullptr;
    };
    Seen openDetail(const QString& stand) {
        Seen seen;
        test::whenModal([&seen](QWidget* modal) {
            seen.window = modal;
            seen.topLine = modal->findChild<QLabel*>(QStringLiteral("lblParamStand"))->text();
            seen.place = modal->pos();
            test::click(modal->findChild<QPushButton*>(QStringLiteral("cmdClose_3")));
        });
        clickStand(stand);
        return seen;
    }
};

TEST_F(StandDetailOpening, AClickOnAStandShowsItModallyBesideTheStand) {
    openView();
    window->setTopStand(300);
    window->setLeftStand(450);
    const Seen seen = openDetail(QStringLiteral("1_2"));
    ASSERT_NE(seen.window, nullptr);
    EXPECT_EQ(seen.window->objectName(), QStringLiteral("frmMagWatchDetal"));
    EXPECT_EQ(seen.topLine, QStringLiteral("Rząd: A   Regał: 2   Ilość półek: 4   Ilość lokalizacji: 8"));
    const PictureItem* stand = item("imgBookStand", QStringLiteral("R_1_2_"));
    EXPECT_EQ(seen.place, QPoint((450 + stand->left() + 50) / 15, (300 + stand->top() + 1300 + 150) / 15));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(StandDetailOpening, OneInstanceServesAllOpenings) {
    openView();
    const Seen first = openDetail(QStringLiteral("1_2"));
    const Seen second = openDetail(QStringLiteral("1_3"));
    ASSERT_NE(first.window, nullptr);
    EXPECT_EQ(first.window, second.window);
    EXPECT_NE(first.topLine, second.topLine);
}

TEST_F(StandDetailOpening, CountsThatCannotBeReadAreThoseOfTheLastOpening) {
    openView();
    EXPECT_EQ(openDetail(QStringLiteral("1_2")).topLine,
              QStringLiteral("Rząd: A   Regał: 2   Ilość półek: 4   Ilość lokalizacji: 8"));
    warehouse.server.kill();
    EXPECT_EQ(openDetail(QStringLiteral("1_3")).topLine,
              QStringLiteral("Rząd: A   Regał: 3   Ilość półek: 4   Ilość lokalizacji: 8"));
}

TEST_F(StandDetailOpening, AStandWithoutLocationsOpensEmpty) {
    openView();
    EXPECT_EQ(openDetail(QStringLiteral("5_6")).topLine,
              QStringLiteral("Rząd: E   Regał: 6   Ilość półek: 0   Ilość lokalizacji: 0"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

}  // namespace
}  // namespace regalon
