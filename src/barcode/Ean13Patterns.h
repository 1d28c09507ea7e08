#pragma once

#include "barcode/Pattern.h"

#include <QStringView>

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

/// Sets of the left digits by the first digit: N is set A, P is set B. Codes begin with 5 or 7 here; no other
/// row is set.
constexpr QStringView parity(int firstDigit) {
    switch (firstDigit) {
        case 5:
            return u"NPPNNP";
        case 7:
            return u"NPNPNP";
        default:
            return {};
    }
}

}  // namespace Ean13
}  // namespace regalon
