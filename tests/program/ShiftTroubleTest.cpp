// A shift that meets a server that dies, and the same user at work in a second copy of the program.
#include "program/ShiftProgram.h"
#include "program/Tables.h"

namespace regalon::test {
namespace {

const QString kNotice = QStringLiteral("Komunikat");

class ShiftTrouble : public ShiftProgram {
protected:
    /// A row of the list of proposals, counted from 1, and its location.
    struct Target {
        int row = 0;
        QString place;  ///< "rank/stand/shelf/location"
    };

    /// Four small packages join those on the source, in front of them; only its stand is open for others.
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ShiftProgram::SetUp());
        for (const QString& code : codes) {
            ASSERT_TRUE(warehouse.run(
                QStringLiteral(
                    "insert into Kolv_Mag_BarCode_Sur (BarCode,ItemCode,Quantity,PackLength,"
                    "PackWidth,PackHeight,PackWeight,Rank,Stand,Shelf,Location,Active) select "
                    "N'%1',min(ItemCode),1,10,10,10,0.1,%2,N'Y' from Kolv_Mag_BarCode_Sur where %3")
                    .arg(code, numbers(source).join(u','), source.key())))
                << qPrintable(warehouse.why());
        }
        ASSERT_TRUE(warehouse.run(QStringLiteral("update kolv_mag_Stand set StandEnable = N'N' where not "
                                                 "(Rank = %1 and Stand = %2)")
                                      .arg(source.rank)
                                      .arg(source.stand)));
        packages = allPackages();
    }

    /// Number of packages and their quantity, which no move changes.
    QString allPackages() const {
        return one(QStringLiteral("select count(*),sum(Quantity) from Kolv_Mag_BarCode_Sur"));
    }
    int movesOf(const QString& barCode) const {
        return one(QStringLiteral(
                       "select count(*) from Kolv_Mag_BarCode_Sur_History where BarCode = N'%1' and "
                       "Operation = N'S'")
                       .arg(barCode))
            .toInt();
    }
    /// The keys of the copies of the program that hold staged rows.
    QStringList keys() const {
        return linesOf(
            warehouse,
            QStringLiteral("select distinct SPID from Kolv_Mag_BarCode_Input_Sur_tym order by SPID"));
    }
    int proposalsOf(const QString& key) const {
        return one(QStringLiteral("select count(*) from ##Temp_Prop_Location where SPID = ") + key).toInt();
    }
    /// The best target of a package in the list of the copy with this key.
    Target targetOf(const QString& barCode, const QString& key) const {
        const QStringList rows = linesOf(
            warehouse, QStringLiteral("select C.BarCode,P.Status,P.Rank,P.Stand,P.Shelf,P.Location from "
                                      "##Temp_Prop_Location P inner join ##Temp_Prop_Location_BarCode C on "
                                      "C.IDCodeBar = P.IDCodeBar and C.SPID = P.SPID where C.SPID = %1 order "
                                      "by C.BarCode,P.ID")
                           .arg(key));
        for (int row = 0; row < rows.size(); ++row) {
            const QStringList fields = rows.at(row).split(u'/');
            if (fields.at(0) == barCode && (fields.at(1) == u"C" || fields.at(1) == u"D"))
                return {row + 1, QStringList(fields.mid(2)).join(u'/')};
        }
        return {};
    }
    /// Ticks a row of the list of proposals by keys: it may lie below those in sight.
    void tickTarget(const Target& target) const {
        ASSERT_GT(target.row, 0);
        constexpr int behindTheBox = 800;
        clickAt({kFirstProposal.left + behindTheBox, kFirstProposal.top});
        display.key(QStringLiteral("Home"));
        if (target.row > 1)
            display.key(QStringLiteral("Down"), target.row - 1);
        display.key(QStringLiteral("space"));
    }
    /// Answers every message until the main window is alone; their titles.
    QStringList dismissAll() const {
        QStringList seen;
        EXPECT_TRUE(eventually([&] {
            if (!client->running())
                return true;
            QStringList titles = display.titles(client->process());
            titles.removeAll(Client::mainTitle());
            if (titles.isEmpty())
                return display.windows(client->process()).size() == 1;
            seen.append(titles.first());
            client->answer(titles.first(), QStringLiteral("Return"));
            return false;
        }));
        return seen;
    }
    /// Leaves the copy of the program at work as it is, for a new one.
    void putAside() {
        asideClient = std::move(client);
        asidePlan = plan;
        client = newClient();
    }
    /// Works on the copy that was put aside. Its plan lies under the lists.
    void turnToOther() {
        std::swap(client, asideClient);
        std::swap(plan, asidePlan);
        ASSERT_TRUE(display.activate(client->mainWindow()));
        display.settledPicture();
    }

    std::unique_ptr<Client> asideClient;
    Plan asidePlan;
    const QStringList codes{QStringLiteral("0001"), QStringLiteral("0002"), QStringLiteral("0003"),
                            QStringLiteral("0004")};
    QString packages;
};

