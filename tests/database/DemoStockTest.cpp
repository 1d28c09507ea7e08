// The demo stock: enough of every case that a storekeeper meets, and nothing that could not be.

#include "database/DocumentDesk.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace regalon::test {
namespace {

class DemoStock : public ::testing::Test {
protected:
    long count(const std::string& from) { return connection_.run("SELECT COUNT(*) FROM " + from).whole(0); }

    Warehouse warehouse_;
    OdbcConnection connection_ = warehouse_.connect();
};

}  // namespace

TEST_F(DemoStock, MaterialsHavePolishNamesAndBelongToGroups) {
    EXPECT_GE(count("OITM"), 40);
    EXPECT_EQ(connection_.run("SELECT ItemName FROM OITM WHERE ItemCode = N'SR-M8-030'").text(0),
              "Śruba M8x30 DIN 933 kl. 8.8 ocynk");
    EXPECT_EQ(count("OITM WHERE ItemCode NOT IN (SELECT ItemCode FROM kolv_mag_Group_Item)"), 0);
    EXPECT_EQ(count("OITM WHERE ItemCode LIKE N'%,%'"), 0) << "a comma would break the lists of codes";
    EXPECT_GE(count("kolv_mag_Location_Group WHERE OnOrOff = N'Y'"), 8);
    EXPECT_GE(count("kolv_mag_Location_Group WHERE OnOrOff = N'N'"), 1);
}

TEST_F(DemoStock, SeveralHundredPackagesCarryValidBarcodes) {
    const Rows codes = connection_.run("SELECT BarCode FROM Kolv_Mag_BarCode_Sur");
    EXPECT_GE(codes.size(), 400U);
    EXPECT_LE(codes.size(), 1200U);
    std::size_t ean = 0;
    for (std::size_t i = 0; i < codes.size(); ++i) {
        const std::string code = codes.text(i);
        EXPECT_EQ(code.find_first_not_of("0123456789"), std::string::npos) << code;
        if (code.size() != 13)
            continue;
        ++ean;
        int sum = 0;
        for (std::size_t k = 0; k < 13; ++k)
            sum += (code[k] - '0') * (k % 2 == 0 ? 1 : 3);
        EXPECT_EQ(sum % 10, 0) << code;
    }
    EXPECT_GT(ean, codes.size() / 2);
    EXPECT_LT(ean, codes.size());
}

TEST_F(DemoStock, PackagesHaveSizeQuantityAndAPlaceThatExists) {
    EXPECT_EQ(count("Kolv_Mag_BarCode_Sur WHERE NOT (Quantity > 0 AND PackWeight > 0 AND PackLength > 0 AND "
                    "PackWidth > 0 AND PackHeight > 0)"),
              0);
    EXPECT_EQ(
        count("Kolv_Mag_BarCode_Sur AS B LEFT JOIN kolv_mag_Location AS L ON L.Rank = B.Rank AND L.Stand = "
              "B.Stand AND L.Shelf = B.Shelf AND L.Location = B.Location WHERE B.Rank IS NOT NULL AND L.Rank "
              "IS NULL"),
        0);
    EXPECT_EQ(
        count("Kolv_Mag_BarCode_Sur AS B LEFT JOIN OITM AS I ON I.ItemCode = B.ItemCode LEFT JOIN OPOR AS D "
              "ON D.DocEntry = B.DocEntry WHERE I.ItemCode IS NULL OR D.DocEntry IS NULL"),
        0);
    EXPECT_GT(count("Kolv_Mag_BarCode_Sur WHERE Rank IS NULL"), 10) << "some wait in the buffer";
    EXPECT_GT(count("Kolv_Mag_BarCode_Sur WHERE Active = N'N'"), 10) << "some were given out";
    EXPECT_EQ(
        count("Kolv_Mag_BarCode_Sur AS B WHERE NOT EXISTS (SELECT 1 FROM Kolv_Mag_BarCode_Sur_History AS H "
              "WHERE H.BarCode = B.BarCode AND H.Operation = N'I')"),
        0);
}

