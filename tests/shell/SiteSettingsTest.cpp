#include "shell/ShellFixture.h"
#include "shell/clsSAPGetData.h"
#include "shell/mdiKolvestra.h"
#include "shell/modConnection.h"
#include "shell/modMain.h"

namespace regalon::test {
namespace {

class SiteSettings : public WarehouseFixture {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(WarehouseFixture::SetUp());
        context.ConnectionFilePath = QStringLiteral("C:\\Regalon\\connect.txt");
        ASSERT_TRUE(TestConnection(context));
        Main(context);
        data = std::make_unique<clsSAPGetData>(context);
    }
    std::unique_ptr<clsSAPGetData> data;
};

TEST_F(SiteSettings, NameTheUserAndTheFolders) {
    EXPECT_FALSE(data->GetUserName(1).isEmpty());
    EXPECT_FALSE(data->GetKolvestraPatch().isEmpty());
    EXPECT_EQ(data->GetPathBitmapMagSur(), QStringLiteral("C:\\Regalon\\Ikony"));
    EXPECT_FALSE(data->GetPathBitmapPlanProd().isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(SiteSettings, AreReadByTheirStatements) {
    warehouse.clearTrace();
    data->GetUserName(-7);
    data->GetKolvestraPatch();
    data->GetPathBitmapMagSur();
    data->GetPathBitmapPlanProd();
    EXPECT_EQ(warehouse.trace(), (QStringList{
                                     QStringLiteral("select User_Code from OUSR where UserID = -7"),
                                     QStringLiteral("select PathFile from Kolv_setup(nolock)"),
                                     QStringLiteral("select PathBitmapMagSur from Kolv_setup(nolock)"),
                                     QStringLiteral("select PathBitmapPlanProd from Kolv_setup(nolock)"),
                                 }));
}

TEST_F(SiteSettings, OfAnUnknownUserNumberAreAnEmptyNameWithoutAMessage) {
    EXPECT_EQ(data->GetUserName(32767), QString());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(SiteSettings, ThatCannotBeReadNameTheUserBladUnderTheNeighboursName) {
    ASSERT_TRUE(warehouse.run(QStringLiteral("drop table OUSR"))) << qPrintable(warehouse.why());
    EXPECT_EQ(data->GetUserName(1), QStringLiteral("Błąd"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsSAPGetData [GetKolvestraPatch]"));
    EXPECT_EQ(messages.last().Flags, 16);
}

TEST_F(SiteSettings, ThatAreNullFailUnderTheirOwnName) {
    ASSERT_TRUE(warehouse.run(QStringLiteral("update Kolv_setup set PathBitmapPlanProd = NULL")))
        << qPrintable(warehouse.why());
    EXPECT_EQ(data->GetPathBitmapPlanProd(), QString());
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsSAPGetData [GetPathBitmapPlanProd]"));
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("94\r\n")))
        << qPrintable(messages.last().Text);
}

TEST_F(SiteSettings, AreReportedOnceWhenTheServerHasGone) {
    warehouse.kill();
    EXPECT_EQ(data->GetKolvestraPatch(), QString());
    EXPECT_EQ(messages.count(), 1);
    EXPECT_EQ(data->GetUserName(1), QStringLiteral("Błąd"));
    EXPECT_EQ(messages.count(), 2);
}

TEST_F(SiteSettings, ThatAreEmptyGiveOneMessageForEachPathAndTheProgramStarts) {
    ASSERT_TRUE(warehouse.run(QStringLiteral("delete from Kolv_setup"))) << qPrintable(warehouse.why());
    start({});
    ASSERT_EQ(messages.count(), 3);
    const QStringList routines = {QStringLiteral("GetKolvestraPatch"), QStringLiteral("GetPathBitmapMagSur"),
                                  QStringLiteral("GetPathBitmapPlanProd")};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(messages.messages()[i].Title,
                  QStringLiteral("Error - clsSAPGetData [") + routines[i] + u']');
        EXPECT_EQ(messages.messages()[i].Text, QStringLiteral("0\r\n"));
        EXPECT_EQ(messages.messages()[i].Flags, 16);
    }
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(context.PathBitmapMagSur, QString());
    EXPECT_TRUE(panel(QStringLiteral("keyLoginName")).startsWith(QStringLiteral("Zalogowany: ")));
}

}  // namespace
}  // namespace regalon::test
