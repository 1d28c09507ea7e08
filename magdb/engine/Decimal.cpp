#include "engine/Decimal.h"

#include "engine/SqlError.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace magdb {

namespace {

constexpr int kMaxDigits = 38;

const std::array<Int128, kMaxDigits + 1>& powers() {
    static const std::array<Int128, kMaxDigits + 1> table = [] {
        std::array<Int128, kMaxDigits + 1> t{};
        t[0] = 1;
        for (std::size_t i = 1; i < t.size(); ++i) {
            t[i] = t[i - 1] * 10;
        }
        return t;
    }();
    return table;
}

UInt128 magnitude(Int128 value) {
    return value < 0 ? UInt128(0) - static_cast<UInt128>(value) : static_cast<UInt128>(value);
}

/// 256 bits: products of two numbers of 38 digits and scaled dividends.
struct Wide {
    UInt128 high = 0;
    UInt128 low = 0;
};

Wide multiplyWide(UInt128 a, UInt128 b) {
    const UInt128 mask = ~std::uint64_t{0};
    const UInt128 a0 = a & mask;
    const UInt128 a1 = a >> 64;
    const UInt128 b0 = b & mask;
    const UInt128 b1 = b >> 64;
    const UInt128 low = a0 * b0;
    const UInt128 middle1 = a1 * b0 + (low >> 64);
    const UInt128 middle2 = a0 * b1 + (middle1 & mask);
    return {a1 * b1 + (middle1 >> 64) + (middle2 >> 64), (middle2 << 64) | (low & mask)};
}

/// Divides in place, returns the remainder. The divisor is below 2^127.
UInt128 divideWide(Wide& number, UInt128 divisor) {
    if (number.high == 0) {
        const UInt128 remainder = number.low % divisor;
        number.low /= divisor;
        return remainder;
    }
    UInt128 remainder = 0;
    Wide quotient;
    for (int bit = 255; bit >= 0; --bit) {
        const UInt128 next = bit >= 128 ? (number.high >> (bit - 128)) & 1 : (number.low >> bit) & 1;
        remainder = (remainder << 1) | next;
        if (remainder >= divisor) {
            remainder -= divisor;
            if (bit >= 128) {
                quotient.high |= UInt128(1) << (bit - 128);
            } else {
                quotient.low |= UInt128(1) << bit;
            }
        }
    }
    number = quotient;
    return remainder;
}

[[noreturn]] void overflow() {
    raise(8115, {"expression", "numeric"});
}

DecimalValue withSign(UInt128 value, bool negative, int scale) {
    DecimalValue result;
    result.unscaled = negative ? -static_cast<Int128>(value) : static_cast<Int128>(value);
    result.scale = static_cast<std::uint8_t>(scale);
    return result;
}

DecimalValue checked(const DecimalValue& value, int precision) {
    if (!fitsPrecision(value.unscaled, precision)) {
        overflow();
    }
    return value;
}

DecimalValue multiply(const DecimalValue& a, const DecimalValue& b, const SqlType& type) {
    Wide product = multiplyWide(magnitude(a.unscaled), magnitude(b.unscaled));
    int drop = a.scale + b.scale - type.scale;
    const bool negative = (a.unscaled < 0) != (b.unscaled < 0);
    if (drop > 0) {
        // The last division decides the rounding, so the digits before it are dropped in one step of at
        // most 38.
        while (drop > kMaxDigits) {
            divideWide(product, 10);
            --drop;
        }
        const auto divisor = static_cast<UInt128>(powerOfTen(drop));
        const UInt128 remainder = divideWide(product, divisor);
        if (remainder * 2 >= divisor) {
            ++product.low;
        }
    }
    if (product.high != 0 || product.low > static_cast<UInt128>(powerOfTen(kMaxDigits))) {
        overflow();
    }
    DecimalValue result = withSign(product.low, negative, type.scale);
    if (drop < 0) {
        const std::optional<DecimalValue> scaled =
            rescale(withSign(product.low, negative, a.scale + b.scale), type.scale);
        if (!scaled) {
            overflow();
        }
        result = *scaled;
    }
    return checked(result, type.precision);
}

DecimalValue divide(const DecimalValue& a, const DecimalValue& b, const SqlType& type) {
    if (b.unscaled == 0) {
        raise(8134);
    }
    const int raise10 = type.scale - a.scale + b.scale;
    UInt128 divisor = magnitude(b.unscaled);
    Wide number{0, magnitude(a.unscaled)};
    if (raise10 >= 0) {
        if (raise10 > kMaxDigits) {
            overflow();
        }
        number = multiplyWide(number.low, static_cast<UInt128>(powerOfTen(raise10)));
        divideWide(number, divisor);
    } else {
        divideWide(number, divisor);
        divideWide(number, static_cast<UInt128>(powerOfTen(-raise10)));
    }
    if (number.high != 0 || number.low > static_cast<UInt128>(powerOfTen(kMaxDigits))) {
        overflow();
    }
    return checked(withSign(number.low, (a.unscaled < 0) != (b.unscaled < 0), type.scale), type.precision);
}

DecimalValue atScale(const DecimalValue& value, int scale) {
    const std::optional<DecimalValue> scaled = rescale(value, scale);
    if (!scaled) {
        overflow();
    }
    return *scaled;
}

}  // namespace

