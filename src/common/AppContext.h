#pragma once

#include "common/DbConnection.h"
#include "common/clsError.h"

#include <QString>

#include <memory>

namespace regalon {

/// The strings of the connection file.
struct ConnectionSettings {
    QString Login;
    QString Haslo;
    QString Baza;
    QString Server;
    QString LoginSAP;  ///< read and kept, used by nothing
    QString HasloSAP;  ///< read and kept, used by nothing
};

/// The program-wide state, one record for the whole run. Written at start-up, then only read (Language alone
/// changes with the language menu). Owned by main(); everything else gets it by reference.
struct AppContext {
    /// The connection that every query uses. Null until the connection test ran and after it failed.
    std::unique_ptr<DbConnection> ConnMain;
    /// Opened and closed with ConnMain, otherwise unused.
    std::unique_ptr<DbConnection> ConnClient;
    /// Null until Main() ran: until then form A of the standard handler has nobody to report to and
    /// throws 91.
    std::unique_ptr<clsError> ErrorService;
    /// The user's number in OUSR.UserID, and the value of every UserSign column.
    qint16 UserSign = 1;
    QString ConnectionFilePath;
    QString UserName;  ///< OUSR.User_Code of UserSign
    QString PathFile;
    QString PathBitmapMagSur;  ///< also the icon folder of the plan
    QString PathBitmapPlanProd;
    QString ProgramFolder;
    ConnectionSettings Settings;
    QString Language;  ///< "PL", "UK", "D" or empty
    QString DsnFilePath;
    /// Meant to take the N prefix off text literals. Nothing sets it and nothing reads it: SqlText takes the
    /// choice as an argument, which its callers leave out.
    bool NoNationalPrefix = false;
};

/// The usable ConnMain of a context.
/// Throws RunTimeError 91 when there is none, which is how a window opened after a failed login fails.
DbConnection& mainConnection(AppContext& context);

/// Folder of the plan's icons: that of the site, or "Ikony" beside the program where the site names none.
QString iconFolder(const AppContext& context);

}  // namespace regalon
