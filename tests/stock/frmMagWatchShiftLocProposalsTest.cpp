// The list of proposed locations: how it is read, marked, sorted and ticked.

#include "platform/Screen.h"
#include "stock/ShiftWindow.h"
#include "support/Events.h"

#include <QAction>
#include <QHeaderView>
#include <QTest>

namespace regalon {
namespace {

/// The procedures answer what tables of the test hold: probe_prop the rows, probe_answer what the
/// recomputation and the preparation return; probe_call keeps what the second one was given.
class ShiftProposals : public test::ShiftWindow {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ShiftWindow::SetUp());
        run(
            QStringLiteral("create table probe_prop (ID int identity(1,1), Place nvarchar(20), BarCode "
                           "nvarchar(20), Status nvarchar(5), Letter nvarchar(5))"));
        run(QStringLiteral("create table probe_answer (Name nvarchar(9), Value int, Message nvarchar(50))"));
        run(QStringLiteral("insert into probe_answer values (N'confirm',0,N''),(N'prepare',0,N'')"));
        run(QStringLiteral(
            "create table probe_call (ID int identity(1,1), Mode smallint, Message nvarchar(50))"));
        ASSERT_TRUE(warehouse.run(test::replaceProcedure(
            QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm"),
            QStringLiteral(
                "@UserSign smallint, @Aplication nvarchar(9), @Operation nvarchar(9), @ErrDesc "
                "nvarchar(50) output as begin declare @Value int; select @Value = Value, @ErrDesc = "
                "Message from probe_answer where Name = N'confirm'; return @Value; end"))));
        ASSERT_TRUE(warehouse.run(test::replaceProcedure(
            QStringLiteral("Kolv_mag_Watch_Prop_Location"),
            QStringLiteral(
                "@UserSign smallint, @Aplication nvarchar(9), @Operation nvarchar(9), @Mode smallint, "
                "@ErrDesc "
                "nvarchar(50) output as begin set nocount on; declare @Value int; "
                "insert into probe_call (Mode,Message) values (@Mode,isnull(@ErrDesc,N'(null)')); "
                "if @Mode = 0 begin select @Value = Value, @ErrDesc = Message from probe_answer where Name = "
                "N'prepare'; return @Value; end; "
                "select N'x' as [Miejsce:600;0], substring(Place,1,1) as Rank, substring(Place,2,1) as "
                "Stand, "
                "substring(Place,3,1) as Shelf, substring(Place,4,1) as Location, BarCode, N'' as a, N'' as "
                "b, "
                "Status, N'' as c, Letter from probe_prop order by ID; end"))))
            << qPrintable(warehouse.why());
        open();
    }
    /// The place as four digits.
    void add(const char* place, const char* barCode, const char* status, const char* letter = "") {
        run(QStringLiteral(
                "insert into probe_prop (Place,BarCode,Status,Letter) values (N'%1',N'%2',N'%3',N'%4')")
                .arg(QLatin1String(place), QLatin1String(barCode), QLatin1String(status),
                     QLatin1String(letter)));
    }
    void answer(const char* name, int value, const char* message) {
        run(QStringLiteral("update probe_answer set Value = %1, Message = N'%2' where Name = N'%3'")
                .arg(value)
                .arg(QString::fromUtf8(message), QLatin1String(name)));
    }
    /// Shows the rows as they are now.
    void read() {
        pickPackages();
        messages.clear();
        warehouse.server.clearTrace();
        acceptItem();
    }
    QString lastGiven(int mode) {
        return warehouse.value(
            QStringLiteral("select top 1 Message from probe_call where Mode = %1 order by ID desc")
                .arg(mode));
    }
    void clickHeader(int number) {
        QHeaderView* header = proposals()->header();
        const int column = number - 1;
        test::clickAt(header->viewport(),
                      QPoint(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                             header->height() / 2));
    }
    QList<int> headerIcons() const {
        QList<int> numbers;
        for (int number = 1; number <= proposals()->headerCount(); ++number)
            numbers.append(proposals()->headerIcon(number));
        return numbers;
    }
    void tick(int row) { ShiftWindow::tick(proposals(), row); }
    QList<int> ticks() const { return ticked(proposals()); }
    const QString kConfirmCall = QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm 1 P S NULL");
};

