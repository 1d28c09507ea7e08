#include "map/clsMagCreate.h"

#include "common/AppContext.h"
#include "common/PrintRaport.h"
#include "common/modSQL.h"
#include "map/LocationSql.h"
#include "platform/Convert.h"

namespace regalon {

namespace {

const QString kEveryIcon = QStringLiteral("*.ico");

QString numberText(qint16 value) {
    return SqlNumber(int{value});
}

}  // namespace

clsMagCreate::clsMagCreate(AppContext& context)
    : LocationDataClass(context, QStringLiteral("clsMagCreate")) {}

// The statement texts are part of the contract with the database: their letter case, their blanks and the
// places where (nolock) is missing stay as they are.

bool clsMagCreate::GetStandParame(qint16 Rank, qint16 Stand, StandParameters& stand) {
    bool found = false;
    const bool done = trap("GetStandParame", [&] {
        openRead(QStringLiteral("select StandIcon,StandLeft,StandTop,StandVisable,StandEnable,"
                                "StandFrameArround,StandDescription from kolv_mag_Stand Where Rank = ") +
                 numberText(Rank) + QStringLiteral(" And Stand = ") + numberText(Stand));
        if (Recordset.Eof())
            return;
        const QString off = QStringLiteral("N");
        stand = {.StandIcon = text("StandIcon"),
                 .StandLeft = ToInt32(NullToValue(Recordset.Value("StandLeft"), 0)),
                 .StandTop = ToInt32(NullToValue(Recordset.Value("StandTop"), 0)),
                 .StandVisable = text("StandVisable", off),
                 .StandEnable = text("StandEnable", off),
                 .StandFrameArround = text("StandFrameArround", off),
                 .StandDescription = text("StandDescription")};
        found = true;
    });
    if (!done)
        stand = {};
    return found;
}

qint16 clsMagCreate::readNumber(QAnyStringView routine, const QString& sql, QAnyStringView column) {
    qint16 found = 0;
    trap(routine, [&] {
        openRead(sql);
        if (!Recordset.Eof())
            found = number(column);
    });
    return found;
}

qint16 clsMagCreate::GetShelfCountOnStand(qint16 Rank, qint16 Stand) {
    return readNumber("GetShelfCountOnStand",
                      QStringLiteral("select ShelfCount from kolv_mag_Stand(nolock) where Rank = ") +
                          numberText(Rank) + QStringLiteral(" AND Stand = ") + numberText(Stand),
                      "ShelfCount");
}

// Reports under the name of another method, as GetIconFamily does; support knows their failures by it.
qint16 clsMagCreate::GetLocalizationCount(qint16 Rank, qint16 Stand, qint16 Shelf) {
    return readNumber("AddBookStandToDB",
                      QStringLiteral("select count(*) as Location from kolv_mag_Location where Rank = ") +
                          numberText(Rank) + QStringLiteral(" AND Stand = ") + numberText(Stand) +
                          QStringLiteral(" AND Shelf = ") + numberText(Shelf),
                      "Location");
}

qint16 clsMagCreate::GetStandCount(qint16 Rank) {
    return readNumber(
        "GetStandCount",
        QStringLiteral("select count(*) as CountStand from kolv_mag_Stand(nolock) where Rank = ") +
            numberText(Rank),
        "CountStand");
}

QString clsMagCreate::GetIconFamily(qint16 Rank) {
    QString family = kEveryIcon;
    trap("GetShelfCountOnStand", [&] {
        openRead(QStringLiteral("select RankIconFamily from kolv_mag_Rank(nolock) where Rank = ") +
                 numberText(Rank));
        if (!Recordset.Eof())
            family = text("RankIconFamily", kEveryIcon);
    });
    return family;
}

bool clsMagCreate::callStand(QAnyStringView routine, const QString& procedure,
                             const char* descriptionParameter, const StandDefinition& stand,
                             QString& message) {
    return callProcedure(routine, procedure,
                         {{"@Rank", int{stand.Rank}},
                          {"@Stand", int{stand.Stand}},
                          {"@Shelf", int{stand.Shelf}},
                          {"@StandIcon", stand.StandIcon},
                          {"@Top", stand.Top},
                          {"@Left", stand.Left},
                          {"@Shelf_1", int{stand.Shelf_1}},
                          {"@Shelf_2", int{stand.Shelf_2}},
                          {"@Shelf_3", int{stand.Shelf_3}},
                          {"@Shelf_4", int{stand.Shelf_4}},
                          {"@StandVisable", stand.StandVisable},
                          {"@StandEnable", stand.StandEnable},
                          {"@StandFrameArround", stand.StandFrameArround},
                          {descriptionParameter, stand.StandDescription}},
                         message);
}

// The last parameter is the database's to name, and its two procedures spell it differently.
bool clsMagCreate::AddBookStandValidate(const StandDefinition& stand, QString& message) {
    return callStand("AddBookStandValidate", QStringLiteral("kolv_mag_AddBookstandValidate"),
                     "@StandDescriprion", stand, message);
}

bool clsMagCreate::AddBookStandToDB(const StandDefinition& stand, QString& message) {
    return callStand("AddBookStandToDB", QStringLiteral("kolv_mag_AddBookstand"), "@StandDescription", stand,
                     message);
}

bool clsMagCreate::RemoveBookStandValidate(qint16 Rank, qint16 Stand, QString& message) {
    return callProcedure("RemoveBookStandValidate", QStringLiteral("kolv_mag_RemoveBookstandValidate"),
                         {{"@Rank", int{Rank}}, {"@Stand", int{Stand}}}, message);
}

bool clsMagCreate::RemoveBookStandDB(qint16 Rank, qint16 Stand, QString& message) {
    return callProcedure("RemoveBookStandDB", QStringLiteral("kolv_mag_RemoveBookstand"),
                         {{"@Rank", int{Rank}}, {"@Stand", int{Stand}}}, message);
}

bool clsMagCreate::GetParamLocalizationStatic(const LocationAddress& address, const QString& ParamName,
                                              QString& value) {
    bool found = false;
    value.clear();
    trap("GetParamLocalizationStatic", [&] {
        openRead(QStringLiteral("select ") + ParamName +
                 QStringLiteral(" from kolv_mag_Location_Item where ") + locationCondition(address));
        if (Recordset.Eof())
            return;
        value = ToText(NullToValue(Recordset.Value(0)));
        found = true;
    });
    return found;
}

bool clsMagCreate::AddSurOnLocalization(const LocationAddress& address, const QString& ItemCode,
                                        qint16 GroupSur, qint16 UserSign, QString& message) {
    return callProcedure("AddSurOnLocalization", QStringLiteral("kolv_mag_Save_Sur_Location"),
                         {{"@Rank", int{address.Rank}},
                          {"@Stand", int{address.Stand}},
                          {"@Shelf", int{address.Shelf}},
                          {"@Location", int{address.Location}},
                          {"@ItemCode", ItemCode},
                          {"@GroupSur", int{GroupSur}},
                          {"@UserSign", int{UserSign}}},
                         message);
}

bool clsMagCreate::SaveLocationParamStatic(const LocationAddress& address, const QString& ParamName,
                                           const QString& Value, const QString& ParamType, QString& message) {
    const bool picture = ParamType == u"pic";
    const QString none = QStringLiteral("");
    return callProcedure("SaveLocationParamStatic", QStringLiteral("dbo.kolv_mag_Add_Value_Param"),
                         {{"@Rank", int{address.Rank}},
                          {"@Stand", int{address.Stand}},
                          {"@Shelf", int{address.Shelf}},
                          {"@Location", int{address.Location}},
                          {"@ParamName", ParamName},
                          {picture ? "@ParamImage" : "@ParamValue", Value},
                          {picture ? "@ParamValue" : "@ParamImage", none},
                          {"@ParamType", ParamType}},
                         message);
}

bool clsMagCreate::AddOrRemoveNewGroup(qint16 GroupCode, const QString& NewGroupName, qint16 UserSign,
                                       QString& message) {
    return callProcedure(
        "AddOrRemoveNewGroup", QStringLiteral("kolv_mag_Save_Group_Sur"),
        {{"@GroupCode", int{GroupCode}}, {"@NewGroupName", NewGroupName}, {"@UserSign", int{UserSign}}},
        message);
}

bool clsMagCreate::AddSurOnGroup(qint16 GroupCode, const QString& ItemCodes, qint16 UserSign,
                                 QString& message) {
    return callProcedure(
        "AddSurOnGroup", QStringLiteral("kolv_mag_Add_Sur_On_Group"),
        {{"@GroupCode", int{GroupCode}}, {"@ItemCode", ItemCodes}, {"@UserSign", int{UserSign}}}, message);
}

// The two procedures of a group that is to go have a return value and no message.
bool clsMagCreate::callGroup(QAnyStringView routine, const QString& procedure, qint16 GroupSur) {
    bool accepted = false;
    trap(routine, [&] { accepted = callProcedure(procedure, {{"@GroupSur", int{GroupSur}}}).accepted(); });
    return accepted;
}

bool clsMagCreate::ConfirmGroupUse(qint16 GroupSur) {
    return callGroup("ConfirmGroupUse", QStringLiteral("kolv_mag_ConfirmGroupSur"), GroupSur);
}

bool clsMagCreate::DeleteGroupSur(qint16 GroupSur) {
    return callGroup("DeleteGroupSur", QStringLiteral("kolv_mag_DeleteGroupSur"), GroupSur);
}

void clsMagCreate::SetPrintRaportParam(const QWidget* Form, const QString& Sql) {
    trap("SetPrintRaportParam", [&] { PrintRaport::read(context(), Recordset, Sql).showOn(Form); });
}

QString clsMagCreate::GetPrintersName(qint32 EtykietCodePrint) {
    QString name;
    trap("GetPrintersName", [&] {
        const ProcedureOutcome outcome = callProcedure(QStringLiteral("dbo.Kolv_Get_PrintersName"),
                                                       {{"@EtykietCodePrint", EtykietCodePrint}});
        // Here 0 alone is success.
        if (outcome.returnValue == 0)
            name = outcome.message;
    });
    return name;
}

}  // namespace regalon
