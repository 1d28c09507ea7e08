#include "views/clsMagWatchBarCodeLoc.h"

#include "common/modSQL.h"
#include "map/LocationSql.h"
#include "platform/Convert.h"

namespace regalon {

namespace {

const QString kNoMaterial = QStringLiteral("BRAK");

}  // namespace

clsMagWatchBarCodeLoc::clsMagWatchBarCodeLoc(AppContext& context)
    : MapDataClass(context, QStringLiteral("clsMagWatchBarCodeLoc"), MaterialPlaces::LocationsAndGroups) {}

qint32 clsMagWatchBarCodeLoc::wholeNumber(QAnyStringView column) const {
    return ToInt32(NullToValue(Recordset.Value(column), 0));
}

bool clsMagWatchBarCodeLoc::isError() const {
    return number("Error") > 0;
}

bool clsMagWatchBarCodeLoc::GetParamLocalizationProcedure(const LocationAddress& address,
                                                          BarCodeFigures& figures) {
    bool answered = false;
    const bool done = trap("GetParamLocalizationProcedure", [&] {
        openRead(QStringLiteral("exec Kolv_mag_Param_Location_BarCode ") + locationArguments(address));
        if (Recordset.Eof()) {
            answered = true;
            return;
        }
        figures = {.ItemCode = text("ItemCode", kNoMaterial),
                   .ItemName = text("ItemName"),
                   .GroupCode = number("GroupCode"),
                   .GroupName = text("GroupName"),
                   .Quantity = fraction("Quantity"),
                   .QuantityPer = fraction("QuantityPer"),
                   .CodeActive = wholeNumber("CodeActive"),
                   .CodeGlobal = wholeNumber("CodeGlobal"),
                   .QuantityPerCalculate = fraction("QuantityPerCalculate")};
        answered = !isError();
    });
    if (!done) {
        figures = {};
        figures.ItemCode = kNoMaterial;
    }
    return answered;
}

BarCodeAnswer clsMagWatchBarCodeLoc::GetParamBarCodeProcedure(const QString& code, BarCodePlace& place) {
    BarCodeAnswer answer = BarCodeAnswer::Failed;
    const bool done = trap("GetParamBarCodeProcedure", [&] {
        // As a text, so that leading zeros stay.
        openRead(QStringLiteral("exec Kolv_mag_Param_BarCode ") + SqlText(code));
        if (Recordset.Eof()) {
            answer = BarCodeAnswer::Known;
            return;
        }
        place = {
            .Address = {number("Rank"), number("Stand"), number("Shelf"), number("Location")},
            .ItemCode = text("ItemCode"),
            .ItemName = text("ItemName"),
            .NumberCode = wholeNumber("NumberCode"),
        };
        answer = isError() ? BarCodeAnswer::Unknown : BarCodeAnswer::Known;
    });
    if (!done)
        place = {};
    return answer;
}

}  // namespace regalon
