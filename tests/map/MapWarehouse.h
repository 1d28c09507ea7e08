#pragma once

#include "common/AppContext.h"
#include "support/LocalWarehouse.h"

#include <QString>
#include <QStringList>

namespace regalon::test {

/// A running warehouse and the program's context on it, as after a successful start.
class MapWarehouse {
public:
    explicit MapWarehouse(LocalWarehouse::Content content);
    ~MapWarehouse();
    MapWarehouse(const MapWarehouse&) = delete;
    MapWarehouse& operator=(const MapWarehouse&) = delete;

    /// Starts the server and connects. False, with why() telling, if that fails.
    bool start();
    QString why() const { return m_why.isEmpty() ? server.why() : m_why; }

    /// Runs statements, each a batch of its own, and forgets their trace.
    bool run(const QStringList& statements);
    /// Adds a stand, and locations to its shelves: one digit a shelf, from the bottom.
    bool addStand(int rank, int stand, int shelfCount, const QString& locations, int left = 3000,
                  int top = 4000, const QString& icon = QString());
    /// One value of the database, as text; "NULL" for NULL.
    QString value(const QString& sql);

    /// Texts of the traced batches, and the values of each traced call of a procedure in the order of its
    /// parameters. Statements of value() are left out.
    QStringList batches() const;
    QList<QStringList> calls(const QString& procedure) const;

    /// Gives the warehouse an icon folder of its own with the common stand icon and the first looks, so that
    /// a test can break files in it.
    bool useOwnIcons();
    /// Path on this machine of a file of that folder.
    QString ownIcon(const QString& name) const;

    LocalWarehouse server;
    AppContext context;

private:
    QString m_why;
};

/// Text of a form B message of a run-time error as the platform raises it.
QString windowMessage(qint32 number);

}  // namespace regalon::test
