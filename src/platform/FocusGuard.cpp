#include "platform/FocusGuard.h"

#include <QFocusEvent>
#include <QWidget>

#include <utility>

namespace regalon {

FocusGuard::FocusGuard(QWidget* box, std::function<bool()> mayLeave)
    : QObject(box), m_box(box), m_mayLeave(std::move(mayLeave)) {
    box->installEventFilter(this);
}

bool FocusGuard::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::FocusOut)
        return false;
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const bool toAnotherControl = reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
                                  reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
    if (toAnotherControl && m_box->isVisible() && !m_mayLeave()) {
        // Once the control that was left for has the focus; earlier it would be taken back.
        QMetaObject::invokeMethod(m_box, qOverload<>(&QWidget::setFocus), Qt::QueuedConnection);
    }
    return false;
}

}  // namespace regalon
