#include "stock/Proposals.h"

#include "common/modSQL.h"

namespace regalon {

bool Proposals::LoadParamFormLocationChange(qint16 ID, qint16 IDCodeBar, ProposalLine& line) {
    bool found = false;
    const bool done = trap("LoadParamFormLocationChange", [&] {
        openRead(QStringLiteral(" select A.ItemCode,A.ItemName,B.BarCode,B.Quantity,B.QuantityAdd"
                                " from ##Temp_Prop_Location A(nolock) "
                                " inner join  ##Temp_Prop_Location_BarCode B(nolock)"
                                " ON A.IDCodeBar = B.IDCodeBar  where ID = ") +
                 SqlNumber(int{ID}) + QStringLiteral(" AND A.IDCodeBar = ") + SqlNumber(int{IDCodeBar}));
        if (Recordset.Eof())
            return;
        line = {.ItemCode = text("ItemCode"),
                .ItemName = text("ItemName"),
                .BarCode = text("BarCode"),
                .Quantity = fraction("Quantity"),
                .QuantityAdd = fraction("QuantityAdd")};
        found = true;
    });
    if (!done)
        line = {};
    return found;
}

bool Proposals::ChangeLocationOnAddSur(qint16 UserSign, qint16 ID, qint16 IDCodeBar) {
    return callProcedure("ChangeLocationOnAddSur", QStringLiteral("Kolv_mag_Prop_Location_Change"),
                         {{"@UserSign", int{UserSign}}, {"@ID", int{ID}}, {"@IDCodeBar", int{IDCodeBar}}});
}

}  // namespace regalon
