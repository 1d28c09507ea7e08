#include "map/LocationDataClass.h"

#include "map/LocationSql.h"

namespace regalon {

bool LocationDataClass::GetParamLocalization(const LocationAddress& address, QString& ItemCode,
                                             QString& ItemName, qint16& GroupSur) {
    bool found = false;
    const bool done = trap("GetParamLocalization", [&] {
        openRead(QStringLiteral("select ItemCode,ItemName,GroupSur from kolv_mag_Location_Item where ") +
                 locationCondition(address));
        if (Recordset.Eof())
            return;
        ItemCode = text("ItemCode");
        ItemName = text("ItemName");
        GroupSur = number("GroupSur");
        found = true;
    });
    if (!done) {
        ItemCode.clear();
        ItemName.clear();
        GroupSur = 0;
    }
    return found;
}

}  // namespace regalon
