// Templates of labels and the printers that belong to their kinds.

#include "database/Warehouse.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

std::string printer(OdbcConnection& connection, int code) {
    const Rows rows =
        connection.run("declare @name nvarchar(100), @return int exec @return = dbo.Kolv_Get_PrintersName " +
                       std::to_string(code) + ", @name output select @return, @name");
    return rows.text(0, 0) + " " + rows.text(0, 1);
}

}  // namespace

TEST(Labels, APrinterIsNamedForItsKindOfLabel) {
    const Warehouse warehouse;
    OdbcConnection connection = warehouse.connect();
    EXPECT_EQ(printer(connection, 100), "0 Etykiety");
    connection.run("update Kolv_PrintersName set PrintersName = N'  Zebra w hali '");
    EXPECT_EQ(printer(connection, 100), "0 Zebra w hali");
}

TEST(Labels, AKindWithoutAPrinterIsRefusedWithAnEmptyName) {
    const Warehouse warehouse;
    OdbcConnection connection = warehouse.connect();
    EXPECT_EQ(printer(connection, 101), "1 ");
    for (const char* empty : {"null", "N''", "N'  '"}) {
        connection.run(std::string("update Kolv_PrintersName set PrintersName = ") + empty);
        EXPECT_EQ(printer(connection, 100), "1 ") << empty;
    }
}

TEST(Labels, EachGroupOfWindowsHasItsActiveTemplate) {
    const Warehouse warehouse;
    OdbcConnection connection = warehouse.connect();
    const auto file = [&](int user, int group) {
        const Rows rows = connection.run(
            "select A.RaportFile from Kolv_ListPrint A(nolock) inner join Kolv_PrintActiveUser B(nolock)  On "
            "A.RaportCOde = B.RaportCode AND A.GroupForm = B.GroupForm where B.UserSign = " +
            std::to_string(user) + " AND A.GroupForm = " + std::to_string(group));
        return rows.size() == 1 ? rows.text(0, 0) : std::to_string(rows.size()) + " rows";
    };
    EXPECT_EQ(file(1, 3), "Etykieta_lokalizacji_01.odt");
    EXPECT_EQ(file(2, 4), "Etykieta_kodu_02.odt");
    EXPECT_EQ(file(3, 3), "0 rows");
}

}  // namespace regalon::test
