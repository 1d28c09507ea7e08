#include "map/Notice.h"

#include "platform/MsgBox.h"
#include "platform/Screen.h"

namespace regalon {

void showNotice(const QString& text) {
    const PlainPointer pointer;
    MsgBox(text, MsgFlag::Information, QStringLiteral("Komunikat"));
}

void showRefusal(const QString& reason) {
    if (!reason.isEmpty())
        showNotice(reason);
}

}  // namespace regalon
