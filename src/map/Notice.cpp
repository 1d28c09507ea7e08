#include "map/Notice.h"

#include "platform/MsgBox.h"

namespace regalon {

void showNotice(const QString& text) {
    if (!text.isEmpty())
        MsgBox(text, MsgFlag::Information, QStringLiteral("Komunikat"));
}

}  // namespace regalon
