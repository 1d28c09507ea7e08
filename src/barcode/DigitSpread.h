#pragma once

#include <QtGlobal>

namespace regalon {

/// How the characters under a symbol are spread by hand: character k (from 1) stands at the symbol's start
/// plus offset plus step times k.
struct DigitSpread {
    double Step = 0;
    double Offset = 0;
};

/// The spreads of Code 128 by the number of characters in the code. They were tuned by eye for module widths
/// 1 and 2 and follow no formula. Without a row of its own a length has step 0, so that 40 characters and
/// more are printed over each other.
namespace Code128Spread {

DigitSpread plain(qsizetype length, double moduleWidth);
/// For codes that a reader scans, without and with brackets around their identifiers. The length is that of
/// the code, without the brackets.
DigitSpread reader(qsizetype length, double moduleWidth);
DigitSpread readerWithBrackets(qsizetype length, double moduleWidth);

}  // namespace Code128Spread
}  // namespace regalon
