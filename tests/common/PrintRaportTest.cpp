#include "GatewayFixture.h"
#include "common/PrintRaport.h"
#include "platform/FormControl.h"

#include <QLabel>
#include <QLineEdit>
#include <QWidget>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

class PrintRaportTest : public GatewayTest {
protected:
    template <class Control>
    Control* add(const QString& name) {
        auto* control = new Control(&form);
        control->setObjectName(name);
        control->setText(u"przed"_s);
        return control;
    }
    PrintRaport read(const char* columns) {
        return PrintRaport::read(context, recordset, u"select "_s + sql(columns));
    }

    QWidget form;
    DbRecordset recordset;
};

TEST_F(PrintRaportTest, TheFirstRowIsShownOnTheForm) {
    const auto* name = add<QLabel>(u"lblRaportName"_s);
    const auto* file = add<QLineEdit>(u"txtRaportFile"_s);
    const auto* code = add<QLineEdit>(u"txtRaportCode"_s);
    read(
        "7 as RaportCode, N'Mała etykieta' as RaportName, N'Mala.odt' as RaportFile, N'x' as RaporFileWath "
        "union all select 8, N'Inna', N'Inna.odt', N'y' order by RaportCode")
        .showOn(&form);
    EXPECT_EQ(name->text(), u"Szablon wydruku: Mała etykieta"_s);
    EXPECT_EQ(file->text(), u"Mala.odt"_s);
    EXPECT_EQ(code->text(), u"7"_s);
}

TEST_F(PrintRaportTest, NullIsCodeZeroAndTheWordBrak) {
    const PrintRaport raport = read(
        "cast(null as int) as RaportCode, cast(null as nvarchar(9)) as RaportName, "
        "cast(null as nvarchar(9)) as RaportFile, cast(null as nvarchar(9)) as RaporFileWath");
    EXPECT_EQ(raport.RaportCode, u"0"_s);
    EXPECT_EQ(raport.RaportName, u"Brak"_s);
    EXPECT_EQ(raport.RaportFile, u"Brak"_s);
}

TEST_F(PrintRaportTest, WithoutARowTheFormIsEmptied) {
    const auto* name = add<QLabel>(u"lblRaportName"_s);
    const auto* file = add<QLineEdit>(u"txtRaportFile"_s);
    const auto* code = add<QLineEdit>(u"txtRaportCode"_s);
    read(
        "id as RaportCode, name as RaportName, name as RaportFile, name as RaporFileWath from t_rows "
        "where id = -1")
        .showOn(&form);
    EXPECT_EQ(name->text(), u"Szablon wydruku: "_s);
    EXPECT_EQ(file->text(), QString());
    EXPECT_EQ(code->text(), QString());
}

TEST_F(PrintRaportTest, AFormWithoutTheNameIsLeftAsItWas) {
    const auto* file = add<QLineEdit>(u"txtRaportFile"_s);
    const auto* code = add<QLineEdit>(u"txtRaportCode"_s);
    const PrintRaport raport{u"1"_s, u"Nazwa"_s, u"Plik.odt"_s};
    EXPECT_EQ(failureOf([&] { raport.showOn(&form); }).Number, RunTime::NoSuchMember);
    EXPECT_EQ(file->text(), u"przed"_s);
    EXPECT_EQ(code->text(), u"przed"_s);
}

TEST_F(PrintRaportTest, AStatementWithoutTheSecondFileFails) {
    EXPECT_EQ(failureOf([&] { read("1 as RaportCode, N'a' as RaportName, N'b' as RaportFile"); }).Number,
              RunTime::ItemNotInCollection);
}

}  // namespace
}  // namespace regalon
