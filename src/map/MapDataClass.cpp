#include "map/MapDataClass.h"

#include "common/AppContext.h"
#include "common/modSQL.h"

namespace regalon {

namespace {

// The statement texts are part of the contract with the database and go out as they stand, with their blanks,
// their spelling and the places where (nolock) is missing.
const QString kIconNamesOfItems = QStringLiteral(
    " select A.LocationName,A.LocationPercent,B.ItemCode,B.GroupSur"
    " from kolv_mag_Location A left join kolv_mag_Location_item B"
    " ON A.Rank = B.Rank AND A.Stand = B.Stand"
    " AND A.Shelf = B.Shelf AND A.Location = B.LOcation"
    " order by A.Rank,A.Stand,A.Shelf,A.Location");

const QString kIconNamesOfGroups = QStringLiteral(
    " select A.LocationName,A.LocationPercent,ISNULL(C.ItemCode,'EMPTY') as ItemCode,ISNULL(B.GroupSur,0) as"
    " GroupSur from kolv_mag_Group_Item C inner join kolv_mag_Location_item B"
    " ON C.GroupSur = B.GroupSur"
    " right join kolv_mag_Location A ON"
    "  B.Rank = a.Rank And B.Stand = a.Stand And B.Shelf = a.Shelf And B.Location = a.Location"
    " order by A.Rank,A.Stand,A.Shelf,A.Location");

const QString kGroupMember = QStringLiteral(" select Top 1 1 from kolv_mag_Group_Item  where ItemCode = ");

QString numberText(qint16 value) {
    return SqlNumber(int{value});
}

}  // namespace

MapDataClass::MapDataClass(AppContext& context, const QString& reportName, MaterialPlaces places)
    : LocationDataClass(context, reportName), m_places(places) {}

bool MapDataClass::GetStandParam(qint16 Rank, qint16 Stand, qint16& ShelfCount, qint16& LocationCount) {
    bool found = false;
    const bool done = trap("GetStandParam", [&] {
        openRead(QStringLiteral("select count(*) Location,max(Shelf) as Shelf from kolv_mag_Location"
                                " where  Stand = ") +
                 numberText(Stand) + QStringLiteral(" AND Rank = ") + numberText(Rank));
        if (Recordset.Eof())
            return;
        LocationCount = number("Location");
        ShelfCount = number("Shelf");
        found = true;
    });
    if (!done) {
        ShelfCount = 0;
        LocationCount = 0;
    }
    return found;
}

bool MapDataClass::GetLocationPercent(qint16 Rank, qint16 Stand, qint16 Shelf, qint16 Location,
                                      qint16& percent, QString& ItemCode, qint16& GroupSur) {
    bool found = false;
    const bool done = trap("GetLocationPercent", [&] {
        openRead(QStringLiteral(" select A.LocationPercent,B.ItemCode,B.GroupSur from kolv_mag_Location A"
                                " left join kolv_mag_Location_item B ON A.Rank = B.Rank AND A.Stand = B.Stand"
                                " AND A.Shelf = B.Shelf AND A.Location = B.LOcation  Where A.Rank = ") +
                 numberText(Rank) + QStringLiteral(" And A.Stand = ") + numberText(Stand) +
                 QStringLiteral(" And A.Shelf = ") + numberText(Shelf) +
                 QStringLiteral(" And A.Location = ") + numberText(Location));
        if (Recordset.Eof()) {
            percent = -1;
            ItemCode = QStringLiteral("0");
            GroupSur = -1;
            return;
        }
        percent = number("LocationPercent");
        ItemCode = text("ItemCode");
        GroupSur = number("GroupSur");
        found = true;
    });
    if (!done) {
        percent = 0;
        ItemCode.clear();
        GroupSur = 0;
    }
    return found;
}

// Reports under the name of another method; support knows its failures by it.
bool MapDataClass::TestExistsSurOnMag(const QString& ItemCode) {
    bool found = false;
    trap("GetLocationPercent", [&] {
        const QString code = SqlText(ItemCode);
        QString sql =
            QStringLiteral(" select Top 1 1 from kolv_mag_Location_Item(nolock)  where ItemCode = ") + code;
        if (m_places == MaterialPlaces::LocationsAndGroups)
            sql += QStringLiteral("  UNION ALL ") + kGroupMember + code;
        openRead(sql);
        found = !Recordset.Eof();
    });
    return found;
}

bool MapDataClass::TestExistsSurOnMagGroup(const QString& ItemCode) {
    bool found = false;
    trap("TestExistsSurOnMagGroup", [&] {
        openRead(kGroupMember + SqlText(ItemCode));
        found = !Recordset.Eof();
    });
    return found;
}

bool MapDataClass::GetIconStandName(QStringList& ranks, QStringList& stands, QStringList& icons) {
    bool done = false;
    ranks = stands = icons = QStringList();
    trap("GetIconStandName", [&] {
        openRead(QStringLiteral("select Rank,Stand,StandIcon from kolv_mag_Stand order by Rank,Stand"));
        for (; !Recordset.Eof(); Recordset.MoveNext()) {
            ranks.append(text("Rank", QStringLiteral("0")));
            stands.append(text("Stand", QStringLiteral("0")));
            icons.append(text("StandIcon"));
        }
        done = true;
    });
    return done;
}

bool MapDataClass::GetIconLoactionNameItem(QStringList& names, QStringList& percents, QStringList& items,
                                           QStringList& groups, qint16 mode) {
    bool done = false;
    names = percents = items = groups = QStringList();
    if (mode != 0 && mode != 1)
        return false;
    trap("GetIconLoactionNameItem", [&] {
        openRead(mode == 0 ? kIconNamesOfItems : kIconNamesOfGroups);
        for (; !Recordset.Eof(); Recordset.MoveNext()) {
            names.append(text("LocationName"));
            percents.append(text("LocationPercent", QStringLiteral("0")));
            items.append(text("ItemCode"));
            groups.append(text("GroupSur", QStringLiteral("0")));
        }
        done = true;
    });
    return done;
}

bool MapDataClass::SaveLocalizationIDTab(const QString& names1, const QString& names2, const QString& names3,
                                         QString& message) {
    return callProcedure(
        "SaveLocalizationIDTab", QStringLiteral("kolv_mag_SaveLocationIDTab"),
        {{"@LocationName_1", names1}, {"@LocationName_2", names2}, {"@LocationName_3", names3}}, message);
}

bool MapDataClass::SaveLocalizationID(qint16 Rank, qint16 Stand, qint16 Shelf, qint16 Location,
                                      const QString& name, QString& message) {
    return callProcedure("SaveLocalizationID", QStringLiteral("kolv_mag_SaveLocationID"),
                         {{"@Rank", int{Rank}},
                          {"@Stand", int{Stand}},
                          {"@Shelf", int{Shelf}},
                          {"@Location", int{Location}},
                          // The procedure spells it so.
                          {"@LolcationID", name}},
                         message);
}

}  // namespace regalon
