// The preview of one stand beside the plan.
#include "map/LayoutEditor.h"
#include "support/Events.h"

#include <QFile>

namespace regalon {
namespace {

using test::EmptyHallEditor;

class FrmMagCreatePreview : public EmptyHallEditor {
protected:
    void preview() { clickButton("tlbSaveStand", "key_Wath"); }

    static QString placesOf(ControlArray<PictureItem>& pictures, int left, int top) {
        QStringList places;
        for (int index = 1; index < pictures.Count(); ++index) {
            const PictureItem& picture = pictures[index];
            places.append(QStringLiteral("%1/%2 %3")
                              .arg(picture.left() - left)
                              .arg(picture.top() - top)
                              .arg(picture.picturePath().section(u'\\', -1)));
        }
        return places.join(u';');
    }
    static QString endsOf(ControlArray<LineItem>& lines, int left, int top) {
        QStringList ends;
        for (int index = 1; index < lines.Count(); ++index) {
            const LineItem& line = lines[index];
            ends.append(QStringLiteral("%1/%2-%3/%4")
                            .arg(line.x1() - left)
                            .arg(line.y1() - top)
                            .arg(line.x2() - left)
                            .arg(line.y2() - top));
        }
        return ends.join(u';');
    }
};

TEST_F(FrmMagCreatePreview, ShowsTheStandOfTheFormAtItsPlaceWithTheGeometryOfThePlan) {
    addStand(1, 2, QStringLiteral("32"));
    open();
    clickStand(QStringLiteral("1_1"));
    enter(box("txtLeft"), QStringLiteral("8000"));
    enter(box("txtTop"), QStringLiteral("5000"));
    warehouse.server.clearTrace();
    preview();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(placesOf(canvas()->imgBookStandWath(), 8000, 5000), QStringLiteral("0/0 R1_S_01.ico"));
    // Three narrow icons, then a narrow and a double one.
    EXPECT_EQ(placesOf(canvas()->imglocationWath(), 8000, 5000),
              QStringLiteral("0/-215 x.ico;205/-215 x.ico;415/-215 x.ico;0/-400 x.ico;205/-400 xx.ico"));
    EXPECT_EQ(endsOf(canvas()->lnnFrameBookStandWath(), 8000, 5000),
              QStringLiteral("-20/290-635/290;-25/-440-645/-440;-25/290--25/-450;635/290-635/-450"));
    EXPECT_EQ(endsOf(canvas()->lnnFrameBookStandWath(), 8000, 5000),
              endsOf(canvas()->lnnFrameBookStand(), 2000, 3000));
    for (int index = 1; index <= 5; ++index) {
        EXPECT_TRUE(canvas()->imglocationWath()[index].isVisible());
        EXPECT_EQ(canvas()->imglocationWath()[index].tag(), QString());
    }
    EXPECT_EQ(warehouse.batches(),
              QStringList(QStringLiteral(
                  "select ShelfCount from kolv_mag_Stand(nolock) where Rank = 1 AND Stand = 1")));
}

TEST_F(FrmMagCreatePreview, LeavesThePlanAlone) {
    addStand(1, 2, QStringLiteral("32"));
    open();
    clickStand(QStringLiteral("1_1"));
    enter(box("txtLeft"), QStringLiteral("8000"));
    const QString before = placesOf(canvas()->imgBookStand(), 0, 0) +
                           placesOf(canvas()->imglocation(), 0, 0) +
                           endsOf(canvas()->lnnFrameBookStand(), 0, 0);
    preview();
    EXPECT_EQ(placesOf(canvas()->imgBookStand(), 0, 0) + placesOf(canvas()->imglocation(), 0, 0) +
                  endsOf(canvas()->lnnFrameBookStand(), 0, 0),
              before);
}

TEST_F(FrmMagCreatePreview, ThrowsTheOneBeforeAway) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    preview();
    enter(box("txtLeft"), QStringLiteral("9000"));
    preview();
    EXPECT_EQ(canvas()->imgBookStandWath().Count() - 1, 1);
    EXPECT_EQ(canvas()->imglocationWath().Count() - 1, 2);
    EXPECT_EQ(canvas()->lnnFrameBookStandWath().Count() - 1, 4);
    EXPECT_EQ(canvas()->imgBookStandWath()[1].left(), 9000);
}

TEST_F(FrmMagCreatePreview, TakesTheCountsOfTheFormAndTheStoredNumberOfShelves) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    choose("dtcShelfCount", QStringLiteral("Nowa"));
    enter(combo("cmbShelf_2"), QStringLiteral("3"));
    preview();
    EXPECT_EQ(canvas()->imglocationWath().Count() - 1, 2);
    choose("dtcShelfCount", QStringLiteral("Półka 1"));
    enter(combo("cmbShelf_1"), QStringLiteral("3"));
    preview();
    EXPECT_EQ(canvas()->imglocationWath().Count() - 1, 3);
}

TEST_F(FrmMagCreatePreview, OfANewStandShowsImageAndFrame) {
    open();
    defineNewStand(QStringLiteral("5000"), QStringLiteral("4000"));
    preview();
    EXPECT_EQ(placesOf(canvas()->imgBookStandWath(), 5000, 4000), QStringLiteral("0/0 R1_S_01.ico"));
    EXPECT_EQ(canvas()->imglocationWath().Count() - 1, 0);
    EXPECT_EQ(endsOf(canvas()->lnnFrameBookStandWath(), 5000, 4000),
              QStringLiteral("-20/290-635/290;-25/-110-645/-110;-25/290--25/-120;635/290-635/-120"));
}

TEST_F(FrmMagCreatePreview, OfAnIconThatIsNotThereShowsTheCommonOne) {
    addStand(1, 0, {});
    open();
    clickStand(QStringLiteral("1_1"));
    for (const QString& icon : {QStringLiteral("nie ma.ico"), QString()}) {
        enter(box("txtImageName"), icon);
        preview();
        EXPECT_EQ(canvas()->imgBookStandWath()[1].picturePath().section(u'\\', -1),
                  QStringLiteral("Reg.ico"));
    }
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreatePreview, OfTextsThatAreNoNumbersTakesZero) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    box("txtLeft")->setText(QStringLiteral("lewo"));
    box("txtTop")->setText(QString());
    combo("cmbShelf_1")->setCurrentText(QStringLiteral("-----"));
    preview();
    EXPECT_EQ(placesOf(canvas()->imgBookStandWath(), 0, 0), QStringLiteral("0/0 R1_S_01.ico"));
    EXPECT_EQ(canvas()->imglocationWath().Count() - 1, 0);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreatePreview, StaysUnderAFreshPlanUntilTheNextOne) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    preview();
    clickButton("tlbSaveStand", "key_Wath_Mag");
    EXPECT_EQ(canvas()->imgBookStandWath().Count() - 1, 1);
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 1);
}

TEST_F(FrmMagCreatePreview, AFailureIsReportedUnderItsOwnName) {
    ASSERT_TRUE(warehouse.useOwnIcons());
    addStand(1, 0, {});
    open();
    messages.clear();
    choose("dtcRank", QStringLiteral("Rząd A"));
    ASSERT_TRUE(QFile::remove(warehouse.ownIcon(QStringLiteral("Reg.ico"))));
    preview();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagCreate - GenerateBookstandOld"));
}

}  // namespace
}  // namespace regalon