Int128 powerOfTen(int exponent) {
    return powers()[static_cast<std::size_t>(exponent)];
}

int digitCount(Int128 value) {
    const UInt128 size = magnitude(value);
    int digits = 1;
    while (digits < kMaxDigits + 1 &&
           size >= static_cast<UInt128>(powers()[static_cast<std::size_t>(std::min(digits, kMaxDigits))])) {
        if (digits == kMaxDigits) {
            return kMaxDigits + 1;
        }
        ++digits;
    }
    return digits;
}

bool fitsPrecision(Int128 unscaled, int precision) {
    return magnitude(unscaled) < static_cast<UInt128>(powerOfTen(precision));
}

std::optional<DecimalValue> rescale(const DecimalValue& value, int scale) {
    if (scale >= value.scale) {
        const int step = scale - value.scale;
        if (step > kMaxDigits || (value.unscaled != 0 && digitCount(value.unscaled) + step > kMaxDigits)) {
            return value.unscaled == 0 ? std::optional(DecimalValue{0, static_cast<std::uint8_t>(scale)})
                                       : std::nullopt;
        }
        return DecimalValue{value.unscaled * powerOfTen(step), static_cast<std::uint8_t>(scale)};
    }
    const auto divisor = static_cast<UInt128>(powerOfTen(value.scale - scale));
    const UInt128 size = magnitude(value.unscaled);
    UInt128 quotient = size / divisor;
    if ((size % divisor) * 2 >= divisor) {
        ++quotient;
    }
    return withSign(quotient, value.unscaled < 0, scale);
}

std::optional<DecimalValue> truncateScale(const DecimalValue& value, int scale) {
    if (scale >= value.scale) {
        return rescale(value, scale);
    }
    return DecimalValue{value.unscaled / powerOfTen(value.scale - scale), static_cast<std::uint8_t>(scale)};
}

std::optional<DecimalValue> parseDecimal(std::string_view text) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    std::size_t i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        negative = text[i] == '-';
        ++i;
    }
    Int128 unscaled = 0;
    int scale = 0;
    bool point = false;
    bool digits = false;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '.' && !point) {
            point = true;
        } else if (c >= '0' && c <= '9') {
            digits = true;
            if (digitCount(unscaled) >= kMaxDigits && unscaled != 0) {
                if (!point) {
                    return std::nullopt;
                }
                continue;
            }
            unscaled = unscaled * 10 + (c - '0');
            scale += point ? 1 : 0;
        } else {
            break;
        }
    }
    if (!digits) {
        return std::nullopt;
    }
    int exponent = 0;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        bool minus = false;
        ++i;
        if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
            minus = text[i] == '-';
            ++i;
        }
        if (i == text.size()) {
            return std::nullopt;
        }
        for (; i < text.size() && text[i] >= '0' && text[i] <= '9' && exponent < 1000; ++i) {
            exponent = exponent * 10 + (text[i] - '0');
        }
        exponent = minus ? -exponent : exponent;
    }
    if (i != text.size()) {
        return std::nullopt;
    }
    scale -= exponent;
    if (scale < 0) {
        if (unscaled != 0 && digitCount(unscaled) - scale > kMaxDigits) {
            return std::nullopt;
        }
        unscaled = unscaled == 0 ? 0 : unscaled * powerOfTen(-scale);
        scale = 0;
    }
    while (scale > kMaxDigits) {
        unscaled /= 10;
        --scale;
    }
    return DecimalValue{negative ? -unscaled : unscaled, static_cast<std::uint8_t>(scale)};
}

