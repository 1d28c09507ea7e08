#pragma once

#include <QString>

namespace regalon {

/// The program's folder, as the system writes it. What an installation brings lies beside the program itself,
/// where users cannot write; this is the folder of the site.
inline QString programFolder() {
    return QStringLiteral("C:\\Regalon");
}

}  // namespace regalon
