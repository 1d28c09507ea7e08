// The connection test against a real server: each message by its real cause.
#include "common/DbErrors.h"
#include "common/DbRecordset.h"
#include "shell/ConnectionFile.h"
#include "shell/ShellFixture.h"
#include "shell/modConnection.h"

#include <QFile>

namespace regalon::test {

using namespace Qt::StringLiterals;

namespace {

const QString file = QStringLiteral("C:\\Regalon\\connect.txt");
const QString noServerText = QStringLiteral(
    "Serwer nie jest dostępny.\r\nNależy sprawdzić czy serwer został uruchomiony lub czy masz dostęp do "
    "zasobu "
    "sieciowego Kolvestra.");

// Nobody listens on port 1.
const QString elsewhere = u";Data Source=127.0.0.1,1;Initial Catalog=master"_s;

class Login : public WarehouseFixture {
protected:
    bool logIn(const ConnectionSettings& settings) {
        ConnectionFile::write(file, settings);
        return logIn();
    }
    /// With the settings of the server but for one.
    bool logInWith(QString ConnectionSettings::*setting, const QString& value) {
        ConnectionSettings settings = settingsOf(warehouse);
        settings.*setting = value;
        return logIn(settings);
    }
    bool logIn() {
        context.ConnectionFilePath = file;
        return TestConnection(context);
    }
    qint32 open(const QString& server, const QString& password, ErrorRecord& error) {
        return OpenConnections(context, server, LocalWarehouse::database(), LocalWarehouse::login(), password,
                               error);
    }
    QString databaseInUse() const {
        DbRecordset rows;
        rows.Open(u"select db_name()"_s, *context.ConnMain);
        return rows.Value(0).toString();
    }
    void expectNoServer() {
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Text, noServerText);
        EXPECT_EQ(messages.last().Title, QStringLiteral("Błąd logowania"));
        EXPECT_EQ(messages.last().Flags, 48);
        expectNoConnection();
    }
    void expectRefused() {
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Text,
                  QStringLiteral("Podany login jest nieprawidłowy lub serwer jest nie dostępny."));
        EXPECT_EQ(messages.last().Title, QStringLiteral("Logowanie..."));
        EXPECT_EQ(messages.last().Flags, 48);
        expectNoConnection();
    }
    void expectNoConnection() {
        EXPECT_EQ(context.ConnMain, nullptr);
        EXPECT_EQ(context.ConnClient, nullptr);
    }
};

TEST_F(Login, OpensBothConnections) {
    EXPECT_TRUE(logIn());
    EXPECT_EQ(messages.count(), 0);
    ASSERT_NE(context.ConnMain, nullptr);
    ASSERT_NE(context.ConnClient, nullptr);
    EXPECT_EQ(context.ConnMain->State(), 1);
    EXPECT_EQ(context.ConnClient->State(), 1);
    EXPECT_EQ(context.ConnMain->ConnectionTimeout(), 30);
    EXPECT_EQ(context.ConnClient->ConnectionTimeout(), 30);
    EXPECT_EQ(context.ConnMain->ConnectionString(),
              QStringLiteral("Provider=SQLOLEDB.1;Password=Magazyn-2024;Persist Security Info=False;User ID= "
                             "regalon;Initial Catalog= MAGAZYN;Data Source=") +
                  warehouse.server());
    EXPECT_EQ(context.ConnClient->ConnectionString(), context.ConnMain->ConnectionString());
}

TEST_F(Login, WithoutAServerSaysThatTheServerIsNotThere) {
    warehouse.kill();
    EXPECT_FALSE(logIn());
    expectNoServer();
}

TEST_F(Login, WithAWrongPortSaysThatTheServerIsNotThere) {
    EXPECT_FALSE(logInWith(&ConnectionSettings::Server, QStringLiteral("127.0.0.1,1")));
    expectNoServer();
}

TEST_F(Login, WithAnUnknownServerNameSaysThatTheServerIsNotThere) {
    EXPECT_FALSE(logInWith(&ConnectionSettings::Server, QStringLiteral("no-such-host.invalid")));
    expectNoServer();
}

TEST_F(Login, WithAWrongPasswordSaysThatTheLoginIsWrong) {
    EXPECT_FALSE(logInWith(&ConnectionSettings::Haslo, QStringLiteral("inne")));
    expectRefused();
}

TEST_F(Login, WithAnUnknownUserSaysThatTheLoginIsWrong) {
    EXPECT_FALSE(logInWith(&ConnectionSettings::Login, QStringLiteral("nikt")));
    expectRefused();
}

