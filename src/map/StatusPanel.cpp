#include "map/StatusPanel.h"

#include "map/RankLetter.h"
#include "map/TypedLocation.h"
#include "platform/Convert.h"
#include "platform/DesignControls.h"
#include "platform/Twips.h"

#include <QLabel>
#include <QLineEdit>

namespace regalon {

namespace {

// Twips inside the panel.
constexpr int kBoxesLeft = 5850;
constexpr int kBoxStep = 600;
constexpr int kMaterialWidth = 14670;

QString standWords(const QString& rank, const QString& stand) {
    return QStringLiteral("Rząd: ") + RankLetter(ToInt16(rank)) + QStringLiteral(" Regał: ") + stand;
}

}  // namespace

StatusPanel::StatusPanel(QWidget* parent) : QGroupBox(QStringLiteral("Status czynności"), parent) {
    setObjectName(QStringLiteral("frmWatchData"));
    setAutoFillBackground(true);
    createLabels();
    m_txtRank = addBox("txtRank", QStringLiteral("Rząd"), kBoxesLeft);
    m_txtStand = addBox("txtStand", QStringLiteral("Regał"), kBoxesLeft + kBoxStep);
    m_txtShelf = addBox("txtShelf", QStringLiteral("Półka"), kBoxesLeft + 2 * kBoxStep);
    m_txtLocation = addBox("txtLocation", QStringLiteral("Lokalizacja"), kBoxesLeft + 3 * kBoxStep);
}

void StatusPanel::createLabels() {
    m_lblObjectClick = addLabel(this, "lblObjectClick", {}, true);
    place(m_lblObjectClick, 150, 300, 5550, 315);
    m_lblObjectParam = addLabel(this, "lblObjectParam");
    place(m_lblObjectParam, 150, 600, kMaterialWidth, 285);
}

QLineEdit* StatusPanel::addBox(const char* name, const QString& meaning, int left) {
    QLineEdit* box = addNumberBox(this, name, meaning);
    place(box, left, 300, 540, 315);
    return box;
}

void StatusPanel::showAddress(const QString& rank, const QString& stand, const QString& shelf,
                              const QString& location) {
    m_txtRank->setText(rank);
    m_txtStand->setText(stand);
    m_txtShelf->setText(shelf);
    m_txtLocation->setText(location);
}

void StatusPanel::showNoAddress() {
    const QString none = QStringLiteral("-1");
    showAddress(none, none, none, none);
}

std::optional<LocationAddress> StatusPanel::typedLocation() const {
    return regalon::typedLocation(m_txtRank->text(), m_txtStand->text(), m_txtShelf->text(),
                                  m_txtLocation->text());
}

LocationAddress StatusPanel::address() const {
    return {ToInt16(m_txtRank->text()), ToInt16(m_txtStand->text()), ToInt16(m_txtShelf->text()),
            ToInt16(m_txtLocation->text())};
}

void StatusPanel::showStand(const QString& rank, const QString& stand) {
    m_lblObjectClick->setText(standWords(rank, stand));
}

void StatusPanel::showLocation(const QString& rank, const QString& stand, const QString& shelf,
                               const QString& location) {
    // Users know the words as they are spelled here.
    m_lblObjectClick->setText(standWords(rank, stand) + QStringLiteral(" Półka: ") + shelf +
                              QStringLiteral(" Lokazliacja: ") + location);
}

void StatusPanel::showMaterial(const QString& itemCode, const QString& itemName) {
    m_lblObjectParam->setText(itemCode + QStringLiteral(" - ") + itemName);
}

void StatusPanel::showNoMaterial() {
    m_lblObjectParam->setText(QStringLiteral("Brak przypisanego surowca"));
}

void StatusPanel::clearMaterial() {
    m_lblObjectParam->clear();
}

void StatusPanel::clearWords() {
    m_lblObjectClick->clear();
    clearMaterial();
}

}  // namespace regalon