TEST_F(DemoStock, LocationsShowEveryCase) {
    EXPECT_GT(count("kolv_mag_Location WHERE LocationPercent = 0"), 20);
    EXPECT_GT(count("kolv_mag_Location WHERE LocationPercent = 100"), 10);
    EXPECT_GT(count("kolv_mag_Location WHERE LocationPercent BETWEEN 1 AND 99"), 200);
    EXPECT_GT(connection_.run("SELECT COUNT(DISTINCT LocationPercent) FROM kolv_mag_Location").whole(0), 30);
    EXPECT_GT(count("kolv_mag_Location_Item WHERE StatLocation_cmb = N'1' AND GroupSur > 0"), 10);
    EXPECT_GT(count("kolv_mag_Location_Item WHERE StatLocation_cmb = N'1' AND GroupSur = 0"), 3);
    EXPECT_GT(count("kolv_mag_Location_Item WHERE StatLocation_cmb = N'0' AND GroupSur > 0"), 3);
    EXPECT_GT(count("kolv_mag_Location_Item WHERE StatLocation_cmb IS NULL"), 3);
    EXPECT_GT(count("kolv_mag_Location_Item WHERE Description_char <> N''"), 30);
    EXPECT_GT(
        count(
            "kolv_mag_Location AS L WHERE NOT EXISTS (SELECT 1 FROM kolv_mag_Location_Item AS I WHERE I.Rank "
            "= L.Rank AND I.Stand = L.Stand AND I.Shelf = L.Shelf AND I.Location = L.Location)"),
        20)
        << "some have nothing assigned";
}

TEST_F(DemoStock, NoLocationHoldsMoreThanFits) {
    const Rows over = connection_.run(
        "SELECT S.Rank, S.Stand, S.Shelf, S.Location, W.LoadVolume / S.SpaceVolume, W.LoadWeight / "
        "S.SpaceWeight "
        "FROM Kolv_vv_mag_Location_Space AS S INNER JOIN Kolv_vv_mag_Location_Load AS W ON W.Rank = S.Rank "
        "AND "
        "W.Stand = S.Stand AND W.Shelf = S.Shelf AND W.Location = S.Location "
        "WHERE W.LoadVolume > S.SpaceVolume * 1.01 OR W.LoadWeight > S.SpaceWeight * 1.01");
    for (std::size_t i = 0; i < over.size(); ++i)
        ADD_FAILURE() << over.text(i, 0) << "/" << over.text(i, 1) << "/" << over.text(i, 2) << "/"
                      << over.text(i, 3) << ": volume " << over.text(i, 4) << ", weight " << over.text(i, 5);
}

TEST_F(DemoStock, PicturesAreDistinctBitmaps) {
    const Rows pictures = connection_.run(
        "SELECT Picture_pic, COUNT(*) FROM kolv_mag_Location_Item WHERE Picture_pic IS NOT NULL GROUP BY "
        "Picture_pic");
    EXPECT_GE(pictures.size(), 5U);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const std::string text = pictures.text(i);
        EXPECT_EQ(text.substr(0, 2), "Qk") << "Base64 of BM";
        EXPECT_EQ(text.size() % 4, 0U);
        EXPECT_GT(text.size(), 4000U);
        EXPECT_LT(text.size(), 8000U);
    }
}

TEST_F(DemoStock, OrdersShowEveryState) {
    for (int status = 0; status <= 4; ++status)
        EXPECT_GE(count("Kolv_vv_mag_PurchaseOrder_Line WHERE Status = " + std::to_string(status)), 3)
            << status;
    EXPECT_EQ(count("POR1 AS L WHERE NOT EXISTS (SELECT 1 FROM OITM AS I WHERE I.ItemCode = L.ItemCode)"), 0);
    EXPECT_GE(count("ORDR AS D INNER JOIN RDR1 AS L ON L.DocEntry = D.DocEntry WHERE D.DocStatus = N'O' AND "
                    "L.LineStatus = N'O'"),
              4);
    EXPECT_EQ(
        count("RDR1 AS L WHERE NOT EXISTS (SELECT 1 FROM kolv_mag_Order_Material AS M WHERE M.DocEntry = "
              "L.DocEntry AND M.LineNum = L.LineNum)"),
        0);
    EXPECT_EQ(
        count("kolv_mag_Order_Material AS M INNER JOIN ORDR AS D ON D.DocEntry = M.DocEntry WHERE "
              "D.DocStatus = N'O' AND NOT EXISTS (SELECT 1 FROM Kolv_Mag_BarCode_Sur AS B WHERE B.ItemCode "
              "= M.ItemCode AND B.Active = N'Y')"),
        0)
        << "what an open order needs is there";
}

