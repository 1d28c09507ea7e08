#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace regalon {

/// Keeps the keyboard in a box until its content may be left. Clicks on buttons that take no focus go
/// through, and so does another window coming to the front.
class FocusGuard : public QObject {
    Q_OBJECT

public:
    /// `mayLeave` is asked whenever the focus goes from the box to another control of its window. Owned by
    /// the box.
    FocusGuard(QWidget* box, std::function<bool()> mayLeave);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_box;
    std::function<bool()> m_mayLeave;
};

}  // namespace regalon