std::string formatDecimal(const DecimalValue& value) {
    UInt128 size = magnitude(value.unscaled);
    std::string reversed;
    int written = 0;
    while (size != 0 || written <= value.scale) {
        if (written == value.scale && written != 0) {
            reversed += '.';
        }
        reversed += static_cast<char>('0' + static_cast<int>(size % 10));
        size /= 10;
        ++written;
    }
    if (value.unscaled < 0) {
        reversed += '-';
    }
    std::reverse(reversed.begin(), reversed.end());
    return reversed;
}

double toDouble(const DecimalValue& value) {
    return std::strtod(formatDecimal(value).c_str(), nullptr);
}

std::optional<DecimalValue> fromDouble(double value, int scale) {
    if (!std::isfinite(value) || std::fabs(value) >= 1e38) {
        return std::nullopt;
    }
    // 17 significant digits are all that a double holds; the decimal text of it rounds like the server's.
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), "%.16e", value);
    const std::optional<DecimalValue> exact =
        parseDecimal(std::string_view(text.data(), static_cast<std::size_t>(length)));
    return exact ? rescale(*exact, scale) : std::nullopt;
}

int compare(const DecimalValue& left, const DecimalValue& right) {
    const int scale = std::max(left.scale, right.scale);
    const std::optional<DecimalValue> a = rescale(left, scale);
    const std::optional<DecimalValue> b = rescale(right, scale);
    if (a && b) {
        return a->unscaled < b->unscaled ? -1 : (a->unscaled > b->unscaled ? 1 : 0);
    }
    const double x = toDouble(left);
    const double y = toDouble(right);
    return x < y ? -1 : (x > y ? 1 : 0);
}

SqlType decimalResult(ArithmeticOp op, const SqlType& left, const SqlType& right) {
    const int p1 = left.precision;
    const int s1 = left.scale;
    const int p2 = right.precision;
    const int s2 = right.scale;
    int precision = 0;
    int scale = 0;
    switch (op) {
        case ArithmeticOp::Add:
        case ArithmeticOp::Subtract:
            scale = std::max(s1, s2);
            precision = std::max(p1 - s1, p2 - s2) + scale + 1;
            break;
        case ArithmeticOp::Multiply:
            scale = s1 + s2;
            precision = p1 + p2 + 1;
            break;
        case ArithmeticOp::Divide:
            scale = std::max(6, s1 + p2 + 1);
            precision = p1 - s1 + s2 + scale;
            break;
        case ArithmeticOp::Modulo:
            scale = std::max(s1, s2);
            precision = std::min(p1 - s1, p2 - s2) + scale;
            break;
    }
    if (precision > kMaxDigits) {
        const int whole = precision - scale;
        if (op == ArithmeticOp::Multiply || op == ArithmeticOp::Divide) {
            // At least six decimals stay when the whole part asks for more room than is left.
            scale = whole < 32 ? std::min(scale, kMaxDigits - whole) : std::min(scale, 6);
        } else {
            scale = std::max(0, std::min(scale, kMaxDigits - std::max(p1 - s1, p2 - s2)));
        }
        precision = kMaxDigits;
    }
    return decimalType(std::max(precision, 1), scale);
}

DecimalValue calculate(ArithmeticOp op, const DecimalValue& left, const DecimalValue& right,
                       const SqlType& result) {
    if (op == ArithmeticOp::Multiply) {
        return multiply(left, right, result);
    }
    if (op == ArithmeticOp::Divide) {
        return divide(left, right, result);
    }
    const int scale = std::max(left.scale, right.scale);
    DecimalValue a = atScale(left, scale);
    const DecimalValue b = atScale(right, scale);
    if (op == ArithmeticOp::Modulo) {
        if (b.unscaled == 0) {
            raise(8134);
        }
        a.unscaled %= b.unscaled;
    } else {
        // Two numbers of 38 digits add to less than 2^127 only just: 2e38 does not fit.
        if (!fitsPrecision(a.unscaled / 2 + b.unscaled / 2, kMaxDigits) ||
            __builtin_add_overflow(a.unscaled, op == ArithmeticOp::Add ? b.unscaled : -b.unscaled,
                                   &a.unscaled)) {
            overflow();
        }
    }
    return checked(atScale(a, result.scale), result.precision);
}

}  // namespace magdb
