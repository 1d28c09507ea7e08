// The editor of the connection file, worked with mouse and keys.
#include "shell/ConnectionFile.h"
#include "shell/ShellFixture.h"
#include "shell/frmZapisParamPlik.h"
#include "support/Events.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <unistd.h>

namespace regalon::test {
namespace {

const QString target = QStringLiteral("C:\\Regalon\\connect.txt");

class ConnectionEditor : public ShellFixture {
protected:
    void open() {
        editor = std::make_unique<frmZapisParamPlik>(context, nullptr);
        showAndWait(editor.get());
    }
    void openOn(const ConnectionSettings& settings) {
        context.ConnectionFilePath = QStringLiteral("C:\\Regalon\\inny.txt");
        ConnectionFile::write(context.ConnectionFilePath, settings);
        open();
    }
    QLineEdit* field(const QString& name) const { return editor->findChild<QLineEdit*>(name); }
    QComboBox* combo() const { return editor->findChild<QComboBox*>(QStringLiteral("cmbBaza")); }
    void press(const QString& button) const { click(editor->findChild<QPushButton*>(button)); }
    void retype(const QString& name, const QString& text) const {
        field(name)->selectAll();
        key(field(name), Qt::Key_Delete);
        type(field(name), text);
    }
    /// Clicks the arrow of the combo and closes the list again.
    void dropDown() const {
        QTest::mouseClick(combo(), Qt::LeftButton, {}, QPoint(combo()->width() - 8, combo()->height() / 2));
        combo()->hidePopup();
    }
    QStringList listed() const {
        QStringList names;
        for (int i = 0; i < combo()->count(); ++i) {
            names.append(combo()->itemText(i));
        }
        return names;
    }
    static ConnectionSettings written() {
        ConnectionSettings settings;
        ConnectionFile::read(target, settings);
        return settings;
    }
    bool targetExists() const { return QFile::exists(inRegalon(QStringLiteral("connect.txt"))); }

    std::unique_ptr<frmZapisParamPlik> editor;
};

TEST_F(ConnectionEditor, HasTheCaptionsOfItsDesign) {
    open();
    const QList<std::pair<QString, QString>> labels = {
        {QStringLiteral("Label3"), QStringLiteral("Plik konfiguracji:")},
        {QStringLiteral("Label1"), QStringLiteral("Nazwa serwera:")},
        {QStringLiteral("Label2"), QStringLiteral("Login")},
        {QStringLiteral("Label4"), QStringLiteral("Hasło")},
        {QStringLiteral("Label5"), QStringLiteral("Baza danych")},
    };
    for (const auto& [name, caption] : labels) {
        EXPECT_EQ(editor->findChild<QLabel*>(name)->text(), caption);
    }
    EXPECT_EQ(editor->findChild<QPushButton*>(QStringLiteral("przOK"))->text(), QStringLiteral("&Zapisz"));
    EXPECT_EQ(editor->findChild<QPushButton*>(QStringLiteral("przAnuluj"))->text(),
              QStringLiteral("&Anuluj"));
    EXPECT_EQ(field(QStringLiteral("txtFileName"))->text(), QStringLiteral("C:\\Regalon"));
    EXPECT_TRUE(editor->findChild<QWidget*>(QStringLiteral("cmdDialog"))->isHidden());
    press(QStringLiteral("cmbDialog"));
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ConnectionEditor, ShowsTheFileOfTheCommandLineAndWritesToTheDefaultOne) {
    openOn(sampleSettings());
    EXPECT_EQ(field(QStringLiteral("txtSerwerName"))->text(), QStringLiteral("SRV1,1433"));
    EXPECT_EQ(field(QStringLiteral("txtLogin"))->text(), QStringLiteral("sa"));
    EXPECT_EQ(field(QStringLiteral("txtHaslo"))->text(), QStringLiteral("zażółć"));
    EXPECT_EQ(combo()->currentText(), QStringLiteral("WMS"));
    retype(QStringLiteral("txtSerwerName"), QStringLiteral("SRV2"));
    press(QStringLiteral("przOK"));
    EXPECT_EQ(written().Server, QStringLiteral("SRV2"));
    EXPECT_EQ(written().Haslo, QStringLiteral("zażółć"));
    ConnectionSettings read;
    ConnectionFile::read(context.ConnectionFilePath, read);
    EXPECT_EQ(read.Server, QStringLiteral("SRV1,1433"));
}

TEST_F(ConnectionEditor, AsksBeforeItWritesAndTellsThatItDid) {
    openOn(sampleSettings());
    press(QStringLiteral("przOK"));
    ASSERT_EQ(messages.count(), 2);
    EXPECT_EQ(messages.messages()[0].Text,
              QStringLiteral("Czy chcesz zapisać zmiany w pliku konfiguracyjnym ?"));
    EXPECT_EQ(messages.messages()[0].Flags, 4);
    EXPECT_EQ(messages.messages()[0].Title, QStringLiteral("Komunikat"));
    EXPECT_EQ(messages.messages()[1].Text,
              QStringLiteral("Nowe ustawienia pliku konfiguracyjnego zostały zapisany"));
    EXPECT_EQ(messages.messages()[1].Flags, 64);
    EXPECT_EQ(messages.messages()[1].Title, QStringLiteral("Komunikat"));
    EXPECT_FALSE(editor->isVisible());
}

TEST_F(ConnectionEditor, ClosesWithoutWritingWhenTheAnswerIsNo) {
    openOn(sampleSettings());
    messages.answer(MsgResult::No);
    press(QStringLiteral("przOK"));
    EXPECT_EQ(messages.count(), 1);
    EXPECT_FALSE(targetExists());
    EXPECT_FALSE(editor->isVisible());
}

TEST_F(ConnectionEditor, CancelClosesWithoutAQuestion) {
    openOn(sampleSettings());
    press(QStringLiteral("przAnuluj"));
    EXPECT_EQ(messages.count(), 0);
    EXPECT_FALSE(targetExists());
    EXPECT_FALSE(editor->isVisible());
}

TEST_F(ConnectionEditor, SavingRemovesTheSapValuesFromTheFile) {
    context.ConnectionFilePath = target;
    ConnectionFile::write(target, sampleSettings());
    open();
    press(QStringLiteral("przOK"));
    EXPECT_EQ(written().LoginSAP, QString());
    EXPECT_EQ(written().HasloSAP, QString());
    EXPECT_EQ(written().Login, QStringLiteral("sa"));
}

TEST_F(ConnectionEditor, LeavesTheSettingsOfTheRunAsTheyAre) {
    context.Settings = sampleSettings();
    openOn(sampleSettings());
    retype(QStringLiteral("txtLogin"), QStringLiteral("ktos"));
    press(QStringLiteral("przOK"));
    EXPECT_EQ(context.Settings.Login, QStringLiteral("sa"));
    EXPECT_EQ(context.Settings.LoginSAP, QStringLiteral("manager"));
    EXPECT_EQ(written().Login, QStringLiteral("ktos"));
}

TEST_F(ConnectionEditor, OpensEmptyOnAMissingFile) {
    context.ConnectionFilePath = QStringLiteral("C:\\Regalon\\nie ma.txt");
    open();
    EXPECT_EQ(field(QStringLiteral("txtLogin"))->text(), QString());
    EXPECT_EQ(combo()->currentText(), QString());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ConnectionEditor, ShowsWhyTheFileCannotBeWrittenAndStaysOpen) {
    openOn(sampleSettings());
    // A folder in the place of the file refuses everybody, root too.
    ASSERT_TRUE(QDir().mkpath(inRegalon(QStringLiteral("connect.txt"))));
    press(QStringLiteral("przOK"));
    ASSERT_EQ(messages.count(), 2);
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("75\r\n")))
        << qPrintable(messages.last().Text);
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmZapisParamPlik - przOK_Click"));
    EXPECT_TRUE(editor->isVisible());
}

