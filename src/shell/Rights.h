#pragma once

#include "common/DbRecordset.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace regalon {

struct AppContext;

/// What the rights tables say of users. Nothing here reports: a failure is an answer, and the main window
/// leaves its menus alone.
class Rights {
public:
    explicit Rights(AppContext& context) : m_context(context) {}

    /// The rights string of a window: the user's values, a character for each right, in the order of the
    /// window's rows. A right that the user's list lacks is left out and one that stands there twice comes
    /// twice, so those behind it shift; the keepers of the data hold the lists complete. "" for a window
    /// without rows, an unknown user, and after any failure.
    QString GetRights(const QString& strFormName, qint16 intUserSign);

    /// Position of a right of the window that was asked last: its place among the window's rows, from 1; 0
    /// when no row has the number.
    qint32 positionOf(qint16 number) const;

private:
    /// The two lists of a user; the values stand at the places of the numbers.
    struct User {
        QStringList numbers;
        QStringList values;
    };

    QStringList readWindow(const QString& strFormName);
    User readUser(qint16 intUserSign);
    QString rightsOf(const QStringList& window, const User& user);

    AppContext& m_context;
    /// One for all reads, as in a data class.
    DbRecordset m_recordset;
    /// Numbers of the rights of the window that was asked last, in the order of its rows.
    QList<qint16> m_numbers;
};

/// True when the character at the position, counted from 1, is a digit above 0; false behind the end of the
/// string. Raises 13 for a character that is no number, and 5 for a position below 1.
bool HasRight(const QString& strRights, qint32 intPosition);

}  // namespace regalon
