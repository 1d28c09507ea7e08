#include "stock/clsMagWatchShiftLoc.h"

#include "common/modSQL.h"

namespace regalon {

clsMagWatchShiftLoc::clsMagWatchShiftLoc(AppContext& context)
    : Staging(context, QStringLiteral("clsMagWatchShiftLoc"), MaterialPlaces::Locations) {}

bool clsMagWatchShiftLoc::AddBarCodeShiftOnTemp(const QString& ItemCode, const LocationAddress& source,
                                                qint16 UserSign, const QString& DeleteLine,
                                                const QString& Aplication, const QString& Operation,
                                                QString& Message) {
    return callProcedure("AddBarCodeShiftOnTemp", QStringLiteral("kolv_mag_BarCode_Shift_Tmp"),
                         {{"@ItemCode", ItemCode},
                          {"@Rank", int{source.Rank}},
                          {"@Stand", int{source.Stand}},
                          {"@Shelf", int{source.Shelf}},
                          {"@Location", int{source.Location}},
                          {"@UserSign", int{UserSign}},
                          {"@Aplication", Aplication},
                          {"@DeleteLine", DeleteLine},
                          {"@Operation", Operation}},
                         Message);
}

bool clsMagWatchShiftLoc::DeleteBarCodeShift(const QString& BarCode, qint16 UserSign,
                                             const QString& Aplication, const QString& Delete,
                                             const QString& Operation) {
    return callProcedure("DeleteBarCodeShift", QStringLiteral("kolv_mag_Shift_Location_BarCode_Status"),
                         {{"@BarCode", BarCode},
                          {"@UserSign", int{UserSign}},
                          {"@Aplication", Aplication},
                          {"@Delete", Delete},
                          {"@Operation", Operation}});
}

qint16 clsMagWatchShiftLoc::GetCountChoseBarCodeOnShift(qint16 UserSign, const QString& Operation) {
    qint16 count = -1;
    trap("GetCountChoseBarCodeOnShift", [&] {
        openRead(
            QStringLiteral(" select Count(*) as Count from Kolv_Mag_BarCode_Input_Sur_tym(nolock)"
                           " where HostName = Host_Name() AND YearCode = Year(getdate()) AND SPID = -@@SPID"
                           " AND LineGrd = -1 AND UserSign = ") +
            SqlNumber(int{UserSign}) + QStringLiteral(" AND Operation = ") + SqlText(Operation));
        count = number("Count");
    });
    return count;
}

// Reports under a name that no routine bears any more; support knows its failures by it.
bool clsMagWatchShiftLoc::ShiftLocationBarCode(const QString& BarCode, const LocationAddress& target,
                                               qint16 UserSign, const QString& Aplication,
                                               const QString& Operation, QString& Message) {
    return callProcedure("ShiftLocationItem", QStringLiteral("kolv_mag_Shift_Location_BarCode"),
                         {{"@BarCode", BarCode},
                          {"@Rank", int{target.Rank}},
                          {"@Stand", int{target.Stand}},
                          {"@Shelf", int{target.Shelf}},
                          {"@Location", int{target.Location}},
                          {"@UserSign", int{UserSign}},
                          {"@Aplication", Aplication},
                          {"@Operation", Operation}},
                         Message);
}

}  // namespace regalon
