#include "map/clsMagWatch.h"

#include "common/AppContext.h"
#include "common/modSQL.h"
#include "map/LocationSql.h"
#include "platform/Convert.h"

namespace regalon {

namespace {

// The statement texts are part of the contract with the database and go out as they stand, with their blanks,
// their spelling and the places where (nolock) is missing.
const QString kIconNames = QStringLiteral(
    " select LocationName,LocationIcon,ISNULL(B.StatLocation_cmb,0) as StatusLocation"
    " from kolv_mag_Location A(nolock) "
    " left join kolv_mag_Location_Item B(nolock) ON A.Rank = B.Rank AND A.Stand = B.Stand"
    " AND A.Shelf = B.Shelf AND A.Location = B.Location "
    " order by A.Rank,A.Stand,A.Shelf,A.Location");

}  // namespace

clsMagWatch::clsMagWatch(AppContext& context)
    : MapDataClass(context, QStringLiteral("clsMagWatch"), MaterialPlaces::LocationsAndGroups) {}

bool clsMagWatch::GetParamLocalization(qint16 Rank, qint16 Stand, qint16 Shelf, qint16 Location,
                                       QString& ItemCode, QString& ItemName, qint16& GroupSur,
                                       QString& GroupSurName, qint16& StatLocation_cmb) {
    bool found = false;
    const bool done = trap("GetParamLocalization", [&] {
        openRead(QStringLiteral(" select A.ItemCode,A.ItemName,A.GroupSur,B.GroupSurName,A.StatLocation_cmb"
                                " from kolv_mag_Location_Item A"
                                "  left join kolv_mag_Location_Group B ON A.GroupSur = B.GroupSur"
                                " where ") +
                 locationCondition({Rank, Stand, Shelf, Location}));
        if (Recordset.Eof())
            return;
        ItemCode = text("ItemCode");
        ItemName = text("ItemName");
        GroupSur = number("GroupSur");
        GroupSurName = text("GroupSurName");
        StatLocation_cmb = number("StatLocation_cmb");
        found = true;
    });
    if (!done) {
        ItemCode.clear();
        ItemName.clear();
        GroupSur = 0;
        GroupSurName.clear();
        StatLocation_cmb = 0;
    }
    return found;
}

qint16 clsMagWatch::RefreshQuantityOnLocationIcon(const QString& mode) {
    qint16 status = 0;
    trap("RefreshQuantityOnLocationIcon", [&] {
        bindProcedure(QStringLiteral("Kolv_mag_Refresh_Percent_Location"));
        Command.Parameters().Item("@RefreshLinePercent").setValue(mode);
        Command.Execute();
        status = ToInt16(NullToValue(Command.Parameters().Item(0).Value(), 0));
    });
    return status;
}

bool clsMagWatch::GetIconLoactionName(QStringList& names, QStringList& icons, QStringList& statuses) {
    bool done = false;
    names = icons = statuses = QStringList();
    trap("GetIconLoactionName", [&] {
        openRead(kIconNames);
        // The one read of the whole plan at each refresh: its columns are looked up once, not for every row.
        const auto rows = Recordset.table();
        const qsizetype name = rows->indexOf("LocationName");
        const qsizetype icon = rows->indexOf("LocationIcon");
        const qsizetype status = rows->indexOf("StatusLocation");
        for (qsizetype row = 0; row < rows->rowCount; ++row) {
            names.append(ToText(NullToValue(rows->at(row, name))));
            icons.append(ToText(NullToValue(rows->at(row, icon))));
            statuses.append(ToText(NullToValue(rows->at(row, status), QStringLiteral("0"))));
        }
        done = true;
    });
    return done;
}

}  // namespace regalon
