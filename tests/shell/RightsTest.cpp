// The rights of users, read from the tables of a real server, and the menus that follow them.
#include "platform/RunTimeError.h"
#include "shell/MainWindowFixture.h"
#include "shell/Rights.h"
#include "shell/modConnection.h"

namespace regalon::test {
namespace {

const QString magSur = QStringLiteral("MagSur");

qint32 failureOfHasRight(const QString& rights, qint32 position) {
    try {
        HasRight(rights, position);
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

/// The tables hold one window, MagSur, unless a test says more.
class RightsTables : public MainWindow {
protected:
    void run(const QString& sql) { ASSERT_TRUE(warehouse.run(sql)) << qPrintable(warehouse.why()); }
    void giveWindow(const QString& form, const QList<int>& numbers) {
        run(QStringLiteral("delete from kolv_RightsName where FormName = N'%1'").arg(form));
        for (const int number : numbers) {
            run(QStringLiteral("insert into kolv_RightsName (FormName, LpShow) values (N'%1', %2)")
                    .arg(form)
                    .arg(number));
        }
    }
    /// Lists as SQL: a quoted text or NULL.
    void giveUser(int user, const QString& numbers, const QString& values) {
        run(QStringLiteral("delete from kolv_user where UserID = %1").arg(user));
        run(QStringLiteral("insert into kolv_user (UserID, RightsNumber, RightsUser) values (%1, %2, %3)")
                .arg(user)
                .arg(numbers, values));
    }
};

class RightsOfUsers : public RightsTables {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(RightsTables::SetUp());
        context.ConnectionFilePath = QStringLiteral("C:\\Regalon\\connect.txt");
        ASSERT_TRUE(TestConnection(context));
        giveWindow(magSur, {1, 2, 5, 7});
    }
    /// The string of MagSur for a user with these lists.
    QString stringOf(const QString& numbers, const QString& values) {
        giveUser(2, numbers, values);
        return rights.GetRights(magSur, 2);
    }

    Rights rights{context};
};

TEST_F(RightsOfUsers, AreACharacterForEachRightInTheOrderOfTheRows) {
    EXPECT_EQ(stringOf(QStringLiteral("'1,2,5,7'"), QStringLiteral("'1,0,1,1'")), QStringLiteral("1011"));
    EXPECT_EQ(stringOf(QStringLiteral("'7,5,2,1'"), QStringLiteral("'9,8,7,6'")), QStringLiteral("6789"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(RightsOfUsers, AreReadByTheirStatements) {
    warehouse.clearTrace();
    rights.GetRights(magSur, -7);
    rights.GetRights(QStringLiteral("O'Brien"), 4);
    EXPECT_EQ(warehouse.trace(),
              (QStringList{
                  QStringLiteral("select LpShow from kolv_RightsName where FormName  = N'MagSur'"),
                  QStringLiteral("select RightsNumber,RightsUser  from kolv_user where UserID = -7"),
                  QStringLiteral("select LpShow from kolv_RightsName where FormName  = N'O''Brien'"),
              }));
}

TEST_F(RightsOfUsers, AreNoneForAnUnknownUserAndAnUnknownWindow) {
    EXPECT_EQ(rights.GetRights(magSur, 5), QString());
    EXPECT_EQ(rights.GetRights(QStringLiteral("frmNieMa"), 1), QString());
    EXPECT_EQ(rights.GetRights(QString(), 1), QString());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(RightsOfUsers, ShiftToTheLeftBehindARightThatTheListLacks) {
    EXPECT_EQ(stringOf(QStringLiteral("'1,5,7'"), QStringLiteral("'1,2,3'")), QStringLiteral("123"));
}

TEST_F(RightsOfUsers, ShiftToTheRightBehindANumberThatStandsTwice) {
    EXPECT_EQ(stringOf(QStringLiteral("'1,1,2,5,7'"), QStringLiteral("'1,2,3,4,5'")),
              QStringLiteral("12345"));
}

TEST_F(RightsOfUsers, MayBeNullAndAreThenNone) {
    EXPECT_EQ(stringOf(QStringLiteral("NULL"), QStringLiteral("'1,0,1,1'")), QString());
    EXPECT_EQ(stringOf(QStringLiteral("NULL"), QStringLiteral("NULL")), QString());
    giveUser(1, QStringLiteral("'1,2'"), QStringLiteral("'1,1'"));
    giveWindow(QStringLiteral("frmNull"), {});
    run(QStringLiteral("insert into kolv_RightsName (FormName, LpShow) values (N'frmNull', NULL)"));
    EXPECT_EQ(rights.GetRights(QStringLiteral("frmNull"), 1), QString());
    run(QStringLiteral("insert into kolv_RightsName (FormName, LpShow) values (N'frmNull', 1)"));
    EXPECT_EQ(rights.GetRights(QStringLiteral("frmNull"), 1), QString());
}

TEST_F(RightsOfUsers, AreNoneWithATextThatIsNoNumber) {
    EXPECT_EQ(stringOf(QStringLiteral("'1,2,x,7'"), QStringLiteral("'1,1,1,1'")), QString());
    EXPECT_EQ(stringOf(QStringLiteral("'1,2,,7'"), QStringLiteral("'1,1,1,1'")), QString());
    EXPECT_EQ(stringOf(QStringLiteral("'1,2,40000,7'"), QStringLiteral("'1,1,1,1'")), QString());
    run(QStringLiteral("drop table kolv_RightsName"));
    run(QStringLiteral("create table kolv_RightsName (FormName nvarchar(50), LpShow nvarchar(10))"));
    run(QStringLiteral("insert into kolv_RightsName values (N'MagSur', N'jeden')"));
    EXPECT_EQ(stringOf(QStringLiteral("'1'"), QStringLiteral("'1'")), QString());
    EXPECT_EQ(messages.count(), 0);
    // The user is asked for all the same.
    warehouse.clearTrace();
    EXPECT_EQ(rights.GetRights(magSur, 2), QString());
    EXPECT_EQ(warehouse.trace(),
              (QStringList{
                  QStringLiteral("select LpShow from kolv_RightsName where FormName  = N'MagSur'"),
                  QStringLiteral("select RightsNumber,RightsUser  from kolv_user where UserID = 2"),
              }));
}

TEST_F(RightsOfUsers, AreNoneWhenTheListOfValuesIsTheShorterOne) {
    EXPECT_EQ(stringOf(QStringLiteral("'1,2,5,7'"), QStringLiteral("'1,1,1'")), QString());
    EXPECT_EQ(stringOf(QStringLiteral("'1,2,5,7'"), QStringLiteral("NULL")), QString());
    // What is too short for no right of this window harms nothing.
    EXPECT_EQ(stringOf(QStringLiteral("'1,2,5,7,99'"), QStringLiteral("'1,2,3,4'")), QStringLiteral("1234"));
    EXPECT_EQ(stringOf(QStringLiteral("'1,2'"), QStringLiteral("'1,2,3,4'")), QStringLiteral("12"));
}

TEST_F(RightsOfUsers, KeepAValueThatIsNoDigitAsItStands) {
    EXPECT_EQ(stringOf(QStringLiteral("'1,2,5,7'"), QStringLiteral("'1,x,10,1'")), QStringLiteral("1x101"));
}

TEST_F(RightsOfUsers, AreNoneWithoutAServerAndWithoutAConnection) {
    warehouse.kill();
    EXPECT_EQ(rights.GetRights(magSur, 1), QString());
    AppContext unconnected;
    EXPECT_EQ(Rights(unconnected).GetRights(magSur, 1), QString());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(RightsOfUsers, StandAtTheirPlaceAmongTheRowsOfTheWindow) {
    rights.GetRights(magSur, 1);
    EXPECT_EQ(rights.positionOf(1), 1);
    EXPECT_EQ(rights.positionOf(5), 3);
    EXPECT_EQ(rights.positionOf(7), 4);
    EXPECT_EQ(rights.positionOf(3), 0);
    rights.GetRights(QStringLiteral("frmNieMa"), 1);
    EXPECT_EQ(rights.positionOf(1), 0);
}

TEST(HasRight, IsTrueForADigitAboveZeroAtThePosition) {
    EXPECT_TRUE(HasRight(QStringLiteral("1011"), 1));
    EXPECT_FALSE(HasRight(QStringLiteral("1011"), 2));
    EXPECT_TRUE(HasRight(QStringLiteral("0009"), 4));
}

TEST(HasRight, IsFalseBehindTheEndOfTheString) {
    EXPECT_FALSE(HasRight(QStringLiteral("1011"), 5));
    EXPECT_FALSE(HasRight(QString(), 1));
}

TEST(HasRight, FailsAtACharacterThatIsNoDigit) {
    EXPECT_EQ(failureOfHasRight(QStringLiteral("1x11"), 2), RunTime::TypeMismatch);
    EXPECT_EQ(failureOfHasRight(QStringLiteral("1x11"), 1), 0);
    EXPECT_EQ(failureOfHasRight(QStringLiteral("1 11"), 2), RunTime::TypeMismatch);
    EXPECT_EQ(failureOfHasRight(QStringLiteral("1011"), 0), RunTime::InvalidProcedureCall);
}

/// The main window of a user. Which of the items that follow the rights are on is told by a letter for each:
/// view, layout editor, moves, barcodes, editor of the connection file, menu of the settings.
class MenusOfUsers : public RightsTables {
protected:
    QString menusOf(int user) {
        messages.clear();
        start(QStringLiteral("-c:\\Regalon\\connect.txt -%1").arg(user));
        EXPECT_EQ(messages.count(), 0) << qPrintable(messageTexts().join(u'|'));
        return menus();
    }
    QString menus() const {
        QString on;
        const auto tell = [&](const char* name, QChar letter) {
            on += action(QString::fromLatin1(name))->isEnabled() ? letter : QChar(u'-');
        };
        tell("mnuMagWatch", u'W');
        tell("mnuMagCreate", u'C');
        tell("mnuMagWatchShiftLoc", u'S');
        tell("mnuMagSurBarCodeLoc", u'B');
        tell("mnuKonfPlikuPol", u'K');
        tell("mnuUUstawienia", u'U');
        return on;
    }
};

TEST_F(MenusOfUsers, ShowTheCasesOfTheDemo) {
    EXPECT_EQ(menusOf(1), QStringLiteral("WCSBKU")) << "the manager";
    EXPECT_EQ(menusOf(2), QStringLiteral("W-SB--")) << "a storekeeper";
    EXPECT_EQ(menusOf(3), QStringLiteral("W-S---")) << "a storekeeper without the barcode window";
    EXPECT_EQ(menusOf(4), QStringLiteral("W-----")) << "who only looks";
    EXPECT_EQ(menusOf(5), QStringLiteral("WCSBKU")) << "unknown to the tables";
    EXPECT_EQ(menusOf(6), QStringLiteral("WCSBKU")) << "without the right that switches the rights on";
}

TEST_F(MenusOfUsers, FollowTheRightsOneTwoFiveAndSevenOfAWindowThatHasNoOthers) {
    giveWindow(magSur, {1, 2, 5, 7});
    giveWindow(QStringLiteral("frmSlownikGrupa"), {31});
    giveUser(2, QStringLiteral("'1,2,5,7,31'"), QStringLiteral("'1,0,1,1,1'"));
    EXPECT_EQ(menusOf(2), QStringLiteral("W-SB--"));
}

TEST_F(MenusOfUsers, TakeTheValueOfTheNextRightBehindOneThatTheListLacks) {
    // The list lacks right 6, so the place of right 7 holds the value of right 8.
    giveUser(2, QStringLiteral("'1,2,3,4,5,7,8,31'"), QStringLiteral("'1,0,0,0,0,0,1,1'"));
    EXPECT_EQ(menusOf(2), QStringLiteral("W--B--"));
}

TEST_F(MenusOfUsers, ShowTheSettingsToUserOneAlways) {
    giveUser(1, QStringLiteral("'31'"), QStringLiteral("'0'"));
    EXPECT_EQ(menusOf(1), QStringLiteral("----KU"));
    giveUser(3, QStringLiteral("'1,2,5,7,31'"), QStringLiteral("'1,1,1,1,1'"));
    EXPECT_EQ(menusOf(3).right(2), QStringLiteral("--"));
}

TEST_F(MenusOfUsers, KeepTheSettingsWhenTheTablesDoNotKnowTheUser) {
    run(QStringLiteral("delete from kolv_RightsName where FormName = N'frmSlownikGrupa'"));
    warehouse.clearTrace();
    EXPECT_EQ(menusOf(4), QStringLiteral("WCSBKU"));
    const QStringList trace = warehouse.trace();
    EXPECT_EQ(trace.last(),
              QStringLiteral("select LpShow from kolv_RightsName where FormName  = N'frmSlownikGrupa'"));
}

TEST_F(MenusOfUsers, GoByTheRowsOfTheWholeWarehouseAndNotByThoseOfTheTwoWindows) {
    giveWindow(QStringLiteral("frmMagCreate"), {11, 1});
    giveWindow(QStringLiteral("frmMagWatch"), {21, 1});
    giveUser(2, QStringLiteral("'1,2,31'"), QStringLiteral("'1,0,1'"));
    EXPECT_EQ(menusOf(2), QStringLiteral("W-----"));
    giveUser(2, QStringLiteral("'1,2,31'"), QStringLiteral("'0,1,1'"));
    EXPECT_EQ(menusOf(2), QStringLiteral("-C----"));
}

TEST_F(MenusOfUsers, CloseEverythingToAKnownUserWithoutRowsOfTheWarehouse) {
    run(QStringLiteral("delete from kolv_RightsName where FormName = N'MagSur'"));
    EXPECT_EQ(menusOf(2), QStringLiteral("------"));
}

TEST_F(MenusOfUsers, StayAsFarAsTheyWereSetWhenARightCannotBeRead) {
    // Right 5 is no digit: view and layout editor are decided by then, the rest stays on.
    giveUser(4, QStringLiteral("'1,2,3,4,5,6,7,8,31'"), QStringLiteral("'1,0,0,0,x,0,0,0,1'"));
    EXPECT_EQ(menusOf(4), QStringLiteral("W-SBKU"));
}

TEST_F(MenusOfUsers, StayAsTheyAreAfterAFailedLogin) {
    const ClosedDefaultPort nobodyListens;
    ASSERT_TRUE(QFile::remove(inRegalon(QStringLiteral("connect.txt"))));
    start(QStringLiteral("-c:\\Regalon\\connect.txt -4"));
    EXPECT_EQ(messages.count(), 1) << "the failed login alone";
    EXPECT_EQ(menus(), QStringLiteral("WCSBKU"));
}

TEST_F(MenusOfUsers, LetNobodyInByMouseWhereTheyAreOff) {
    ChildWindows children;
    for (auto item : {&ChildWindows::MagWatch, &ChildWindows::MagCreate}) {
        (children.*item).create = [this] {
            ++created;
            return child = new ChildStandIn(&context);
        };
    }
    start(QStringLiteral("-c:\\Regalon\\connect.txt -2"), children);
    chooseItem(QStringLiteral("mnuMaterial"), QStringLiteral("mnuMagCreate"));
    EXPECT_EQ(created, 0);
    chooseItem(QStringLiteral("mnuMaterial"), QStringLiteral("mnuMagWatch"));
    EXPECT_EQ(created, 1);
}

}  // namespace
}  // namespace regalon::test
