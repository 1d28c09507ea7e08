#pragma once

#include <QString>
#include <QtGlobal>

namespace regalon {

/// A stand as the editor hands it to the database.
struct StandDefinition {
    qint16 Rank = 0;
    qint16 Stand = 0;  ///< -1 for a new one
    qint16 Shelf = 0;  ///< the one shelf whose number of locations counts
    QString StandIcon{};
    qint32 Top = 0;  ///< twips, as Left
    qint32 Left = 0;
    qint16 Shelf_1 = 0;  ///< numbers of locations; 0 for the shelves above Shelf, which does not empty them
    qint16 Shelf_2 = 0;
    qint16 Shelf_3 = 0;
    qint16 Shelf_4 = 0;
    QString StandVisable{};  ///< "Y" or "N", as the next two
    QString StandEnable{};
    QString StandFrameArround{};
    QString StandDescription{};
};

/// What the database tells of a stand.
struct StandParameters {
    QString StandIcon{};
    qint32 StandLeft = 0;
    qint32 StandTop = 0;
    QString StandVisable = QStringLiteral("N");
    QString StandEnable = QStringLiteral("N");
    QString StandFrameArround = QStringLiteral("N");
    QString StandDescription{};
};

}  // namespace regalon
