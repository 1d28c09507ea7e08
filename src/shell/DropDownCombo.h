#pragma once

#include <QComboBox>

namespace regalon {

/// A combo box that tells before its list drops down, so that the list can be filled at that moment.
class DropDownCombo : public QComboBox {
    Q_OBJECT

public:
    explicit DropDownCombo(QWidget* parent = nullptr) : QComboBox(parent) {}

    void showPopup() override {
        Q_EMIT dropDown();
        QComboBox::showPopup();
    }

Q_SIGNALS:
    void dropDown();
};

}  // namespace regalon
