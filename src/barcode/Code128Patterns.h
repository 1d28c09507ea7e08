#pragma once

#include <QStringView>

namespace regalon {

/// The patterns of Code 128: widths in modules of bar, space, bar, space, bar, space.
namespace Code128 {

inline constexpr QStringView Stop = u"2331112";
inline constexpr int StartB = 128;  ///< index in set B
inline constexpr int StartC = 105;  ///< index in set C

/// Set C by symbol value, 0 to 105, as published.
QStringView setC(int value);

/// Set B by character code: symbol value plus 32. Empty below 32 and at 137; raises 9 above 137.
/// Two of its patterns are not the published ones, and printed labels rest on both: 128 holds the start
/// pattern of the set, so that a check value of 96 is printed as a second start, and 136 the start pattern of
/// set C.
QStringView setB(int index);

}  // namespace Code128
}  // namespace regalon
