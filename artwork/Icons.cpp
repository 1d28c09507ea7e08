#include "Icons.h"

#include <QtCore/qglobal.h>

// The macro declares a function and so must stand outside of a namespace.
static void initIcons() {
    Q_INIT_RESOURCE(regalon_icons);
}

namespace regalon {

void loadProgramIcons() {
    initIcons();
}

QString rowIconPath(int number) {
    return QStringLiteral(":/icons/img_%1.ico").arg(number, 2, 10, QLatin1Char('0'));
}

}  // namespace regalon
