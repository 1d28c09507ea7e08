#include "map/LayoutEditor.h"
#include "map/StandGeometry.h"
#include "support/Events.h"

#include <QAction>
#include <QFile>
#include <QPlainTextEdit>

namespace regalon {
namespace {

using test::LayoutEditor;

class FrmMagCreateStand : public LayoutEditor {};

TEST_F(FrmMagCreateStand, WithoutARowTheListsOfferNothingButChoosingAndANewStand) {
    open();
    EXPECT_EQ(choice("dtcRank")->text(), QStringLiteral("wybierz"));
    EXPECT_EQ(rows("dtcStand"), QStringList({QStringLiteral("wybierz"), QStringLiteral("Nowy")}));
    EXPECT_EQ(rows("dtcShelfCount"), QStringList(QStringLiteral("wybierz")));
}

}  // namespace
}  // namespace regalon
