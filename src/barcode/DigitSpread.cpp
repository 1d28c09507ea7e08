#include "barcode/DigitSpread.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace regalon::Code128Spread {
namespace {

struct Row {
    qsizetype from, to;  ///< characters of the code, both ends included
    double factor;       ///< of the module width
    double offset;
};

constexpr double usualOffset = -5;

constexpr std::array<Row, 11> plainRows = {{
    {1, 1, 6, -5},
    {2, 2, 16, -5},
    {3, 3, 15, -5},
    {4, 4, 13, -5},
    {5, 5, 12, -5},
    {6, 7, 10, -5},
    {8, 9, 9, -5},
    {10, 15, 8, -5},
    {16, 16, 7, -2},
    {17, 25, 7, -5},
    {26, 39, 6, 2},
}};

/// Where the reader's form without brackets differs from the plain one.
constexpr std::array<Row, 2> readerRows = {{
    {10, 10, 9, -12},
    {14, 14, 8, -8},
}};

constexpr std::array<Row, 19> bracketRows = {{
    {1, 1, 6, -5},   {2, 2, 16, -5},   {3, 3, 15, -5},  {4, 4, 13, -5},  {5, 5, 12, -5},
    {6, 7, 10, -5},  {8, 9, 9, -5},    {10, 14, 8, -5}, {15, 15, 7, -5}, {16, 21, 6, -5},
    {22, 22, 6, -7}, {23, 23, 6, -5},  {24, 24, 6, -7}, {25, 25, 6, -5}, {26, 26, 6, -8},
    {27, 31, 6, -7}, {32, 32, 6, -10}, {33, 33, 6, -6}, {34, 39, 6, -7},
}};

const Row* rowOf(std::span<const Row> rows, qsizetype length) {
    const auto found = std::find_if(rows.begin(), rows.end(), [length](const Row& row) {
        return row.from <= length && length <= row.to;
    });
    return found == rows.end() ? nullptr : &*found;
}

DigitSpread spread(const Row* row, double moduleWidth) {
    if (row == nullptr)
        return {0, usualOffset};
    return {std::floor(moduleWidth * row->factor), row->offset};
}

}  // namespace

DigitSpread plain(qsizetype length, double moduleWidth) {
    return spread(rowOf(plainRows, length), moduleWidth);
}

DigitSpread reader(qsizetype length, double moduleWidth) {
    const Row* const own = rowOf(readerRows, length);
    return own == nullptr ? plain(length, moduleWidth) : spread(own, moduleWidth);
}

DigitSpread readerWithBrackets(qsizetype length, double moduleWidth) {
    return spread(rowOf(bracketRows, length), moduleWidth);
}

}  // namespace regalon::Code128Spread
