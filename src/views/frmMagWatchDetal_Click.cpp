// What a click on the drawing shows: a location's material, figures, picture and notes, or the stand again.

#include "common/ErrorTrap.h"
#include "map/LocationName.h"
#include "map/LocationPicture.h"
#include "map/RankLetter.h"
#include "platform/Convert.h"
#include "platform/PictureBox.h"
#include "platform/TabStrip.h"
#include "platform/ToolBar.h"
#include "views/frmMagWatchDetal.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace regalon {

void frmMagWatchDetal::imglocation_Click(int index) {
    WindowTrap("frmMagWatchDetal - imglocation_Click", [&] {
        m_tabSurParam->setSelectedTab(1);
        const TagFields fields(m_imglocation[index].tag());
        const LocationAddress address{fields.number(LocationField::Rank), fields.number(LocationField::Stand),
                                      fields.number(LocationField::Shelf),
                                      fields.number(LocationField::Location)};
        m_txtShelf->setText(QString::number(address.Shelf));
        m_txtLocation->setText(QString::number(address.Location));
        m_lblLocationData->setText(QStringLiteral("Półka: ") + QString::number(address.Shelf) +
                                   QStringLiteral("   Lokalizacja: ") + QString::number(address.Location));
        showItem(address);
        // Without figures the labels keep those of the location before.
        LocationFigures figures;
        if (m_data->GetParamLocalization(address, figures))
            showFigures(figures);
    });
}

void frmMagWatchDetal::showItem(const LocationAddress& address) {
    LocationItemParams item;
    if (m_data->GetParamLocalizationItem(address, item))
        showAssignedItem(address, item);
    else
        showNoItem();
}

void frmMagWatchDetal::showAssignedItem(const LocationAddress& address, const LocationItemParams& item) {
    m_lblSurowiecLocation->setText(item.ItemCode + QStringLiteral(" - ") + item.ItemName);
    if (item.Picture_pic.isEmpty())
        m_impPictureParam->setPicture(Picture());
    else
        ShowPictureOnImageFields("frmMagWatchDetal - ShowPictureOnImageFields", *m_impPictureParam,
                                 item.Picture_pic, temporaryPictureFile(address), true);
    const bool noNote = item.Description_char == u"0";
    m_txtParamInfoLocation->setPlainText(noNote ? QString() : item.Description_char);
    showSizes(item.Depth_int, item.Height_int, item.Width_int, item.Weight_int);
    m_lblGroup->setText(m_data->GetGroupName(item.GroupSur));
    m_tlbWatchFullSurLocation->setVisible(item.GroupSur >= 1 || item.StatLocation_cmb >= 1);
}

void frmMagWatchDetal::showNoItem() {
    clearItem();
    m_lblSurowiecLocation->setText(QStringLiteral("Brak zdefiowanego surowca dla tej lokalizacji"));
    m_tlbWatchFullSurLocation->hide();
}

void frmMagWatchDetal::clearItem() {
    m_lblSurowiecLocation->clear();
    m_impPictureParam->setPicture(Picture());
    m_txtParamInfoLocation->clear();
    showSizes(0, 0, 0, 0);
    m_lblGroup->clear();
}

void frmMagWatchDetal::showSizes(qint16 depth, qint16 height, qint16 width, qint16 weight) {
    m_lblDep->setText(QString::number(depth));
    m_lblHeight->setText(QString::number(height));
    m_lblWidth->setText(QString::number(width));
    m_lblWeight->setText(QString::number(weight));
}

void frmMagWatchDetal::showFigures(const LocationFigures& figures) {
    m_lblProcentData->setText(QString::number(figures.LocationPercent));
    m_lblQuantityBufData->setText(NumberText(figures.QuantityBufor));
    m_lblQuantityData->setText(NumberText(figures.QuantityLocation));
    m_lblProcentSumLineData->setText(NumberText(figures.QuantityPer));
}

void frmMagWatchDetal::imgBookStand_Click() {
    WindowTrap("frmMagWatchDetal - imgBookStand_Click", [this] {
        m_lblLocationData->setText(QStringLiteral("Rząd : ") + RankLetter(m_rank) +
                                   QStringLiteral("   Regał: ") + QString::number(m_stand));
        clearItem();
        showFigures({});
        // The list's own button and not the one that opens the list: a list opened from now on closes with
        // the window only. Nothing shows the button again before the next showing.
        m_tlbCancelWatchSur->hide();
    });
}

}  // namespace regalon
