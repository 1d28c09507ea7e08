#include "views/frmMagWatchDetal.h"

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/modSQL.h"
#include "map/LocationItemList.h"
#include "map/LocationName.h"
#include "map/RankLetter.h"
#include "map/TypedLocation.h"
#include "platform/Convert.h"
#include "platform/ListView.h"
#include "platform/Paths.h"
#include "platform/PictureBox.h"
#include "platform/TabStrip.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"
#include "views/StandDetailGeometry.h"

#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace regalon {

namespace {

constexpr qint16 kMultiItem = 1;

// Of the same kind of stand, always the last row counts: the text has no order.
const QString kLocationsOfStand = QStringLiteral(
    " select A.Shelf,A.Location,A.LocationName,A.LocationIcon,A.LocationPercent,B.StandIcon,"
    "ISNULL(C.StatLocation_cmb,0) as StatusLocation "
    " from kolv_mag_Location A(nolock) inner join kolv_mag_Stand B(nolock)"
    " ON A.Rank = B.Rank AND A.Stand = B.Stand "
    " left join kolv_mag_Location_Item C(nolock)"
    " ON A.Rank = C.Rank AND A.Stand = C.Stand  AND A.Shelf = C.Shelf AND A.Location = C.Location"
    " Where a.Rank = ");

qint16 numberOf(const DbRecordset& rows, const char* column) {
    return ToInt16(NullToValue(rows.Value(column), 0));
}

QString textOf(const DbRecordset& rows, const char* column) {
    return ToText(NullToValue(rows.Value(column)));
}

}  // namespace

frmMagWatchDetal::~frmMagWatchDetal() = default;

void frmMagWatchDetal::setVisible(bool visible) {
    if (visible && !isVisible())
        Form_Load();
    QDialog::setVisible(visible);
}

/// The window closes by its buttons; the Escape key of dialogs is none of them.
void frmMagWatchDetal::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Cancel))
        QDialog::keyPressEvent(event);
}

void frmMagWatchDetal::Form_Load() {
    WindowTrap("frmMagWatchDetal - Form_Load", [this] {
        m_data = std::make_unique<clsMagWatchDetal>(m_context);
        m_aplication = QStringLiteral("P");
        m_operation = QStringLiteral("W");
        m_iconFolder = iconFolder(m_context);
        resetDesign();
        standBeside();
        m_lblParamStand->setText(QStringLiteral("Rząd: ") + RankLetter(m_rank) +
                                 QStringLiteral("   Regał: ") + QString::number(m_stand) +
                                 QStringLiteral("   Ilość półek: ") + QString::number(m_shelfCount) +
                                 QStringLiteral("   Ilość lokalizacji: ") + QString::number(m_locationCount));
        WathLocation(m_rank, m_stand);
        WathParamStand(m_rank, m_stand);
        m_frmParamStatic->show();
        m_frmParamPicture->hide();
        m_frmParamInfo->hide();
        m_frmWathLocationShiftItem->hide();
        m_tlbWatchFullSurLocation->hide();
    });
}

/// Moves the window beside the stand and points at it.
void frmMagWatchDetal::standBeside() {
    const StandDetailPlace beside =
        standDetailPlace(m_topStand, m_leftStand, m_shelfCount, toTwips(width()), toTwips(height()));
    m_topStand = beside.Top;
    m_leftStand = beside.Left;
    m_imgPozytion.setLeft(beside.PointerLeft);
    m_imgPozytion.setTop(beside.PointerTop);
    // Looked for first: a site without the pointer misses nothing else.
    const QString pointer = iconPath(beside.PointerFile);
    if (Paths::fileExists(pointer))
        m_imgPozytion.loadPicture(pointer);
    move(toPixels(m_leftStand), toPixels(m_topStand));
}

QString frmMagWatchDetal::iconPath(const QString& file) const {
    return m_iconFolder + QLatin1Char('\\') + file;
}

void frmMagWatchDetal::WathLocation(qint16 rank, qint16 stand) {
    WindowTrap("frmMagWatchDetal - WathLocation", [&] {
        m_imglocation.forEach([](PictureItem& location) { location.setVisible(false); });
        DbRecordset rows;
        rows.Open(kLocationsOfStand + SqlNumber(int{rank}) + QStringLiteral(" And a.Stand = ") +
                      SqlNumber(int{stand}),
                  mainConnection(m_context), DbRecordset::openStatic, DbRecordset::lockReadOnly);
        QString standIcon;
        qint32 width = 0;
        for (; !rows.Eof(); rows.MoveNext()) {
            standIcon = textOf(rows, "StandIcon");
            drawLocation(rows, width);
        }
        // Without rows or icon this is the path of the folder itself, which is no file.
        const QString picture = iconPath(standIcon);
        if (!Paths::fileExists(picture))
            return;
        m_imgBookStand[0].loadPicture(picture);
        m_imgBookStand[0].setVisible(true);
    });
}