TEST_F(DemoStock, WhatWasGivenOutHasItsDocumentAndEveryCodeItsLine) {
    expectBalance(connection_);
    EXPECT_EQ(
        count(
            "Kolv_Mag_BarCode_Sur AS B WHERE B.Active = N'N' AND NOT EXISTS (SELECT 1 FROM "
            "Kolv_vv_mag_GiveOut_Last AS G WHERE G.GiveOutBarCode = B.BarCode AND G.Quantity = B.Quantity)"),
        0);
    EXPECT_EQ(connection_.run("SELECT MAX(GiveOutDocNum) - COUNT(*) FROM Kolv_Mag_GiveOut").whole(0), 0);
    EXPECT_EQ(
        count("Kolv_Mag_BarCode_Sur AS B WHERE NOT EXISTS (SELECT 1 FROM Kolv_Mag_BarCode_Sur_Code AS C "
              "INNER JOIN POR1 AS L ON L.DocEntry = C.DocEntry AND L.LineNum = C.LineNum AND L.ItemCode = "
              "C.ItemCode WHERE C.BarCode = B.BarCode)"),
        0);
}

TEST_F(DemoStock, RecomputingTheFillChangesNothing) {
    const std::string state =
        "SELECT LocationPercent, LocationIcon FROM kolv_mag_Location ORDER BY Rank, Stand, Shelf, "
        "Location";
    const Rows before = connection_.run(state);
    connection_.run("EXEC Kolv_mag_Refresh_Percent_Location N'N'");
    EXPECT_EQ(connection_.run(state).values, before.values);
}

TEST_F(DemoStock, UsersAndFoldersAreThoseOfTheDemo) {
    EXPECT_GE(count("OUSR"), 4);
    EXPECT_EQ(connection_.run("select User_Code from OUSR where UserID = 1").text(0), "manager");
    const Rows setup =
        connection_.run("SELECT PathFile, PathBitmapMagSur, PathBitmapPlanProd FROM Kolv_setup");
    ASSERT_EQ(setup.size(), 1U);
    EXPECT_EQ(setup.text(0, 0), "C:\\Regalon");
    EXPECT_EQ(setup.text(0, 1), "C:\\Regalon\\Ikony");
    EXPECT_EQ(setup.text(0, 2), "C:\\Regalon\\Plany");
}

TEST_F(DemoStock, MovingPackagesMeetsEveryStatusOfATarget) {
    ShiftDesk desk(warehouse_.connect());
    std::map<std::string, int> seen;
    const Rows places = connection_.run(
        "SELECT MIN(BarCode), ItemCode, Rank, Stand, Shelf, Location FROM Kolv_Mag_BarCode_Sur WHERE Active "
        "= "
        "N'Y' AND Rank IS NOT NULL AND ItemCode IN (N'BL-GW-030', N'BL-NI-010', N'SR-M12-050') GROUP BY "
        "ItemCode, Rank, "
        "Stand, "
        "Shelf, Location");
    ASSERT_GT(places.size(), 10U);
    for (std::size_t i = 0; i < places.size(); ++i) {
        desk.take(places.text(i, 1),
                  places.text(i, 2) + ", " + places.text(i, 3) + ", " + places.text(i, 4) + ", " +
                      places.text(i, 5),
                  places.text(i, 0));
        for (const Proposal& row : desk.proposals()) {
            ++seen[row.status + row.occupied];
            if (row.status == "O")
                ++seen[row.remark];
        }
    }
    for (const char* expected :
         {"DC", "DZ", "CC", "CZ", "PZ", "Jednoindeksowa, leży inny surowiec", "Przypisana do innego surowca",
          "Grupa nie obejmuje surowca", "Opakowanie za duże lub za ciężkie", "Regał jest wyłączony",
          "Opakowanie już na niej leży"})
        EXPECT_GT(seen[expected], 0) << expected;
}

}  // namespace regalon::test
