#pragma once

#include "barcode/Pattern.h"
#include "platform/RunTimeError.h"

#include <array>

namespace regalon {

/// The patterns of Code 128: widths in modules of bar, space, bar, space, bar, space.
namespace Code128 {

using Widths = Pattern<6>;
using StopWidths = Pattern<7>;

/// By symbol value, as published.
inline constexpr std::array<Widths, 106> Published = {
    u"212222", u"222122", u"222221", u"121223", u"121322", u"131222", u"122213", u"122312", u"132212",
    u"221213", u"221312", u"231212", u"112232", u"122132", u"122231", u"113222", u"123122", u"123221",
    u"223211", u"221132", u"221231", u"213212", u"223112", u"312131", u"311222", u"321122", u"321221",
    u"312212", u"322112", u"322211", u"212123", u"212321", u"232121", u"111323", u"131123", u"131321",
    u"112313", u"132113", u"132311", u"211313", u"231113", u"231311", u"112133", u"112331", u"132131",
    u"113123", u"113321", u"133121", u"313121", u"211331", u"231131", u"213113", u"213311", u"213131",
    u"311123", u"311321", u"331121", u"312113", u"312311", u"332111", u"314111", u"221411", u"431111",
    u"111224", u"111422", u"121124", u"121421", u"141122", u"141221", u"112214", u"112412", u"122114",
    u"122411", u"142112", u"142211", u"241211", u"221114", u"413111", u"241112", u"134111", u"111242",
    u"121142", u"121241", u"114212", u"124112", u"124211", u"411212", u"421112", u"421211", u"212141",
    u"214121", u"412121", u"111143", u"111341", u"131141", u"114113", u"114311", u"411113", u"411311",
    u"113141", u"114131", u"311141", u"411131", u"211412", u"211214", u"211232",
};

inline constexpr StopWidths Stop = u"2331112";
inline constexpr int StartB = 128;  ///< index in set B
inline constexpr int StartC = 105;  ///< index in set C

/// Set C by symbol value, 0 to 105, as published.
inline const Widths& setC(int value) {
    return Published[static_cast<std::size_t>(value)];
}

/// Set B by character code: symbol value plus 32. None below 32 and at 137; raises 9 above 137.
/// Two of its patterns are not the published ones, and printed labels rest on both: 128 holds the start
/// pattern of the set, so that a check value of 96 is printed as a second start, and 136 the start pattern of
/// set C.
inline const Widths* setB(int index) {
    constexpr int first = 32;
    constexpr int last = 136;
    if (index > last + 1)
        throw RunTimeError(RunTime::SubscriptOutOfRange);
    if (index < first || index > last)
        return nullptr;
    if (index == StartB)
        return &Published[104];
    if (index == last)
        return &Published[105];
    return &Published[static_cast<std::size_t>(index - first)];
}

}  // namespace Code128
}  // namespace regalon
