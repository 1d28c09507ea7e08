// The materials on the location: their list, the automatic tick, and what a tick stages.

#include "stock/ShiftWindow.h"
#include "support/Events.h"

#include <QAction>

namespace regalon {
namespace {

/// The list answers what a table of the test holds: rows of code, quantity, kind and flag.
class ShiftItems : public test::ShiftWindow {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ShiftWindow::SetUp());
        run(
            QStringLiteral("create table probe_item (ID int identity(1,1), Code nvarchar(20), Quantity "
                           "nvarchar(20), Kind nvarchar(5), Flag nvarchar(5))"));
        ASSERT_TRUE(warehouse.run(test::replaceProcedure(
            QStringLiteral("kolv_mag_Watch_Item_On_Location"),
            QStringLiteral(
                "@Rank smallint, @Stand smallint, @Shelf smallint, @Location smallint, @UserSign "
                "nvarchar(9), @Aplication nvarchar(9), @Phase smallint, @Operation nvarchar(9) as begin "
                "set nocount on; if @Phase = 1 select N'Nazwa' as [Nazwa:1000;0], Flag as [M.:400;2], "
                "Quantity as [Ilość:900;1], Kind as [St.:400;2], Code as [Kod:1500;0] from probe_item "
                "where @Rank > 0 order by ID; end"))))
            << qPrintable(warehouse.why());
        open();
    }
    void add(const char* code, const char* quantity, const char* kind, const char* flag) {
        run(QStringLiteral(
                "insert into probe_item (Code,Quantity,Kind,Flag) values (N'%1',N'%2',N'%3',N'%4')")
                .arg(QString::fromLatin1(code), QString::fromUtf8(quantity), QString::fromLatin1(kind),
                     QString::fromLatin1(flag)));
    }
    /// Rows of kind B, in the order in which they are shown: their numbers count down.
    void addShown(const QStringList& quantities) {
        for (qsizetype row = quantities.size(); row > 0; --row)
            add(qPrintable(QStringLiteral("I%1").arg(row)), qPrintable(quantities.at(row - 1)), "B", "0");
    }
    QStringList codes() const { return test::ShiftWindow::column(items(), 1); }
    /// "code deleteLine" of each staging call.
    QStringList stagings() const {
        QStringList texts;
        for (const QStringList& call : warehouse.calls(QStringLiteral("kolv_mag_BarCode_Shift_Tmp")))
            texts.append(call.at(0) + u' ' + call.at(7));
        return texts;
    }
};

TEST_F(ShiftItems, ALocationWithoutMaterialShowsAnEmptyListAndGoesNoFurther) {
    pickSource();
    expectChoosingItem();
    EXPECT_EQ(items()->itemCount(), 0);
    EXPECT_EQ(items()->headerText(1), QStringLiteral("Lp"));
    EXPECT_EQ(items()->headerWidth(1), 800);
    EXPECT_EQ(stagings(), QStringList());
    warehouse.server.clearTrace();
    acceptItem();
    EXPECT_EQ(traced(), QStringList());
    expectChoosingItem();
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftItems, TheRowsStandInTheOrderOfTheTextOfTheirNumbers) {
    addShown(QStringList(11, QStringLiteral("0")));
    pickSource();
    QStringList numbers;
    for (int number = 1; number <= items()->itemCount(); ++number)
        numbers.append(items()->item(number)->text());
    EXPECT_EQ(numbers.join(u' '), QStringLiteral("1 10 11 2 3 4 5 6 7 8 9"));
    EXPECT_TRUE(items()->sorted());
    EXPECT_EQ(items()->sortKey(), 0);
}

TEST_F(ShiftItems, TheKindGivesARowItsIcon) {
    add("C", "0", "C", "0");
    add("B", "0", "B", "0");
    add("A", "0", "A", "0");
    pickSource();
    EXPECT_EQ(codes().join(u' '), QStringLiteral("A B C"));
    EXPECT_EQ(test::ShiftWindow::icons(items()), QList<int>({41, 42, 0}));
}

TEST_F(ShiftItems, TheGreatestQuantityIsTickedAndStaged) {
    addShown({QStringLiteral("3"), QStringLiteral("12,5"), QStringLiteral("9")});
    pickSource();
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>({2}));
    EXPECT_EQ(test::ShiftWindow::selected(items()), 2);
    EXPECT_EQ(stagings(),
              QStringList({QStringLiteral("I1 Y"), QStringLiteral("I2 N"), QStringLiteral("I3 Y")}));
}

TEST_F(ShiftItems, OfTwoLinesOfEqualQuantityTheFirstShownIsTicked) {
    addShown({QStringLiteral("1"), QStringLiteral("7"), QStringLiteral("7")});
    pickSource();
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>({2}));
}

TEST_F(ShiftItems, OfEqualLinesTheFirstIsThatOfTheOrderByText) {
    // Eleven rows: the second shown one has the number 10.
    QStringList quantities(11, QStringLiteral("1"));
    quantities[9] = QStringLiteral("7");
    quantities[1] = QStringLiteral("7");
    addShown(quantities);
    pickSource();
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>({2}));
    EXPECT_EQ(items()->item(2)->text(), QStringLiteral("10"));
}

TEST_F(ShiftItems, WithoutAQuantityAboveZeroNothingIsTicked) {
    addShown({QStringLiteral("0"), QStringLiteral("-4")});
    pickSource();
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>());
    EXPECT_EQ(stagings(), QStringList());
}

