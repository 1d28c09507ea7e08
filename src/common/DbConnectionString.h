#pragma once

#include <QString>

namespace regalon {

struct Settings;

/// What a connection string of the system says.
struct DbTarget {
    QString server;    ///< "host", "host,port", "host:port" or "host\instance"
    QString database;  ///< empty: the login's default
    QString user;
    QString password;
};

/// Reads the OLE DB form (Provider, Data Source, Initial Catalog, User ID, Password) or the ODBC form
/// (driver, server, database, uid, pwd); a text with a driver and no provider before it is of the ODBC form.
/// Keys in any letter case and order; unknown ones are ignored. Values lose the blanks at their ends, and may
/// stand in quotation marks in the OLE DB form and in braces in the ODBC form.
DbTarget parseConnectionString(const QString& text);

/// The DSN-less connection string for the driver of the settings. A server name without a port gets the
/// default port, unless it names an instance. An empty server, "." and "(local)" mean this machine. Throws
/// WrongValueType for a value that the driver cannot be told.
QString driverConnectionString(const DbTarget& target, const Settings& settings);

}  // namespace regalon
