#pragma once

#include "map/LocationAddress.h"

#include <QString>
#include <QtGlobal>

#include <functional>

namespace regalon {

struct AppContext;
class DataClass;
class ListItem;
class ListView;

/// The texts of a procedure that lists the materials of a location, by its phase: 0 prepares, 1 answers the
/// rows. Without an operation the procedure takes seven arguments, with one eight.
using PhaseText = std::function<QString(int phase)>;
[[nodiscard]] PhaseText locationItemText(const AppContext& context, const QString& procedure,
                                         const LocationAddress& address, const QString& aplication,
                                         const QString& operation = QString());

/// Small icons of the rows by their kind: "A" belongs on the location, "B" is a stranger there.
struct KindIcons {
    int kindA = 42;
    int kindB = 40;
};

/// Runs both phases, fills the list with the rows and a running number, sorts by that number and gives the
/// rows their icons. A failing statement is reported by the class or module that ran it; what is thrown is
/// for the caller's own handler.
void fillLocationItems(AppContext& context, DataClass& data, ListView& list, const PhaseText& text,
                       qint16 lpWidth, const KindIcons& icons = {});

/// Kind of a row: the visible column before the last.
[[nodiscard]] QString rowKind(const ListView& list, const ListItem& row);

}  // namespace regalon
