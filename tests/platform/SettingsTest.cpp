#include "platform/CodePage.h"
#include "platform/CommandLine.h"
#include "platform/Settings.h"
#include "platform/UserSettings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace regalon;

namespace {

Settings loaded(const QByteArray& text) {
    const QString name = Settings::defaultFile();
    QDir().mkpath(QFileInfo(name).path());
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
    file.close();
    return Settings::load();
}

TEST(Settings, LieInTheConfigurationFolderOfTheUser) {
    EXPECT_EQ(Settings::defaultFile(),
              qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/Kolvestra/Regalon.conf"));
}

TEST(Settings, AMissingFileGivesWorkingDefaults) {
    const Settings settings = Settings::load(QStringLiteral("/nowhere/Regalon.conf"));
    EXPECT_EQ(settings.OdbcDriver, QStringLiteral("FreeTDS"));
    EXPECT_EQ(settings.OdbcServerPort, Settings::ServerPort::Split);
    EXPECT_EQ(settings.OdbcDefaultPort, 1433);
    EXPECT_EQ(settings.CodePageName, QStringLiteral("windows-1250"));
    EXPECT_EQ(settings.Regional.Locale, QStringLiteral("pl_PL"));
    EXPECT_EQ(settings.Regional.Decimal, QChar(u','));
    EXPECT_TRUE(settings.Problems.isEmpty());
}

TEST(Settings, EveryKeyIsRead) {
    const Settings settings = loaded(R"(# comment
; comment
[odbc]
driver = ODBC Driver 18 for SQL Server
Keywords = "Encrypt=no;LANGUAGE=polski"
ServerPort = Keep
DefaultPort = 0

[Text]
CodePage=ISO-8859-2
RegionalFormat=en_US
[Drives]
c=/srv/c
D:=/srv/d
[Shares]
\\SRV1\Dane=/mnt/dane
//srv2/x = /mnt/x
[Files]
DsnFolder=C:\Dsn
)");
    EXPECT_TRUE(settings.Problems.isEmpty()) << settings.Problems.join(u'\n').toStdString();
    EXPECT_EQ(settings.OdbcDriver, QStringLiteral("ODBC Driver 18 for SQL Server"));
    EXPECT_EQ(settings.OdbcKeywords, QStringLiteral("Encrypt=no;LANGUAGE=polski"));
    EXPECT_EQ(settings.OdbcServerPort, Settings::ServerPort::Keep);
    EXPECT_EQ(settings.OdbcDefaultPort, 0);
    EXPECT_EQ(settings.CodePageName, QStringLiteral("ISO-8859-2"));
    EXPECT_EQ(settings.Regional.Decimal, QChar(u'.'));
    EXPECT_EQ(settings.PathMapping.DriveC, QStringLiteral("/srv/c"));
    EXPECT_EQ(settings.PathMapping.Drives.value(u'D'), QStringLiteral("/srv/d"));
    EXPECT_EQ(settings.PathMapping.Shares.value(QStringLiteral("srv1\\dane")), QStringLiteral("/mnt/dane"));
    EXPECT_EQ(settings.PathMapping.Shares.value(QStringLiteral("srv2\\x")), QStringLiteral("/mnt/x"));
    EXPECT_EQ(settings.DsnFolder, QStringLiteral("C:\\Dsn"));
}

TEST(Settings, EachBadValueIsReportedWithItsKeyAndFallsBack) {
    const Settings settings = loaded(R"([Odbc]
Driver=
Keywords=nonsense
ServerPort=sideways
DefaultPort=70000
[Text]
CodePage=utf-8
RegionalFormat=klingon
[Drives]
D=relative/folder
DD=/srv
[Shares]
\\onlyserver=/mnt
[Files]
Other=1
a line without a sign
)");
    const QStringList keys{QStringLiteral("[Odbc] Driver"),
                           QStringLiteral("[Odbc] Keywords"),
                           QStringLiteral("[Odbc] ServerPort"),
                           QStringLiteral("[Odbc] DefaultPort"),
                           QStringLiteral("[Text] CodePage"),
                           QStringLiteral("[Text] RegionalFormat"),
                           QStringLiteral("[Drives] D:"),
                           QStringLiteral("[Drives] DD:"),
                           QStringLiteral("[Shares] \\\\onlyserver"),
                           QStringLiteral("[Files] Other"),
                           QStringLiteral("wiersz 16")};
    ASSERT_EQ(settings.Problems.size(), keys.size()) << settings.Problems.join(u'\n').toStdString();
    for (qsizetype i = 0; i < keys.size(); ++i)
        EXPECT_TRUE(settings.Problems[i].startsWith(keys[i])) << settings.Problems[i].toStdString();
    const Settings defaults;
    EXPECT_EQ(settings.OdbcDriver, defaults.OdbcDriver);
    EXPECT_EQ(settings.OdbcKeywords, defaults.OdbcKeywords);
    EXPECT_EQ(settings.OdbcServerPort, defaults.OdbcServerPort);
    EXPECT_EQ(settings.OdbcDefaultPort, defaults.OdbcDefaultPort);
    EXPECT_EQ(settings.CodePageName, defaults.CodePageName);
    EXPECT_EQ(settings.Regional.Locale, defaults.Regional.Locale);
    EXPECT_TRUE(settings.PathMapping.Drives.isEmpty());
    EXPECT_TRUE(settings.PathMapping.Shares.isEmpty());
}

TEST(Settings, AnotherDriverDoesNotGetTheKeywordsOfFreeTds) {
    const Settings settings = loaded("[Odbc]\nDriver=ODBC Driver 17 for SQL Server\n");
    EXPECT_EQ(settings.OdbcKeywords, QString());
    EXPECT_EQ(settings.OdbcServerPort, Settings::ServerPort::Keep);
}

TEST(Settings, AMessageNamesTheValueThatTheDriverLeavesInUse) {
    const QByteArray bad = "Keywords=nonsense\nServerPort=sideways\n";
    const QStringList ofFreeTds = loaded("[Odbc]\n" + bad).Problems;
    EXPECT_EQ(ofFreeTds,
              QStringList({QStringLiteral("[Odbc] Keywords: niepoprawna wartość \"nonsense\", w użyciu "
                                          "jest \"TDS_Version=7.4;ClientCharset=UTF-8\"."),
                           QStringLiteral("[Odbc] ServerPort: niepoprawna wartość \"sideways\", w "
                                          "użyciu jest \"split\".")}));
    const QStringList ofAnother{
        QStringLiteral("[Odbc] Keywords: niepoprawna wartość \"nonsense\", wpis pominięty."),
        QStringLiteral("[Odbc] ServerPort: niepoprawna wartość \"sideways\", w użyciu jest \"keep\".")};
    const QByteArray driver = "Driver=ODBC Driver 17 for SQL Server\n";
    EXPECT_EQ(loaded("[Odbc]\n" + driver + bad).Problems, ofAnother);
    EXPECT_EQ(loaded("[Odbc]\n" + bad + driver).Problems, ofAnother);
}

TEST(Settings, AMessageNamesTheValueThatAnotherLineLeavesInUse) {
    const Settings settings = loaded(
        "[Odbc]\nServerPort=sideways\nServerPort=keep\n[Drives]\nD=relative\nD=/srv/d\nC=relative\nC=/srv/c\n"
        "[Shares]\n\\\\srv\\x=relative\n\\\\SRV\\x=/mnt/x\n");
    ASSERT_EQ(settings.Problems.size(), 4);
    const QStringList inUse{QStringLiteral("keep"), QStringLiteral("/srv/d"), QStringLiteral("/srv/c"),
                            QStringLiteral("/mnt/x")};
    for (qsizetype i = 0; i < inUse.size(); ++i)
        EXPECT_TRUE(settings.Problems[i].endsWith(QStringLiteral(", w użyciu jest \"") + inUse[i] +
                                                  QStringLiteral("\".")))
            << settings.Problems[i].toStdString();
}

TEST(Settings, AFolderOfDataSourceFilesThatCannotBeUsedIsReported) {
    const auto folderOf = [](const QString& value, const QByteArray& more = {}) {
        return loaded("[Files]\nDsnFolder=" + value.toUtf8() + "\n" + more);
    };
    const QString longest = QStringLiteral("C:\\") + QString(252, u'ż');
    for (const QString& good :
         {QStringLiteral("C:\\Dsn"), QStringLiteral("d:/Dsn"), QStringLiteral("\\\\srv\\dane"),
          QStringLiteral("\\Dsn"), QStringLiteral("/srv/dsn?"), QString(), longest}) {
        const Settings settings = folderOf(good);
        EXPECT_TRUE(settings.Problems.isEmpty()) << settings.Problems.join(u'\n').toStdString();
        EXPECT_EQ(settings.DsnFolder, good);
    }
    const QString problem = QStringLiteral("[Files] DsnFolder: niepoprawna wartość \"%1\", wpis pominięty.");
    for (const QString& bad : {QString(longest + u'x'), QStringLiteral("Dsn"), QStringLiteral("..\\Dsn"),
                               QStringLiteral("ż:\\Dsn"), QStringLiteral("C:\\Дсн")}) {
        const Settings settings = folderOf(bad);
        EXPECT_EQ(settings.Problems, QStringList(problem.arg(bad)));
        EXPECT_EQ(settings.DsnFolder, QString());
    }
    // The code page may stand behind it.
    EXPECT_EQ(folderOf(QStringLiteral("C:\\Дсн"), "[Text]\nCodePage=windows-1251\n").DsnFolder,
              QStringLiteral("C:\\Дсн"));
    EXPECT_EQ(folderOf(QStringLiteral("C:\\Żółw"), "[Text]\nCodePage=windows-1251\n").Problems.size(), 1);
    EXPECT_TRUE(folderOf(QStringLiteral("Dsn"), "DsnFolder=C:\\Dsn\n")
                    .Problems.value(0)
                    .endsWith(QStringLiteral(", w użyciu jest \"C:\\Dsn\".")));
}

TEST(Settings, GarbageIsReportedAndHarmless) {
    QByteArray garbage;
    for (int i = 0; i < 4000; ++i)
        garbage.append(static_cast<char>((i * 7919) ^ (i >> 3)));
    const Settings settings = loaded(garbage);
    EXPECT_FALSE(settings.Problems.isEmpty());
    EXPECT_EQ(settings.OdbcDriver, QStringLiteral("FreeTDS"));
    const Settings huge = loaded(QByteArray(3 << 20, 'x'));
    EXPECT_EQ(huge.Problems.size(), 1);
}

TEST(Settings, ThePrinterOfLabelsHasAFolderAndATime) {
    const Settings settings = loaded("[labels]\nLibreOffice=/opt/biuro/program\nTimeLimit=90\n");
    EXPECT_TRUE(settings.Problems.isEmpty());
    EXPECT_EQ(settings.LabelPrinter.OfficeFolder, QStringLiteral("/opt/biuro/program"));
    EXPECT_EQ(settings.LabelPrinter.TimeLimit, 90);

    const Settings bad = loaded("[Labels]\nLibreOffice=biuro\nTimeLimit=0\nPrinter=x\n");
    EXPECT_EQ(bad.Problems.size(), 3);
    EXPECT_EQ(bad.LabelPrinter.OfficeFolder, QString());
    EXPECT_EQ(bad.LabelPrinter.TimeLimit, 60);
}

TEST(Settings, ApplyPutsThemIntoUse) {
    loaded("[Text]\nCodePage=windows-1252\nRegionalFormat=en_US\n[Drives]\nC=/srv/c\n").apply();
    EXPECT_EQ(CodePage::name(), QStringLiteral("windows-1252"));
    EXPECT_EQ(NumberText(1.5), QStringLiteral("1.5"));
    EXPECT_EQ(Paths::toFile(QStringLiteral("C:\\a")), QStringLiteral("/srv/c/a"));
    Settings().apply();
    EXPECT_EQ(NumberText(1.5), QStringLiteral("1,5"));
}

TEST(UserSettings, AreKeptByApplicationSectionAndKey) {
    const QString app = QStringLiteral("Kolvestra");
    const QString login = QStringLiteral("Login");
    EXPECT_EQ(GetSetting(app, login, QStringLiteral("strLang"), QStringLiteral("none")),
              QStringLiteral("none"));
    SaveSetting(app, login, QStringLiteral("strLang"), QStringLiteral("UK"));
    EXPECT_EQ(GetSetting(app, login, QStringLiteral("strLang")), QStringLiteral("UK"));
    EXPECT_EQ(GetSetting(app, QStringLiteral("Other"), QStringLiteral("strLang")), QString());
    EXPECT_TRUE(
        QFile::exists(qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/Kolvestra/Kolvestra.ini")));
}

TEST(CommandLine, ArgumentsAreJoinedByOneBlank) {
    EXPECT_EQ(CommandLine::join({QStringLiteral("-dir/connect.txt"), QStringLiteral("-1")}),
              QStringLiteral("-dir/connect.txt -1"));
    EXPECT_EQ(CommandLine::join({}), QString());
}

}  // namespace
