#pragma once

#include "map/LocationDataClass.h"
#include "map/StandDefinition.h"

#include <QString>

class QWidget;

namespace regalon {

/// The data class of the layout editor: stands, what is assigned to locations, groups of materials. Each
/// method reports its own failure and then answers false, or 0, with its outputs at their defaults. The
/// methods that call a procedure answer false when it refuses, too, with its reason in message; message stays
/// as it was after a failure.
class clsMagCreate : public LocationDataClass {
public:
    explicit clsMagCreate(AppContext& context);

    /// False and an untouched stand when there is none of this number.
    bool GetStandParame(qint16 Rank, qint16 Stand, StandParameters& stand);
    /// The stored number of shelves; 0 without a stand.
    qint16 GetShelfCountOnStand(qint16 Rank, qint16 Stand);
    /// Number of locations of a shelf.
    qint16 GetLocalizationCount(qint16 Rank, qint16 Stand, qint16 Shelf);
    /// Number of stands of a row, which is the number of its last stand as well.
    qint16 GetStandCount(qint16 Rank);
    /// Pattern of the icon files of a row's stands; "*.ico" for a row without one, and after a failure.
    QString GetIconFamily(qint16 Rank);

    /// Whether the stand could be saved as it is. Changes nothing.
    bool AddBookStandValidate(const StandDefinition& stand, QString& message);
    bool AddBookStandToDB(const StandDefinition& stand, QString& message);
    /// Whether the stand could be removed. Changes nothing.
    bool RemoveBookStandValidate(qint16 Rank, qint16 Stand, QString& message);
    bool RemoveBookStandDB(qint16 Rank, qint16 Stand, QString& message);

    /// A parameter of a location as text, "" for NULL. False and "" when the location has no row. ParamName
    /// is a column's name and goes into the statement as it stands: only names from the view of parameters
    /// are safe.
    bool GetParamLocalizationStatic(const LocationAddress& address, const QString& ParamName, QString& value);
    bool AddSurOnLocalization(const LocationAddress& address, const QString& ItemCode, qint16 GroupSur,
                              qint16 UserSign, QString& message);
    /// ParamType is the ending of the parameter's name. The value of a "pic" goes as the picture, every other
    /// as the value; the one that is not meant goes as an empty text.
    bool SaveLocationParamStatic(const LocationAddress& address, const QString& ParamName,
                                 const QString& Value, const QString& ParamType, QString& message);

    /// Makes a group (GroupCode -1) or renames one.
    bool AddOrRemoveNewGroup(qint16 GroupCode, const QString& NewGroupName, qint16 UserSign,
                             QString& message);
    /// Replaces the members of a group by the codes, which are joined by ",".
    bool AddSurOnGroup(qint16 GroupCode, const QString& ItemCodes, qint16 UserSign, QString& message);
    /// Whether no location uses the group, so that it may be deleted.
    bool ConfirmGroupUse(qint16 GroupSur);
    bool DeleteGroupSur(qint16 GroupSur);

    /// Runs a statement that returns the active template of a user, and shows it on lblRaportName,
    /// txtRaportFile and txtRaportCode of a form, which must have them.
    void SetPrintRaportParam(const QWidget* Form, const QString& Sql);
    /// Printer of a kind of label; "" when the database names none and after a failure.
    QString GetPrintersName(qint32 EtykietCodePrint);

private:
    bool callStand(QAnyStringView routine, const QString& procedure, const char* descriptionParameter,
                   const StandDefinition& stand, QString& message);
    bool callGroup(QAnyStringView routine, const QString& procedure, qint16 GroupSur);
    /// The number in a column of the first row of a statement, 0 without a row and after a failure.
    qint16 readNumber(QAnyStringView routine, const QString& sql, QAnyStringView column);
};

}  // namespace regalon