TEST_F(ShiftProposals, AnEmptyListIsNoFailure) {
    read();
    EXPECT_EQ(proposals()->itemCount(), 0);
    EXPECT_EQ(proposals()->headerText(1), QStringLiteral("Lp"));
    EXPECT_EQ(proposals()->headerWidth(1), 1000);
    EXPECT_EQ(messages.count(), 0);
    acceptShift();
    EXPECT_EQ(messages.count(), 0) << "nothing chosen, nothing ticked";
}

TEST_F(ShiftProposals, TheStatusGivesARowItsIcon) {
    for (const auto& [status, letter] : QList<QPair<const char*, const char*>>{
             {"O", "C"}, {"C", "C"}, {"C", "Z"}, {"D", "C"}, {"P", ""}, {"X", "C"}, {"", ""}, {"d", ""}})
        add("1211", "F1", status, letter);
    read();
    EXPECT_EQ(icons(proposals()), QList<int>({37, 2, 14, 1, 16, 0, 0, 0}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftProposals, TheSourceItselfIsMarkedAsNoTarget) {
    add("1111", "F1", "D");
    add("1112", "F1", "D");
    add("2111", "F1", "D");
    add("1211", "F1", "D");
    add("1121", "F1", "D");
    add("1111", "F1", "X");
    read();
    EXPECT_EQ(icons(proposals()), QList<int>({40, 1, 1, 1, 1, 40}));
}

TEST_F(ShiftProposals, AreReadInTheOrderOfTheServer) {
    add("1211", "F2", "D");
    add("1212", "F1", "D");
    add("1213", "F3", "D");
    read();
    EXPECT_EQ(column(proposals(), 6).join(u' '), QStringLiteral("F2 F1 F3"));
    EXPECT_FALSE(proposals()->sorted());
    EXPECT_EQ(traced(),
              QStringList({kConfirmCall, QStringLiteral("Kolv_mag_Watch_Prop_Location 1 P S 0 NULL"),
                           QStringLiteral("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',1,NULL")}));
}

TEST_F(ShiftProposals, AnEmptyMessageReachesThePreparationAsTheWordNull) {
    read();
    EXPECT_EQ(lastGiven(0), QStringLiteral("NULL"));
    EXPECT_EQ(lastGiven(1), QStringLiteral("(null)")) << "the statement runs as it stands";
}

TEST_F(ShiftProposals, TheMessageOfEachStepGoesIntoTheNext) {
    answer("confirm", -1, "Krok pierwszy");
    answer("prepare", 0, "Krok drugi");
    read();
    EXPECT_EQ(lastGiven(0), QStringLiteral("Krok pierwszy"));
    EXPECT_EQ(lastGiven(1), QStringLiteral("Krok drugi"));
    EXPECT_EQ(traced().last(),
              QStringLiteral("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',1,N'Krok drugi'"));
    EXPECT_EQ(messages.count(), 0) << "messages of success are not shown";
}

TEST_F(ShiftProposals, AMessageWithACommaReachesThePreparationAsTwoArguments) {
    answer("confirm", 0, "Uwaga, pełna");
    read();
    ASSERT_EQ(messages.count(), 2);
    EXPECT_EQ(messages.messages().first().Title,
              QStringLiteral("Error - clsMagWatchShiftLoc [EcexProcedureParam]"));
    EXPECT_EQ(messages.last().Text, QStringLiteral("Uwaga, pełna")) << "the preparation gave none of its own";
    EXPECT_EQ(traced().last(),
              QStringLiteral("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',1,N'Uwaga, pełna'"))
        << "the list is read all the same";
}

TEST_F(ShiftProposals, ARefusedRecomputationShowsItsMessageAndTheListIsReadAllTheSame) {
    add("1211", "F1", "D");
    answer("confirm", 1, "Brak miejsca");
    read();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, QStringLiteral("Brak miejsca"));
    EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
    EXPECT_EQ(traced(), QStringList({kConfirmCall, QStringLiteral("exec Kolv_mag_Watch_Prop_Location "
                                                                  "1,N'P',N'S',1,N'Brak miejsca'")}));
    EXPECT_EQ(icons(proposals()), QList<int>({1}));
}

TEST_F(ShiftProposals, ARefusedPreparationShowsItsMessage) {
    add("1211", "F1", "D");
    answer("prepare", 2, "Nie teraz");
    read();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, QStringLiteral("Nie teraz"));
    EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
    EXPECT_EQ(lastGiven(1), QStringLiteral("Nie teraz"));
    EXPECT_EQ(proposals()->itemCount(), 1);
}

