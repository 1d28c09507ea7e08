#pragma once

#include <QString>

namespace regalon {

/// The letter of a warehouse row on screen: 1 to 6 are "A" to "F", any other number an empty text.
[[nodiscard]] QString RankLetter(qint16 rank);

/// The row number of a letter: "A" to "F" are 1 to 6, any other text 0.
[[nodiscard]] qint16 RankNumber(const QString& letter);

}  // namespace regalon
