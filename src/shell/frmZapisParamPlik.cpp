#include "shell/frmZapisParamPlik.h"

#include "common/DbGateway.h"
#include "common/ErrorTrap.h"
#include "platform/Convert.h"
#include "platform/MsgBox.h"
#include "platform/Twips.h"
#include "shell/ConnectionFile.h"
#include "shell/DropDownCombo.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace regalon {

namespace {

const QString messageTitle = QStringLiteral("Komunikat");
const QString targetFolder = QStringLiteral("C:\\Regalon");
constexpr int connectSeconds = 30;

// Twips.
constexpr int formWidth = 5400;
constexpr int formHeight = 3555;
constexpr int labelLeft = 180;
constexpr int labelWidth = 1500;
constexpr int fieldLeft = 1755;
constexpr int fieldWidth = 3465;
constexpr int fieldHeight = 375;
constexpr int rowPitch = 495;
constexpr int firstRow = 180;
constexpr int buttonWidth = 1395;
constexpr int buttonHeight = 450;
constexpr int browseWidth = 420;

}  // namespace

frmZapisParamPlik::frmZapisParamPlik(AppContext& context, QWidget* parent)
    : QDialog(parent), m_context(context) {
    setObjectName(QStringLiteral("frmZapisParamPlik"));
    setWindowTitle(QStringLiteral("Konfiguracja pliku połączenia"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setFixedSize(toPixels(formWidth), toPixels(formHeight));
    addControls();
    WindowTrap("frmZapisParamPlik - Form_Load", [this] { Form_Load(); });
}

QString frmZapisParamPlik::targetFile() {
    return targetFolder + QStringLiteral("\\connect.txt");
}

void frmZapisParamPlik::addControls() {
    int top = firstRow;
    txtFileName = addField(QStringLiteral("Label3"), QStringLiteral("Plik konfiguracji:"),
                           QStringLiteral("txtFileName"), top);
    place(txtFileName, fieldLeft, top, fieldWidth - browseWidth - 60, fieldHeight);
    // A file dialog was planned here; its button is there and does nothing.
    auto* browse = new QPushButton(QStringLiteral("..."), this);
    browse->setObjectName(QStringLiteral("cmbDialog"));
    browse->setAutoDefault(false);
    place(browse, fieldLeft + fieldWidth - browseWidth, top, browseWidth, fieldHeight);
    auto* dialog = new QWidget(this);
    dialog->setObjectName(QStringLiteral("cmdDialog"));
    dialog->hide();

    top += rowPitch;
    txtSerwerName = addField(QStringLiteral("Label1"), QStringLiteral("Nazwa serwera:"),
                             QStringLiteral("txtSerwerName"), top);
    top += rowPitch;
    txtLogin = addField(QStringLiteral("Label2"), QStringLiteral("Login"), QStringLiteral("txtLogin"), top);
    top += rowPitch;
    txtHaslo = addField(QStringLiteral("Label4"), QStringLiteral("Hasło"), QStringLiteral("txtHaslo"), top);
    txtHaslo->setEchoMode(QLineEdit::Password);
    top += rowPitch;
    addDatabaseCombo(top);
    top += rowPitch + 195;
    addButtons(top);
}

QLineEdit* frmZapisParamPlik::addField(const QString& label, const QString& caption, const QString& name,
                                       int top) {
    auto* text = new QLabel(caption, this);
    text->setObjectName(label);
    place(text, labelLeft, top, labelWidth, fieldHeight);
    auto* field = new QLineEdit(this);
    field->setObjectName(name);
    place(field, fieldLeft, top, fieldWidth, fieldHeight);
    return field;
}

void frmZapisParamPlik::addDatabaseCombo(int top) {
    auto* text = new QLabel(QStringLiteral("Baza danych"), this);
    text->setObjectName(QStringLiteral("Label5"));
    place(text, labelLeft, top, labelWidth, fieldHeight);
    cmbBaza = new DropDownCombo(this);
    cmbBaza->setObjectName(QStringLiteral("cmbBaza"));
    cmbBaza->setEditable(true);
    cmbBaza->setInsertPolicy(QComboBox::NoInsert);
    cmbBaza->setCompleter(nullptr);
    place(cmbBaza, fieldLeft, top, fieldWidth, fieldHeight);
    connect(cmbBaza, &DropDownCombo::dropDown, this,
            [this] { WindowTrap("frmZapisParamPlik - cmbBaza_DropDown", [this] { cmbBaza_DropDown(); }); });
}

void frmZapisParamPlik::addButtons(int top) {
    auto* save = new QPushButton(QStringLiteral("&Zapisz"), this);
    save->setObjectName(QStringLiteral("przOK"));
    save->setDefault(true);
    place(save, fieldLeft + fieldWidth - 2 * buttonWidth - 120, top, buttonWidth, buttonHeight);
    connect(save, &QPushButton::clicked, this,
            [this] { WindowTrap("frmZapisParamPlik - przOK_Click", [this] { przOK_Click(); }); });

    auto* cancel = new QPushButton(QStringLiteral("&Anuluj"), this);
    cancel->setObjectName(QStringLiteral("przAnuluj"));
    cancel->setAutoDefault(false);
    place(cancel, fieldLeft + fieldWidth - buttonWidth, top, buttonWidth, buttonHeight);
    connect(cancel, &QPushButton::clicked, this,
            [this] { WindowTrap("frmZapisParamPlik - przAnuluj_Click", [this] { przAnuluj_Click(); }); });
}

void frmZapisParamPlik::Form_Load() {
    txtFileName->setText(targetFolder);
    // A kept oddity: the second reading only repeats the first.
    ConnectionFile::read(m_context.ConnectionFilePath, m_settings);
    ConnectionFile::read(m_context.ConnectionFilePath, m_settings);
    txtHaslo->setText(TrimBlanks(m_settings.Haslo));
    txtLogin->setText(TrimBlanks(m_settings.Login));
    txtSerwerName->setText(m_settings.Server);
    cmbBaza->setEditText(TrimBlanks(m_settings.Baza));
}

void frmZapisParamPlik::copyFields() {
    m_settings.Server = txtSerwerName->text();
    m_settings.Baza = cmbBaza->currentText();
    m_settings.Login = txtLogin->text();
    m_settings.Haslo = txtHaslo->text();
}

void frmZapisParamPlik::cmbBaza_DropDown() {
    copyFields();
    // A connection of its own: ConnMain may not exist, and the fields may name another server.
    DbConnection connection;
    if (m_settings.Login.isEmpty()) {
        MsgBox(QStringLiteral("Nie zostala wprowadzona nazwa uzytkownika do bazy przy logowaniu"),
               MsgFlag::Exclamation, messageTitle);
        return;
    }
    connection.setConnectionString(QStringLiteral("driver={SQL Server};server=") + m_settings.Server +
                                   QStringLiteral(";uid=") + m_settings.Login + QStringLiteral(";pwd=") +
                                   m_settings.Haslo + QStringLiteral(";database=master"));
    connection.setConnectionTimeout(connectSeconds);
    try {
        connection.Open();
    } catch (const RunTimeError&) {
        MsgBox(QStringLiteral(" Nie poprawny login lub haslo do bazy banych"), MsgFlag::Exclamation,
               messageTitle);
        return;
    }
    addDatabaseNames(connection);
}

/// The list is not cleared before: a second drop-down shows every name twice.
void frmZapisParamPlik::addDatabaseNames(DbConnection& connection) {
    DbRecordset names;
    names.Open(QStringLiteral("select name from sysdatabases order by name"), connection);
    // The first item added to an empty combo would replace the text.
    const QString text = cmbBaza->currentText();
    const QSignalBlocker quiet(cmbBaza);
    for (; !names.Eof(); names.MoveNext()) {
        cmbBaza->addItem(ToText(names.Value("name")));
    }
    cmbBaza->setCurrentIndex(-1);
    cmbBaza->setEditText(text);
    names.Close();
}

void frmZapisParamPlik::przOK_Click() {
    copyFields();
    m_settings.LoginSAP.clear();
    m_settings.HasloSAP.clear();
    if (MsgBox(QStringLiteral("Czy chcesz zapisać zmiany w pliku konfiguracyjnym ?"), MsgFlag::YesNo,
               messageTitle) == MsgResult::Yes) {
        ConnectionFile::write(targetFile(), m_settings);
        MsgBox(QStringLiteral("Nowe ustawienia pliku konfiguracyjnego zostały zapisany"),
               MsgFlag::Information, messageTitle);
    }
    close();
}

void frmZapisParamPlik::przAnuluj_Click() {
    close();
}

}  // namespace regalon