TEST_F(ShiftProposals, AreReadUnderTheBusyPointerWhichDoesNotStandOverAMessage) {
    add("1211", "F1", "D");
    read();
    QList<MousePointer> pointers;
    QObject::connect(proposals()->model(), &QAbstractItemModel::rowsInserted, proposals(),
                     [&] { pointers.append(Screen::mousePointer()); });
    messages.onMessage([&](const MsgBoxRecorder::Message&) { pointers.append(Screen::mousePointer()); });
    answer("confirm", 1, "Nie");
    acceptItem();
    EXPECT_EQ(pointers, QList<MousePointer>({MousePointer::Default, MousePointer::Custom}));
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

TEST_F(ShiftProposals, ARecomputationShowsTheListAndARefusalLeavesItAsItIs) {
    read();
    proposals()->hide();
    answer("confirm", 1, "Nie");
    acceptItem();
    EXPECT_FALSE(proposals()->isVisible());
    answer("confirm", 0, "");
    acceptItem();
    EXPECT_TRUE(proposals()->isVisible());
}

TEST_F(ShiftProposals, AColumnFrom1To10SortsOnTheServerWithoutARecomputation) {
    add("1211", "F1", "D");
    read();
    for (int number = 1; number <= 10; ++number) {
        proposals()->scrollTo(proposals()->model()->index(0, number - 1));
        warehouse.server.clearTrace();
        clickHeader(number);
        EXPECT_EQ(
            traced(),
            QStringList(QStringLiteral("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',%1,NULL").arg(number)));
        QList<int> expected(proposals()->headerCount(), 0);
        expected[number - 1] = 43;
        EXPECT_EQ(headerIcons(), expected) << number;
    }
    EXPECT_EQ(icons(proposals()), QList<int>({1})) << "marked anew";
}

TEST_F(ShiftProposals, AColumnFrom11OnDoesNothing) {
    add("1211", "F1", "D");
    read();
    clickHeader(3);
    tick(1);
    const QList<int> before = headerIcons();
    warehouse.server.clearTrace();
    for (int number = 11; number <= proposals()->headerCount(); ++number) {
        proposals()->scrollTo(proposals()->model()->index(0, number - 1));
        clickHeader(number);
    }
    EXPECT_EQ(traced(), QStringList());
    EXPECT_EQ(headerIcons(), before);
    EXPECT_EQ(ticks(), QList<int>({1}));
}

TEST_F(ShiftProposals, ASortTakesAllTicksOff) {
    add("1211", "F1", "D");
    add("1212", "F2", "D");
    read();
    tick(1);
    tick(2);
    ASSERT_EQ(ticks(), QList<int>({1, 2}));
    clickHeader(2);
    EXPECT_EQ(ticks(), QList<int>());
}

TEST_F(ShiftProposals, ATickOnAPackageTakesAllTicksOff) {
    add("1211", "F1", "D");
    read();
    tick(1);
    tickPackage("F2");
    EXPECT_EQ(proposals()->itemCount(), 1);
    EXPECT_EQ(ticks(), QList<int>());
}

TEST_F(ShiftProposals, ADoubleClickDoesNothing) {
    add("1211", "F1", "D");
    read();
    warehouse.server.clearTrace();
    const QRect cell = proposals()->visualRect(proposals()->model()->index(0, 3));
    QTest::mouseDClick(proposals()->viewport(), Qt::LeftButton, {}, cell.center());
    EXPECT_EQ(traced(), QStringList());
    EXPECT_EQ(ticks(), QList<int>());
    expectChoosingBarCode();
}

TEST_F(ShiftProposals, OnlyRowsOfStatusDAndCCanBeTicked) {
    for (const char* status : {"D", "C", "O", "P", "X", ""})
        add("1211", status, status);
    read();
    warehouse.server.clearTrace();
    for (int row = 1; row <= 6; ++row)
        tick(row);
    EXPECT_EQ(ticks(), QList<int>({1, 2}));
    EXPECT_EQ(traced(), QStringList()) << "a tick asks nobody";
    tick(1);
    EXPECT_EQ(ticks(), QList<int>({2}));
}

TEST_F(ShiftProposals, TheSourceItselfCannotBeTicked) {
    add("1111", "F1", "D");
    read();
    tick(1);
    EXPECT_EQ(ticks(), QList<int>());
}

TEST_F(ShiftProposals, OfTwoRowsOfOnePackageTheLaterCannotBeTickedWhileTheEarlierIs) {
    add("1211", "F1", "D");
    add("1212", "F2", "D");
    add("1213", "F1", "C");
    read();
    tick(1);
    tick(2);
    tick(3);
    EXPECT_EQ(ticks(), QList<int>({1, 2})) << "the earlier stays";
    tick(1);
    tick(3);
    EXPECT_EQ(ticks(), QList<int>({2, 3}));
}

TEST_F(ShiftProposals, ATickOnTheEarlierRowTakesThatOfTheLaterOff) {
    add("1211", "F1", "D");
    add("1213", "F1", "D");
    add("1212", "F1", "D");
    read();
    tick(3);
    tick(1);
    EXPECT_EQ(ticks(), QList<int>({1}));
}

TEST_F(ShiftProposals, ARefusedEarlierRowTakesTheTickOfTheLaterAlong) {
    add("1211", "F1", "O");
    add("1213", "F1", "D");
    read();
    tick(2);
    ASSERT_EQ(ticks(), QList<int>({2}));
    tick(1);
    EXPECT_EQ(ticks(), QList<int>());
}

TEST_F(ShiftProposals, TheRowOfTheSourceTakesNoTickOfAnotherOff) {
    add("1111", "F1", "D");
    add("1213", "F1", "D");
    read();
    tick(2);
    tick(1);
    EXPECT_EQ(ticks(), QList<int>({2}));
}

TEST_F(ShiftProposals, RowsWithoutACodeInFrontOfTheFirstCodeAreNoPackage) {
    add("1211", "", "D");
    add("1212", "", "D");
    add("1213", "F1", "D");
    add("1221", "", "D");
    add("1222", "", "D");
    read();
    for (int row = 1; row <= 5; ++row)
        tick(row);
    EXPECT_EQ(ticks(), QList<int>({1, 2, 3, 4})) << "behind it an empty code is a code";
}

TEST_F(ShiftProposals, CodesDifferByTheCaseOfTheirLetters) {
    add("1211", "F1", "D");
    add("1212", "f1", "D");
    read();
    tick(1);
    tick(2);
    EXPECT_EQ(ticks(), QList<int>({1, 2}));
}

TEST_F(ShiftProposals, ManyTickedPackagesCostNoMoreThanTheirRows) {
    QStringList rows;
    for (int row = 0; row < 60; ++row)
        rows.append(QStringLiteral("(N'1211',N'P%1',N'D',N'')").arg(row));
    run(QStringLiteral("insert into probe_prop (Place,BarCode,Status,Letter) values ") + rows.join(u','));
    read();
    ASSERT_EQ(proposals()->itemCount(), 60);
    for (int row = 1; row <= 60; ++row)
        tick(row);
    EXPECT_EQ(ticks().size(), 60);
}

TEST_F(ShiftProposals, AnAddressThatIsNoNumberEndsTheMarkingUnderTheNameOfAnotherWindow) {
    add("1211", "F1", "D");
    add("12x1", "F1", "D");
    add("1213", "F1", "D");
    read();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagSurInput - WatchOrdersLineBarCode"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(13));
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_EQ(icons(proposals()), QList<int>({1, 1, 0}))
        << "its status was marked before its address was read";
}

TEST_F(ShiftProposals, EmptyAddressBoxesWithRowsInTheListAreAFailure) {
    add("1211", "F1", "D");
    window->close();
    window->show();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagSurInput - WatchOrdersLineBarCode"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(13));
    expectBrowsing();
}

TEST_F(ShiftProposals, ATickWithTooFewColumnsEndsInItsOwnHandler) {
    read();
    proposals()->clearHeaders();
    proposals()->addHeader(QStringLiteral("Lp"));
    proposals()->addItem(QStringLiteral("1"));
    ASSERT_EQ(proposals()->item(1)->index(), 1);
    tick(1);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchShiftLoc - lstSurPropLocation_ItemCheck"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(380));
}

}  // namespace
}  // namespace regalon
