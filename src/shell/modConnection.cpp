#include "shell/modConnection.h"

#include "common/AppContext.h"
#include "common/DbErrors.h"
#include "platform/MsgBox.h"
#include "shell/ConnectionFile.h"

namespace regalon {

namespace {

constexpr int openState = 1;
constexpr int connectSeconds = 30;

void closeIfOpen(std::unique_ptr<DbConnection>& connection) {
    if (connection && connection->State() == openState) {
        connection->Close();
    }
    connection.reset();
}

/// The blanks behind "User ID=" and "Initial Catalog=" belong to the text.
QString connectionString(const QString& Server, const QString& Baza, const QString& Login,
                         const QString& Haslo) {
    return QStringLiteral("Provider=SQLOLEDB.1;Password=") + Haslo +
           QStringLiteral(";Persist Security Info=False;User ID= ") + Login +
           QStringLiteral(";Initial Catalog= ") + Baza + QStringLiteral(";Data Source=") + Server;
}

void tellFailure(const ErrorRecord& error) {
    switch (error.Number) {
        case DbError::General:
            MsgBox(QStringLiteral(
                       "Serwer nie jest dostępny.\r\nNależy sprawdzić czy serwer został uruchomiony lub "
                       "czy masz dostęp do zasobu sieciowego Kolvestra."),
                   MsgFlag::Exclamation, QStringLiteral("Błąd logowania"));
            break;
        case DbError::Authentication:
            MsgBox(QStringLiteral("Podany login jest nieprawidłowy lub serwer jest nie dostępny."),
                   MsgFlag::Exclamation, QStringLiteral("Logowanie..."));
            break;
        default:
            MsgBox(QString::number(error.Number) + u' ' + error.Description +
                       QStringLiteral("\nBłąd wystąpił podczas operacji logowania się do serwera"),
                   MsgFlag::Exclamation, QStringLiteral("frmLogin: Sub cmdOK_Click"));
    }
}

}  // namespace

void ReadConnectionFile(AppContext& context) {
    ConnectionFile::read(context.ConnectionFilePath, context.Settings);
}

qint32 OpenConnections(AppContext& context, const QString& Server, const QString& Baza, const QString& Login,
                       const QString& Haslo, ErrorRecord& error) {
    error = {};
    try {
        context.ConnMain = std::make_unique<DbConnection>();
        context.ConnClient = std::make_unique<DbConnection>();
        context.ConnMain->setConnectionString(connectionString(Server, Baza, Login, Haslo));
        context.ConnClient->setConnectionString(context.ConnMain->ConnectionString());
        context.ConnMain->setConnectionTimeout(connectSeconds);
        context.ConnClient->setConnectionTimeout(connectSeconds);
        context.ConnMain->Open();
        context.ConnClient->Open();
    } catch (...) {
        error = currentError();
        context.ConnMain.reset();
        context.ConnClient.reset();
    }
    return error.Number;
}

bool CloseConnections(AppContext& context) {
    bool failed = false;
    for (std::unique_ptr<DbConnection>* connection : {&context.ConnMain, &context.ConnClient}) {
        try {
            closeIfOpen(*connection);
        } catch (const RunTimeError&) {
            connection->reset();
            failed = true;
        }
    }
    return failed;
}

bool TestConnection(AppContext& context) {
    ReadConnectionFile(context);
    const ConnectionSettings& settings = context.Settings;
    ErrorRecord error;
    if (OpenConnections(context, settings.Server, settings.Baza, settings.Login, settings.Haslo, error) !=
        0) {
        tellFailure(error);
        return false;
    }
    return true;
}

}  // namespace regalon