/// Draws the location of the current row. A family without a width of its own takes the one before it.
void frmMagWatchDetal::drawLocation(const DbRecordset& rows, qint32& width) {
    const std::optional<int> index = standGridIndex(numberOf(rows, "Shelf"), numberOf(rows, "Location"));
    const QString name = textOf(rows, "LocationName");
    QString icon = textOf(rows, "LocationIcon");
    // Nothing shows the fill, but one that is no number stops the drawing like any other column.
    static_cast<void>(numberOf(rows, "LocationPercent"));
    const bool several = numberOf(rows, "StatusLocation") == kMultiItem;
    const QString family = TagFields(name).at(LocationField::Family);
    if (icon.isEmpty())
        icon = family + QStringLiteral("_R_Err.ico");
    if (several)
        icon = family + QStringLiteral("_M_00.ico");
    width = standGridWidth(family).value_or(width);
    if (!index)
        return;
    PictureItem& location = m_imglocation[*index];
    location.setWidth(width);
    location.loadPicture(iconPath(icon));
    location.setVisible(true);
    location.setTag(name);
}

void frmMagWatchDetal::WathParamStand(qint16 rank, qint16 stand) {
    WindowTrap("frmMagWatchDetal - WathParamStand", [&] {
        QString description;
        const bool found = m_data->GetParamStand(rank, stand, description);
        m_txtParamInfoStand->setPlainText(found ? description : QString());
    });
}

void frmMagWatchDetal::tabSurParam_Click(int number) {
    WindowTrap("frmMagWatchDetal - tabSurParam_Click", [&] {
        m_frmParamStatic->setVisible(number == 1);
        m_frmParamPicture->setVisible(number == 2);
        m_frmParamInfo->setVisible(number == 3);
    });
}

void frmMagWatchDetal::tlbWatchFullSurLocation_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatchDetal - tlbWatchFullSurLocation_ButtonClick", [&] {
        if (key == u"key_Akcept") {
            const std::optional<LocationAddress> address = typedLocation(
                QString::number(m_rank), QString::number(m_stand), m_txtShelf->text(), m_txtLocation->text());
            if (address) {
                FiilItemOnLocation(*address);
                m_frmWathLocationShiftItem->show();
            }
        } else if (key == u"key_Cancel") {
            // No button of this toolbar bears the key.
            m_frmWathLocationShiftItem->hide();
        }
    });
}

void frmMagWatchDetal::tlbCancelWatchSur_ButtonClick(const QString& key) {
    // Reports under the other toolbar's name; support knows it so.
    WindowTrap("frmMagWatchDetal - tlbWatchFullSurLocation_ButtonClick", [&] {
        if (key == u"key_Cancel")
            m_frmWathLocationShiftItem->hide();
    });
}

void frmMagWatchDetal::FiilItemOnLocation(const LocationAddress& address) {
    constexpr qint16 lpWidth = 700;
    WindowTrap("frmMagWatchDetal - FiilItemOnLocation", [&] {
        const PhaseText text = locationItemText(m_context, QStringLiteral("kolv_mag_Watch_Item_On_Location"),
                                                address, m_aplication, m_operation);
        fillLocationItems(m_context, *m_data, *m_lstLocationItem, text, lpWidth);
    });
}

StandDetail standDetail(AppContext& context) {
    const auto instance = std::make_shared<std::unique_ptr<frmMagWatchDetal>>();
    return [&context, instance](const StandDetailRequest& request) {
        if (!*instance)
            *instance = std::make_unique<frmMagWatchDetal>(context);
        frmMagWatchDetal& window = **instance;
        if (request.ShelfCount)
            window.setShelfCount(*request.ShelfCount);
        if (request.LocationCount)
            window.setLocationCount(*request.LocationCount);
        window.setTopStand(request.TopStand);
        window.setLeftStand(request.LeftStand);
        window.setRank(request.Rank);
        window.setStand(request.Stand);
        window.exec();
    };
}

}  // namespace regalon