TEST_F(Login, WithoutALoginSaysThatTheLoginIsWrong) {
    EXPECT_FALSE(logInWith(&ConnectionSettings::Login, QString()));
    expectRefused();
}

TEST_F(Login, WithoutALoginAndWithoutAServerSaysThatTheServerIsNotThere) {
    warehouse.kill();
    EXPECT_FALSE(logInWith(&ConnectionSettings::Login, QString()));
    expectNoServer();
}

TEST_F(Login, TakesAPasswordInBracesAsItStands) {
    EXPECT_FALSE(logInWith(&ConnectionSettings::Haslo, u'{' + LocalWarehouse::password() + u'}'));
    expectRefused();
}

TEST_F(Login, WithAnUnknownDatabaseShowsNumberAndTextOfTheServer) {
    EXPECT_FALSE(logInWith(&ConnectionSettings::Baza, QStringLiteral("NIEMA")));
    ASSERT_EQ(messages.count(), 1);
    const MsgBoxRecorder::Message message = messages.last();
    EXPECT_EQ(message.Title, QStringLiteral("frmLogin: Sub cmdOK_Click"));
    EXPECT_EQ(message.Flags, 48);
    EXPECT_TRUE(message.Text.startsWith(QString::number(DbError::Statement) + u' '))
        << qPrintable(message.Text);
    EXPECT_TRUE(message.Text.contains(QStringLiteral("NIEMA"))) << qPrintable(message.Text);
    EXPECT_TRUE(
        message.Text.endsWith(QStringLiteral("\nBłąd wystąpił podczas operacji logowania się do serwera")));
    EXPECT_FALSE(message.Text.contains(u'\r'));
    expectNoConnection();
}

TEST_F(Login, WithAMissingFileSaysThatTheServerIsNotThere) {
    const ClosedDefaultPort nobodyListens;
    ASSERT_TRUE(QFile::remove(inRegalon(QStringLiteral("connect.txt"))));
    EXPECT_FALSE(logIn());
    expectNoServer();
}

// The connection string is put together from the settings as they stand. Of two pieces with one key the later
// one counts, and the server's name comes last.
TEST_F(Login, GoesToItsServerWhateverThePasswordNames) {
    ErrorRecord error;
    EXPECT_EQ(open(warehouse.server(), LocalWarehouse::password() + elsewhere, error), 0)
        << qPrintable(error.Description);
    ASSERT_NE(context.ConnMain, nullptr);
    EXPECT_EQ(databaseInUse(), LocalWarehouse::database());
}

TEST_F(Login, IsRefusedByItsServerForAPasswordWithAQuotationMarkBeforeAnotherServer) {
    ErrorRecord error;
    EXPECT_EQ(open(warehouse.server(), u"x\""_s + elsewhere, error), DbError::Authentication);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Login, TakesAnotherDatabaseFromBehindTheServersName) {
    ErrorRecord error;
    EXPECT_EQ(open(warehouse.server() + u";Initial Catalog=master"_s, LocalWarehouse::password(), error), 0)
        << qPrintable(error.Description);
    ASSERT_NE(context.ConnMain, nullptr);
    EXPECT_EQ(databaseInUse(), u"master"_s);
}

// FreeTDS would read its own server behind the brace.
TEST_F(Login, RefusesAPasswordThatItsDriverWouldEndTooSoon) {
    ErrorRecord error;
    EXPECT_EQ(open(warehouse.server(), u"\"Magazyn-2024};SERVER=127.0.0.1;PORT=1;x={\""_s, error),
              DbError::WrongValueType);
    EXPECT_TRUE(error.Description.contains(u"PWD")) << qPrintable(error.Description);
}

// So no value of a connection file reaches another piece of the connection string.
TEST_F(Login, CutsTheValuesOfTheFileAtTheirSemicolon) {
    ConnectionSettings settings = settingsOf(warehouse);
    settings.Server += u";Initial Catalog=master"_s;
    settings.Haslo += elsewhere;
    ASSERT_TRUE(logIn(settings));
    EXPECT_EQ(databaseInUse(), LocalWarehouse::database());
    EXPECT_FALSE(context.ConnMain->ConnectionString().contains(u"master"));
}

TEST_F(Login, ClosesBothConnections) {
    ASSERT_TRUE(logIn());
    EXPECT_FALSE(CloseConnections(context));
    expectNoConnection();
    EXPECT_FALSE(CloseConnections(context));
}

TEST_F(Login, ClosesBothConnectionsAfterTheServerHasGone) {
    ASSERT_TRUE(logIn());
    warehouse.kill();
    EXPECT_FALSE(CloseConnections(context));
    expectNoConnection();
}

}  // namespace
}  // namespace regalon::test
