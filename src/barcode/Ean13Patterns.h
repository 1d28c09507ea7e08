#pragma once

#include "barcode/Pattern.h"

#include <array>

namespace regalon {

/// The patterns of EAN-13, one character a module: 1 is a bar. Rows are digits.
namespace Ean13 {

using DigitSet = std::array<Pattern<7>, 10>;

inline constexpr DigitSet SetA = {u"0001101", u"0011001", u"0010011", u"0111101", u"0100011",
                                  u"0110001", u"0101111", u"0111011", u"0110111", u"0001011"};
inline constexpr DigitSet SetB = {u"0100111", u"0110011", u"0011011", u"0100001", u"0011101",
                                  u"0111001", u"0000101", u"0010001", u"0001001", u"0010111"};
inline constexpr DigitSet SetC = {u"1110010", u"1100110", u"1101100", u"1000010", u"1011100",
                                  u"1001110", u"1010000", u"1000100", u"1001000", u"1110100"};

inline constexpr Pattern<3> Guard = u"101";
inline constexpr Pattern<5> Middle = u"01010";

/// Sets of the six left digits.
using LeftSets = std::array<const DigitSet*, 6>;

inline constexpr LeftSets LeftOf5 = {&SetA, &SetB, &SetB, &SetA, &SetA, &SetB};
inline constexpr LeftSets LeftOf7 = {&SetA, &SetB, &SetA, &SetB, &SetA, &SetB};
inline constexpr LeftSets LeftOfOthers = {&SetB, &SetB, &SetB, &SetB, &SetB, &SetB};

/// By the first digit. Codes begin with 5 or 7 here; the published sets of the others are not known.
constexpr const LeftSets& leftSets(int firstDigit) {
    switch (firstDigit) {
        case 5:
            return LeftOf5;
        case 7:
            return LeftOf7;
        default:
            return LeftOfOthers;
    }
}

}  // namespace Ean13
}  // namespace regalon
