#pragma once

#include "common/AppContext.h"

#include <QDialog>

class QLineEdit;

namespace regalon {

class DbConnection;
class DropDownCombo;

/// The editor of the connection file. It shows the file that the program was started with and writes to the
/// default one. Its values take effect at the next start; the running connection stays.
class frmZapisParamPlik : public QDialog {
    Q_OBJECT

public:
    frmZapisParamPlik(AppContext& context, QWidget* parent);

    /// Where the editor writes, whatever was read.
    static QString targetFile();

private:
    void addControls();
    QLineEdit* addField(const QString& label, const QString& caption, const QString& name, int top);
    void addDatabaseCombo(int top);
    void addButtons(int top);

    void Form_Load();
    void cmbBaza_DropDown();
    void przOK_Click();
    void przAnuluj_Click();
    void copyFields();
    void addDatabaseNames(DbConnection& connection);

    AppContext& m_context;
    /// The form's own copy of the settings.
    ConnectionSettings m_settings;

    QLineEdit* txtFileName = nullptr;
    QLineEdit* txtSerwerName = nullptr;
    QLineEdit* txtLogin = nullptr;
    QLineEdit* txtHaslo = nullptr;
    DropDownCombo* cmbBaza = nullptr;
};

}  // namespace regalon
