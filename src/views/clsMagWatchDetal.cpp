#include "views/clsMagWatchDetal.h"

#include "common/modSQL.h"
#include "map/LocationSql.h"

namespace regalon {

// The statement texts are part of the contract with the database and go out as they stand, with their blanks
// and the places where (nolock) is missing.

clsMagWatchDetal::clsMagWatchDetal(AppContext& context)
    : DataClass(context, QStringLiteral("clsMagWatchDetal")) {}

/// Opens the text and hands the first row's values, as `read` makes them, to the output.
template <typename Output, typename Read>
bool clsMagWatchDetal::readRow(QAnyStringView routine, const QString& sql, Output& output, Read read) {
    bool found = false;
    const bool done = trap(routine, [&] {
        openRead(sql);
        if (Recordset.Eof())
            return;
        output = read();
        found = true;
    });
    if (!done)
        output = Output();
    return found;
}

bool clsMagWatchDetal::GetParamLocalization(const LocationAddress& address, LocationFigures& figures) {
    return readRow("GetParamLocalization",
                   QStringLiteral(" exec Kolv_mag_Param_Location ") + locationArguments(address), figures,
                   [this] {
                       return LocationFigures{.LocationPercent = number("LocationPercent"),
                                              .QuantityLocation = fraction("QuantityLocation"),
                                              .QuantityBufor = fraction("QuantityBufor"),
                                              .QuantityPer = fraction("QuantityPer")};
                   });
}

bool clsMagWatchDetal::GetParamLocalizationItem(const LocationAddress& address, LocationItemParams& item) {
    return readRow("GetParamLocalizationItem",
                   QStringLiteral("select ItemCode,ItemName,GroupSur,Height_int,Width_int,Depth_int,"
                                  "Weight_int,Picture_pic,Description_char,StatLocation_cmb"
                                  " from kolv_mag_Location_Item(nolock)  where ") +
                       locationCondition(address),
                   item, [this] {
                       return LocationItemParams{.ItemCode = text("ItemCode"),
                                                 .ItemName = text("ItemName"),
                                                 .GroupSur = number("GroupSur"),
                                                 .Height_int = number("Height_int"),
                                                 .Width_int = number("Width_int"),
                                                 .Depth_int = number("Depth_int"),
                                                 .Weight_int = number("Weight_int"),
                                                 .Picture_pic = text("Picture_pic"),
                                                 .Description_char = text("Description_char"),
                                                 .StatLocation_cmb = number("StatLocation_cmb")};
                   });
}

bool clsMagWatchDetal::GetParamLocalizationStatic(const LocationAddress& address, const QString& column,
                                                  QString& value) {
    return readRow("GetParamLocalizationStatic",
                   QStringLiteral("select ") + column +
                       QStringLiteral(" from kolv_mag_Location_Item where ") + locationCondition(address),
                   value, [&] { return text(column); });
}

bool clsMagWatchDetal::GetParamStand(qint16 Rank, qint16 Stand, QString& StandDescription) {
    return readRow("GetParamStand",
                   QStringLiteral("select StandDescription from kolv_mag_Stand(nolock) Where Rank = ") +
                       SqlNumber(int{Rank}) + QStringLiteral(" And Stand = ") + SqlNumber(int{Stand}),
                   StandDescription, [this] { return text("StandDescription"); });
}

QString clsMagWatchDetal::GetGroupName(qint16 GroupSur) {
    const QString none = QStringLiteral("Brak przypisania");
    QString name = none;
    const bool done = trap("GetGroupName", [&] {
        openRead(
            QStringLiteral(" select GroupSurName from kolv_mag_Location_Group(nolock) where GroupSur = ") +
            SqlNumber(int{GroupSur}));
        if (!Recordset.Eof())
            name = text("GroupSurName", none);
    });
    return done ? name : QStringLiteral("Error");
}

}  // namespace regalon
