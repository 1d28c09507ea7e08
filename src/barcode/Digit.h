#pragma once

#include "platform/RunTimeError.h"

#include <QChar>

namespace regalon {

/// True for 0 to 9 alone: digits of other scripts cannot be encoded.
constexpr bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

/// Raises 13 for anything but a digit.
inline int digitValue(QChar character) {
    if (!isDigit(character))
        throw RunTimeError(RunTime::TypeMismatch);
    return character.unicode() - u'0';
}

}  // namespace regalon
