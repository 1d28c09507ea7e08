#include "map/Notice.h"

#include "platform/MsgBox.h"

namespace regalon {

void showNotice(const QString& text) {
    MsgBox(text, MsgFlag::Information, QStringLiteral("Komunikat"));
}

void showRefusal(const QString& reason) {
    if (!reason.isEmpty())
        showNotice(reason);
}

}  // namespace regalon