TEST_F(ConnectionEditor, ShowsThatTheFolderIsMissing) {
    openOn(sampleSettings());
    ASSERT_TRUE(QDir(inRegalon(QString())).removeRecursively());
    press(QStringLiteral("przOK"));
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("76\r\n")))
        << qPrintable(messages.last().Text);
}

TEST_F(ConnectionEditor, ListsNoDatabasesWithoutALogin) {
    open();
    dropDown();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text,
              QStringLiteral("Nie zostala wprowadzona nazwa uzytkownika do bazy przy logowaniu"));
    EXPECT_EQ(messages.last().Flags, 48);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(ConnectionEditor, ListsTheDatabasesOfTheServerTypedIn) {
    LocalWarehouse warehouse;
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
    open();
    type(field(QStringLiteral("txtSerwerName")), warehouse.server());
    type(field(QStringLiteral("txtLogin")), LocalWarehouse::login());
    type(field(QStringLiteral("txtHaslo")), LocalWarehouse::password());
    combo()->setEditText(QStringLiteral("coś"));
    dropDown();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messageTexts().join(u'|'));
    const QStringList names = {QStringLiteral("MAGAZYN"), QStringLiteral("master"), QStringLiteral("tempdb")};
    EXPECT_EQ(listed(), names);
    EXPECT_EQ(combo()->currentText(), QStringLiteral("coś"));
    EXPECT_TRUE(warehouse.trace().contains(QStringLiteral("select name from sysdatabases order by name")));
    dropDown();
    EXPECT_EQ(listed(), names + names);
}

TEST_F(ConnectionEditor, SaysThatTheLoginOrPasswordIsWrong) {
    LocalWarehouse warehouse;
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
    open();
    type(field(QStringLiteral("txtSerwerName")), warehouse.server());
    type(field(QStringLiteral("txtLogin")), LocalWarehouse::login());
    type(field(QStringLiteral("txtHaslo")), QStringLiteral("inne"));
    dropDown();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, QStringLiteral(" Nie poprawny login lub haslo do bazy banych"));
    EXPECT_EQ(messages.last().Flags, 48);
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_TRUE(editor->isVisible());
}

}  // namespace
}  // namespace regalon::test