TEST_F(ShiftTrouble, AServerKilledInAConfirmationIsToldForEachPackageAndTheUserGoesOnAfterARestart) {
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openShift());
    ASSERT_NO_FATAL_FAILURE(pickPackages(source));
    for (int i = 0; i < codes.size(); ++i)
        ASSERT_NO_FATAL_FAILURE(tickPackage(i + 1, codes.at(i)));
    const QString key = keys().value(0);
    QStringList places;
    for (const QString& code : codes) {
        const Target target = targetOf(code, key);
        ASSERT_NO_FATAL_FAILURE(tickTarget(target));
        places.append(target.place);
    }
    keep(display.settledPicture(), QStringLiteral("shift-four-targets"));
    // Somebody else takes the second package: its refusal holds the confirmation up behind the first one.
    ASSERT_TRUE(
        warehouse.run(QStringLiteral("update Kolv_Mag_BarCode_Sur set Rank = 2, Stand = 1, Shelf = 1, "
                                     "Location = 1 where BarCode = N'0002'")));
    ASSERT_NE(numbers(source).join(u'/'), QStringLiteral("2/1/1/1"));
    clickAt(kAcceptShift);
    ASSERT_FALSE(client->turnTo(kNotice).isEmpty());
    EXPECT_EQ(placeOf(codes.at(0)), places.at(0));

    warehouse.kill();
    ASSERT_TRUE(client->answer(kNotice, QStringLiteral("Return")));
    const QString failedMove = QStringLiteral("Error - clsMagWatchShiftLoc [ShiftLocationItem]");
    EXPECT_EQ(client->messageTitle(), failedMove);
    keep(display.settledPicture(), QStringLiteral("shift-server-gone"));
    EXPECT_EQ(dismissAll().count(failedMove), 2) << "one for each of the two packages that were left";
    // The program can be left as ever; that nothing could be cleared is told.
    ASSERT_TRUE(display.activate(client->mainWindow()));
    display.key(QStringLiteral("ctrl+x"));
    answerExit(true);
    dismissAll();
    EXPECT_EQ(client->exitCode(), 0);

    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
    EXPECT_EQ(placeOf(codes.at(0)), places.at(0));
    EXPECT_EQ(placeOf(codes.at(1)), QStringLiteral("2/1/1/1"));
    EXPECT_EQ(placeOf(codes.at(2)), numbers(source).join(u'/'));
    EXPECT_EQ(placeOf(codes.at(3)), numbers(source).join(u'/'));
    EXPECT_EQ(allPackages(), packages);
    EXPECT_EQ(movesOf(codes.at(0)), 1);
    EXPECT_EQ(movesOf(codes.at(2)) + movesOf(codes.at(3)), 0);

    // It listens on another port now.
    writeConnectionFile(warehouse, warehouse.connectFile());
    client = newClient();
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openShift());
    ASSERT_NO_FATAL_FAILURE(pickPackages(source));
    ASSERT_NO_FATAL_FAILURE(tickPackage(1, codes.at(2)));
    const Target target =
        targetOf(codes.at(2), one(QStringLiteral("select max(SPID) from ##Temp_Prop_Location")));
    ASSERT_NO_FATAL_FAILURE(tickTarget(target));
    clickAt(kAcceptShift);
    EXPECT_TRUE(eventually([&] { return placeOf(codes.at(2)) == target.place; }));
    EXPECT_EQ(movesOf(codes.at(2)), 1);
    EXPECT_EQ(leave(), 0);
}

TEST_F(ShiftTrouble, TwoCopiesOfOneUserKeepTheirRowsApartAndMoveAPackageOnce) {
    const QString code = codes.at(0);
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openShift());
    ASSERT_NO_FATAL_FAILURE(pickPackages(source));
    ASSERT_NO_FATAL_FAILURE(tickPackage(1, code));
    const QString firstKey = keys().value(0);
    const int firstProposals = proposalsOf(firstKey);
    ASSERT_GT(firstProposals, 0);

    putAside();
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openShift());
    EXPECT_EQ(keys(), QStringList(firstKey)) << "the second copy clears its own rows alone";
    ASSERT_NO_FATAL_FAILURE(pickPackages(source));
    EXPECT_EQ(stagedRows(code), 2);
    QStringList bothKeys = keys();
    ASSERT_EQ(bothKeys.size(), 2);
    bothKeys.removeAll(firstKey);
    const QString secondKey = bothKeys.value(0);
    EXPECT_EQ(proposalsOf(secondKey), 0) << "what the first one has chosen is not chosen here";

    ASSERT_NO_FATAL_FAILURE(tickPackage(1, code));
    const Target second = targetOf(code, secondKey);
    ASSERT_NO_FATAL_FAILURE(tickTarget(second));
    clickAt(kAcceptShift);
    EXPECT_TRUE(eventually([&] { return placeOf(code) == second.place; }));
    display.settledPicture();
    EXPECT_EQ(display.titles(client->process()), QStringList(Client::mainTitle())) << "no message";
    EXPECT_EQ(stagedRows(code), 1) << "the row of the first copy";
    EXPECT_EQ(proposalsOf(firstKey), firstProposals);

    ASSERT_NO_FATAL_FAILURE(turnToOther());
    ASSERT_NO_FATAL_FAILURE(tickTarget(targetOf(code, firstKey)));
    clickAt(kAcceptShift);
    ASSERT_FALSE(client->turnTo(kNotice).isEmpty()) << "the first copy is told";
    keep(display.settledPicture(), QStringLiteral("shift-moved-by-another-copy"));
    ASSERT_TRUE(client->answer(kNotice, QStringLiteral("Return")));
    EXPECT_EQ(placeOf(code), second.place);
    EXPECT_EQ(movesOf(code), 1);
    EXPECT_EQ(allPackages(), packages);

    EXPECT_EQ(leave(), 0);
    EXPECT_EQ(keys(), QStringList(secondKey)) << "the end of one copy clears its own rows alone";
    ASSERT_NO_FATAL_FAILURE(turnToOther());
    EXPECT_EQ(leave(), 0);
    EXPECT_EQ(keys(), QStringList());
}

}  // namespace
}  // namespace regalon::test
