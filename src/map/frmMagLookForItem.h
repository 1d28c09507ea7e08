#pragma once

#include "platform/ImageList.h"

#include <QDialog>
#include <QString>

#include <functional>

class QGroupBox;
class QLineEdit;
class QRadioButton;

namespace regalon {

struct AppContext;
class ListView;
class ToolBar;

/// Writes the property ItemCode of the window that opened the search.
using ItemCodeSetter = std::function<void(const QString& itemCode)>;

/// A list of materials that narrows as the user types. It gives the code of the marked row, or the caller's
/// own code on a cancel, to the calling window and closes. The window's close box closes it and writes
/// nothing. Made anew for each use: the properties are set, then exec() reads the first list.
class frmMagLookForItem : public QDialog {
    Q_OBJECT

public:
    /// The context must outlive the dialog.
    explicit frmMagLookForItem(AppContext& context, QWidget* parent = nullptr);
    ~frmMagLookForItem() override;

    /// Takes the result. Failures that it throws are reported, and the dialog stays open.
    void setForm(const ItemCodeSetter& form) { m_form = form; }
    /// The code that a cancel gives back.
    void setItemCodeForm(const QString& itemCode) { m_itemCodeForm = itemCode; }
    /// True: only materials that are in the warehouse.
    void setOnlyExistsMag(bool only) { m_onlyExistsMag = only; }
    /// Stored only: meant for a condition of the caller's own that no search has yet.
    void setOnlyExistsMagSQL(const QString& condition) { m_onlyExistsMagSQL = condition; }
    /// "E" makes the first list the full one, whatever OnlyExistsMag says.
    void setOperation(const QString& operation) { m_operation = operation; }

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Header icon of the column that was clicked last.
    static constexpr int kIconOfSearchColumn = 39;

    // Design, each part in its own function.
    QGroupBox* createChoice();
    QGroupBox* createList();
    ToolBar* createLookRun();
    ToolBar* createLookFor();

    // Event routines.
    void Form_Load();
    void FillComboSur();
    void txtItemCode_Change();
    // Whether the key is used up.
    bool txtItemCode_KeyDown(int key);
    bool lstSurOnMag_KeyDown(int key);
    void lstSurOnMag_DblClick();
    void lstSurOnMag_ColumnClick(int header);
    void tlbLookFor_ButtonClick(const QString& key);

    void fillList(const QString& procedure, const QString& text, const QString& column);
    QString searchProcedure() const;
    void enterList();
    void takeMarkedRow();
    void giveBack(const QString& itemCode);

    AppContext& m_context;
    ItemCodeSetter m_form;
    QString m_itemCodeForm;
    QString m_onlyExistsMagSQL;
    QString m_operation;
    bool m_onlyExistsMag = false;

    // Controls, owned by their parents.
    QRadioButton* m_optItemCode = nullptr;
    QRadioButton* m_optItemName = nullptr;
    QLineEdit* m_txtItemCode = nullptr;
    ListView* m_lstSurOnMag = nullptr;
    ImageList m_imgSmall;
};

}  // namespace regalon
