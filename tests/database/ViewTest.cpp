// Views bound to lists and grids: the first column is the key, of a type that the client's lists take.

#include "database/Warehouse.h"

#include <gtest/gtest.h>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace regalon::test {
namespace {

class Views : public ::testing::Test {
protected:
    Rows all(const std::string& view) { return connection_.run("select * from " + view); }

    Warehouse warehouse_;
    OdbcConnection connection_ = warehouse_.connect();
};

}  // namespace

TEST_F(Views, MaterialsToAddBeginWithNothingChosen) {
    const Rows rows = all("Kolv_vv_mag_Sur_On_Add");
    ASSERT_GE(rows.columns.size(), 2U);
    EXPECT_EQ(rows.columns[0].odbcType, SQL_WVARCHAR);
    EXPECT_EQ(rows.columns[1].odbcType, SQL_WVARCHAR);
    EXPECT_EQ(static_cast<long>(rows.size()), 1 + connection_.run("SELECT COUNT(*) FROM OITM").whole(0));
    EXPECT_EQ(rows.text(0, 0), "0");
    EXPECT_EQ(rows.text(0, 1), "wybierz");
}

TEST_F(Views, GroupsOfferOnlyThoseInUse) {
    const Rows rows = all("Kolv_vv_mag_Group_On_Localization");
    EXPECT_EQ(rows.text(0, 0), "0");
    EXPECT_EQ(rows.columns[0].odbcType, SQL_SMALLINT);
    EXPECT_EQ(
        static_cast<long>(rows.size()),
        1 + connection_.run("SELECT COUNT(*) FROM kolv_mag_Location_Group WHERE OnOrOff = N'Y'").whole(0));
}

TEST_F(Views, ParametersAreColumnsOfTheAssignment) {
    const Rows rows = all("Kolv_vv_mag_Param_Location");
    ASSERT_GT(rows.size(), 1U);
    EXPECT_EQ(rows.text(0, 0), "0");
    for (std::size_t i = 1; i < rows.size(); ++i) {
        const std::string name = rows.text(i, 0);
        EXPECT_NO_THROW(connection_.run("select " + name + " from kolv_mag_Location_Item where Rank = 1"))
            << name;
        const std::string kind = name.substr(name.rfind('_') + 1);
        EXPECT_TRUE(kind == "int" || kind == "char" || kind == "cmb" || kind == "pic") << name;
    }
}

TEST_F(Views, GridsShowTheCodeFirstAndHideTheFilterLast) {
    const Rows materials = all("Kolv_vv_mag_Sur_Mag");
    ASSERT_GE(materials.columns.size(), 2U);
    EXPECT_EQ(materials.columns[0].odbcType, SQL_WVARCHAR);
    EXPECT_EQ(materials.columns[0].name, "Kod surowca:1450;0");

    const Rows members =
        connection_.run("select * from Kolv_vv_mag_Sur_Location_group where xxx_GroupSur = 4");
    EXPECT_EQ(members.columns[0].odbcType, SQL_WVARCHAR);
    EXPECT_EQ(members.columns.back().name, "xxx_GroupSur");
    EXPECT_EQ(members.size(), 5U);
    EXPECT_EQ(connection_.run("select * from Kolv_vv_mag_Sur_Location_group where xxx_GroupSur = -1").size(),
              0U);
}

TEST_F(Views, TheReadsOfTheClientFindTheirColumns) {
    for (const char* sql :
         {"select ID,Rank,Stand,StandName,StandIcon,ShelfCount,StandLeft,StandTop,StandVisable,StandEnable,"
          "StandFrameArround  from kolv_mag_Stand order by Rank,Stand",
          "select Shelf,count(*) as LocationCount from kolv_mag_Location where Rank = 1 AND Stand = 1 group "
          "by Shelf order "
          "by Shelf",
          " select LocationName,LocationIcon,ISNULL(B.StatLocation_cmb,0) as StatusLocation from "
          "kolv_mag_Location "
          "A(nolock)  left join kolv_mag_Location_Item B(nolock) ON A.Rank = B.Rank AND A.Stand = B.Stand "
          "AND A.Shelf = "
          "B.Shelf AND A.Location = B.Location  order by A.Rank,A.Stand,A.Shelf,A.Location",
          " select A.ItemCode,A.ItemName,A.GroupSur,B.GroupSurName,A.StatLocation_cmb from "
          "kolv_mag_Location_Item A  left "
          "join kolv_mag_Location_Group B ON A.GroupSur = B.GroupSur where Rank = 1 and Stand = 1 and  Shelf "
          "= 1 and "
          "Location = 1",
          "select count(*) Location,max(Shelf) as Shelf from kolv_mag_Location where  Stand = 1 AND Rank = 1",
          "select '0' as Rank,'wybierz' RankName UNION ALL select Rank,RankName from kolv_mag_Rank(nolock) "
          "order by Rank",
          "select PathBitmapMagSur from Kolv_setup(nolock)"}) {
        Rows rows;
        EXPECT_NO_THROW(rows = connection_.run(sql)) << sql;
        EXPECT_GT(rows.size(), 0U) << sql;
    }
}

TEST_F(Views, AnEAN13IsMadeOfTwelveDigitsOnly) {
    EXPECT_EQ(connection_.run("SELECT dbo.kolv_mag_fn_EAN13(N'590123412345')").text(0), "5901234123457");
    EXPECT_EQ(connection_.run("SELECT dbo.kolv_mag_fn_EAN13(N'400638133393')").text(0), "4006381333931");
    EXPECT_EQ(connection_.run("SELECT dbo.kolv_mag_fn_EAN13(N'59012341234')").text(0), "<NULL>");
    EXPECT_EQ(connection_.run("SELECT dbo.kolv_mag_fn_EAN13(N'59012341234x')").text(0), "<NULL>");
    EXPECT_EQ(connection_.run("SELECT dbo.kolv_mag_fn_EAN13(NULL)").text(0), "<NULL>");
}

}  // namespace regalon::test
