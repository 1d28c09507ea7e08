// The controls of the dialog and where they lie.

#include "map/frmMagLookForItem.h"
#include "platform/DesignControls.h"
#include "platform/ListView.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

namespace regalon {

namespace {

// Twips. Wide enough for the columns of the list, high enough for some fifteen rows.
constexpr int kFormWidth = 9300;
constexpr int kFormHeight = 7500;

QRadioButton* addOption(QWidget* parent, const QString& name, const QString& caption) {
    auto* option = new QRadioButton(caption, parent);
    option->setObjectName(name);
    return option;
}

}  // namespace

frmMagLookForItem::frmMagLookForItem(AppContext& context, QWidget* parent)
    : QDialog(parent), m_context(context) {
    setObjectName(QStringLiteral("frmMagLookForItem"));
    setWindowTitle(QStringLiteral("Wyszukiwanie surowca"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(createChoice());
    layout->addWidget(createList(), 1);
    layout->addWidget(createLookFor());
    resize(toPixels(kFormWidth), toPixels(kFormHeight));
    m_txtItemCode->setFocus();
}

QGroupBox* frmMagLookForItem::createChoice() {
    QGroupBox* frame = addFrame(this, "frmLookForChose", QString());
    QLabel* by = addLabel(frame, "Label3", QStringLiteral("Wyszukiwanie po:"));
    m_optItemCode = addOption(frame, QStringLiteral("optItemCode"), QStringLiteral("Indeks"));
    m_optItemName = addOption(frame, QStringLiteral("optItemName"), QStringLiteral("Nazwa"));
    QLabel* searched = addLabel(frame, "Label2", QStringLiteral("Szukaj:"));
    m_txtItemCode = new QLineEdit(frame);
    m_txtItemCode->setObjectName(QStringLiteral("txtItemCode"));
    m_txtItemCode->installEventFilter(this);
    connect(m_txtItemCode, &QLineEdit::textChanged, this, &frmMagLookForItem::txtItemCode_Change);

    auto* layout = new QGridLayout(frame);
    layout->addWidget(by, 0, 0);
    layout->addWidget(m_optItemCode, 0, 1);
    layout->addWidget(m_optItemName, 0, 2);
    layout->addWidget(searched, 1, 0);
    layout->addWidget(m_txtItemCode, 1, 1, 1, 3);
    layout->addWidget(createLookRun(), 1, 4);
    layout->setColumnStretch(3, 1);
    return frame;
}

/// The list follows each key stroke, so the button has nothing left to do.
ToolBar* frmMagLookForItem::createLookRun() {
    auto* bar = new ToolBar;
    bar->setObjectName(QStringLiteral("tlbLookRun"));
    bar->addButton(QStringLiteral("key_Akcept"), QStringLiteral("&Szukaj"), {},
                   programIcon(QStringLiteral("find.ico")));
    return bar;
}

QGroupBox* frmMagLookForItem::createList() {
    QGroupBox* frame = addFrame(this, "frmLookForWath", QString());
    m_lstSurOnMag = new ListView(frame);
    m_lstSurOnMag->setObjectName(QStringLiteral("lstSurOnMag"));
    QFont font = m_lstSurOnMag->font();
    font.setFamily(QStringLiteral("Arial"));
    m_lstSurOnMag->setFont(font);
    m_imgSmall.set(kIconOfSearchColumn, programIcon(QStringLiteral("img_39.ico")));
    m_lstSurOnMag->setHeaderIcons(&m_imgSmall);
    m_lstSurOnMag->installEventFilter(this);
    m_lstSurOnMag->viewport()->installEventFilter(this);
    connect(m_lstSurOnMag, &ListView::columnClick, this, &frmMagLookForItem::lstSurOnMag_ColumnClick);

    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(m_lstSurOnMag);
    return frame;
}

ToolBar* frmMagLookForItem::createLookFor() {
    auto* bar = new ToolBar(this);
    bar->setObjectName(QStringLiteral("tlbLookFor"));
    bar->addButton(QStringLiteral("key_Cancel"), QStringLiteral("&Anuluj"), {},
                   programIcon(QStringLiteral("close.ico")));
    bar->addButton(QStringLiteral("key_Akcept"), QStringLiteral("&Wybierz"), {},
                   programIcon(QStringLiteral("img_14.ico")));
    connect(bar, &ToolBar::buttonClick, this, &frmMagLookForItem::tlbLookFor_ButtonClick);
    return bar;
}

}  // namespace regalon