TEST_F(ShiftItems, AFlagOnTheLastRowOfKindALeavesTheTickToTheUser) {
    // Shown in the opposite order: the flagged row is the last of kind A.
    add("B", "9", "B", "0");
    add("A2", "5", "A", "1");
    add("A1", "7", "A", "0");
    pickSource();
    ASSERT_EQ(codes().join(u' '), QStringLiteral("A1 A2 B"));
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>());
    EXPECT_EQ(stagings(), QStringList());
    tick(items(), 3);
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>({3}));
    EXPECT_EQ(stagings().last(), QStringLiteral("B N"));
}

TEST_F(ShiftItems, AFlagOnAnEarlierRowOfKindADoesNotCount) {
    add("A2", "5", "A", "0");
    add("A1", "7", "A", "1");
    pickSource();
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>({1}));
}

TEST_F(ShiftItems, ATickOnAnotherMaterialTakesTheFirstOut) {
    addShown({QStringLiteral("9"), QStringLiteral("3"), QStringLiteral("0")});
    pickSource();
    warehouse.server.clearTrace();
    tick(items(), 2);
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>({2}));
    EXPECT_EQ(test::ShiftWindow::selected(items()), 2);
    EXPECT_EQ(stagings(), QStringList({QStringLiteral("I1 Y"), QStringLiteral("I2 N")}));
    EXPECT_TRUE(warehouse.calls(QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm")).isEmpty())
        << "the proposals are not read anew";
}

TEST_F(ShiftItems, AMaterialWhoseTickIsTakenOffIsStagedAllTheSame) {
    addShown({QStringLiteral("9"), QStringLiteral("3")});
    pickSource();
    warehouse.server.clearTrace();
    tick(items(), 1);
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>());
    EXPECT_EQ(stagings(), QStringList({QStringLiteral("I1 N"), QStringLiteral("I2 Y")}));
    acceptItem();
    expectChoosingItem();
}

TEST_F(ShiftItems, ARowWithQuantityZeroCannotStayTicked) {
    addShown({QStringLiteral("9"), QStringLiteral("0")});
    pickSource();
    warehouse.server.clearTrace();
    tick(items(), 2);
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>());
    EXPECT_EQ(stagings(), QStringList(QStringLiteral("I1 Y")))
        << "the other one is taken out, and the row itself is not staged";
}

TEST_F(ShiftItems, ARefusedStagingShowsNoMessage) {
    run(QStringLiteral("drop procedure kolv_mag_BarCode_Shift_Tmp"));
    run(QStringLiteral(
        "create procedure kolv_mag_BarCode_Shift_Tmp @ItemCode nvarchar(20), @Rank smallint, "
        "@Stand smallint, @Shelf smallint, @Location smallint, @UserSign smallint, @Aplication "
        "nvarchar(9), @DeleteLine nvarchar(9), @Operation nvarchar(9), @ErrDesc nvarchar(50) "
        "output as begin set @ErrDesc = N'Nie'; return 1; end"));
    addShown({QStringLiteral("9"), QStringLiteral("3")});
    pickSource();
    EXPECT_EQ(stagings().size(), 2);
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>({1}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftItems, AQuantityThatIsNoNumberEndsTheWalkInTheHandlerOfTheList) {
    addShown({QStringLiteral("9"), QStringLiteral("dużo"), QStringLiteral("1")});
    pickSource();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchShiftLoc - FiilItemOnLocation"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(13));
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_EQ(test::ShiftWindow::icons(items()), QList<int>({42, 0, 0}));
    expectChoosingItem();
    messages.clear();
    tick(items(), 1);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchShiftLoc - lstLocationItem_ItemCheck"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(13));
}

TEST_F(ShiftItems, AFlagThatIsNoNumberEndsTheWalk) {
    add("A", "3", "A", "x");
    pickSource();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchShiftLoc - FiilItemOnLocation"));
    EXPECT_EQ(test::ShiftWindow::ticked(items()), QList<int>());
}

TEST_F(ShiftItems, AnAddressThatIsNoNumberFailsOutsideTheHandlerOfATick) {
    addShown({QStringLiteral("9"), QStringLiteral("3")});
    pickSource();
    box("txtShelf")->setFocus();
    test::type(box("txtShelf"), QStringLiteral("x"));
    warehouse.server.clearTrace();
    tick(items(), 2);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Regalon")) << "no routine's name";
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("13\r\n")));
    EXPECT_EQ(messages.last().Flags, MsgFlag::Critical);
    EXPECT_EQ(stagings(), QStringList());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(ShiftItems, AnAddressThatIsNoNumberEndsTheAutomaticTickInTheHandlerOfTheList) {
    addShown({QStringLiteral("9"), QStringLiteral("3")});
    window->close();
    const QString body = warehouse.value(
        QStringLiteral("select object_definition(object_id(N'kolv_mag_Watch_Item_On_Location'))"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure kolv_mag_Watch_Item_On_Location"),
                               QString(body).replace(QStringLiteral("where @Rank > 0 "), QString())}))
        << qPrintable(warehouse.why());
    // The list of no location has rows now, while the boxes are still empty.
    window->show();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchShiftLoc - FiilItemOnLocation"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(13));
    EXPECT_EQ(stagings(), QStringList());
    expectBrowsing();
}

}  // namespace
}  // namespace regalon
