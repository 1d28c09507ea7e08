#pragma once

#include "map/LocationAddress.h"

#include <QGroupBox>
#include <QString>

#include <optional>

class QLabel;
class QLineEdit;

namespace regalon {

/// The panel `frmWatchData` of a map window: what was clicked last, in words and as four numbers. The four
/// boxes are the window's only memory of a location; the user may type into them, too.
class StatusPanel : public QGroupBox {
    Q_OBJECT

public:
    explicit StatusPanel(QWidget* parent);

    // The boxes txtRank, txtStand, txtShelf and txtLocation.
    void showAddress(const QString& rank, const QString& stand, const QString& shelf,
                     const QString& location);
    /// "-1" in all four: no location.
    void showNoAddress();
    /// The address in the boxes; none unless all four are numbers of at least 1. Raises 6.
    std::optional<LocationAddress> typedLocation() const;
    /// The same without that test. Raises 13 and 6.
    LocationAddress address() const;

    // The labels lblObjectClick and lblObjectParam.
    /// Row and stand in words; a row above 6 has no letter. Raises 13 and 6.
    void showStand(const QString& rank, const QString& stand);
    void showLocation(const QString& rank, const QString& stand, const QString& shelf,
                      const QString& location);
    void showMaterial(const QString& itemCode, const QString& itemName);
    void showNoMaterial();
    void clearMaterial();
    void clearWords();

private:
    void createLabels();
    QLineEdit* addBox(const char* name, const QString& meaning, int left);

    // Controls, owned by the panel.
    QLabel* m_lblObjectClick = nullptr;
    QLabel* m_lblObjectParam = nullptr;
    QLineEdit* m_txtRank = nullptr;
    QLineEdit* m_txtStand = nullptr;
    QLineEdit* m_txtShelf = nullptr;
    QLineEdit* m_txtLocation = nullptr;
};

}  // namespace regalon
