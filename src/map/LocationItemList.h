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

/// Runs both phases, fills the list with the rows and a running number, and sorts by the text of that number.
/// A failing statement is reported by the class or module that ran it; what is thrown is for the caller's own
/// handler.
void readLocationItems(AppContext& context, DataClass& data, ListView& list, const PhaseText& text,
                       qint16 lpWidth);

/// The same for the windows that only look, and gives the rows their icons.
void fillLocationItems(AppContext& context, DataClass& data, ListView& list, const PhaseText& text,
                       qint16 lpWidth);

/// Text of a row in the column so many from the end: the last columns of a procedure's result are the
/// client's, what comes before them is the database's choice. Raises 380 for a list with fewer columns.
[[nodiscard]] QString textFromEnd(const ListView& list, const ListItem& row, int columns);

/// Kind of a row: "A" belongs on the location, "B" is a stranger there. It is the visible column before the
/// last.
[[nodiscard]] QString rowKind(const ListView& list, const ListItem& row);

}  // namespace regalon
