#include "engine/Decimal.h"
#include "engine/Functions.h"
#include "engine/SqlError.h"

#include <algorithm>
#include <cmath>

// The numeric functions of T-SQL, inside SQLite.

namespace magdb {

namespace {

constexpr double kPi = 3.14159265358979323846;

[[noreturn]] void invalidOperation() {
    ServerMessage message = serverMessage(8134);
    message.number = 3623;
    message.text = "An invalid floating point operation occurred.";
    throw SqlError(message);
}

void giveFloat(FunctionCall& call, double result) {
    if (std::isnan(result)) {
        invalidOperation();
    }
    if (!std::isfinite(result)) {
        raise(8115, {"expression", "float"});
    }
    call.giveReal(result);
}

template <double (*Function)(double)>
void floatFunction(FunctionCall& call) {
    giveFloat(call, Function(call.real(0)));
}

DecimalValue decimalArgument(const FunctionCall& call, const SqlType& type) {
    return std::get<DecimalValue>(call.value(0, type));
}

void checkInteger(const SqlType& type, Int128 number) {
    const bool big = type.id == TypeId::BigInt;
    if (number > (big ? Int128{INT64_MAX} : Int128{INT32_MAX}) ||
        number < (big ? Int128{INT64_MIN} : Int128{INT32_MIN})) {
        raise(8115, {"expression", baseName(type.id)});
    }
}

void absolute(FunctionCall& call) {
    const SqlType type = call.type(1);
    if (isApproximate(type)) {
        call.giveReal(std::fabs(call.real(0)));
    } else if (isExact(type)) {
        DecimalValue value = decimalArgument(call, type);
        value.unscaled = value.unscaled < 0 ? -value.unscaled : value.unscaled;
        call.give(value);
    } else {
        const Int128 number = call.integer(0);
        checkInteger(type, number < 0 ? -number : number);
        call.giveInteger(static_cast<std::int64_t>(number < 0 ? -number : number));
    }
}

void sign(FunctionCall& call) {
    const SqlType type = call.type(1);
    if (isApproximate(type)) {
        call.giveReal(call.real(0) > 0 ? 1 : (call.real(0) < 0 ? -1 : 0));
    } else if (isExact(type)) {
        DecimalValue value = decimalArgument(call, type);
        value.unscaled = value.unscaled == 0 ? 0 : powerOfTen(type.scale) * (value.unscaled > 0 ? 1 : -1);
        call.give(value);
    } else {
        call.giveInteger(call.integer(0) > 0 ? 1 : (call.integer(0) < 0 ? -1 : 0));
    }
}

/// FLOOR (up false) and CEILING.
void wholeNumber(FunctionCall& call, bool up) {
    const SqlType type = call.type(1);
    if (isApproximate(type)) {
        call.giveReal(up ? std::ceil(call.real(0)) : std::floor(call.real(0)));
        return;
    }
    if (!isExact(type)) {
        call.giveArgument(0);
        return;
    }
    const DecimalValue value = decimalArgument(call, type);
    const Int128 unit = powerOfTen(type.scale);
    Int128 whole = value.unscaled / unit;
    const Int128 rest = value.unscaled % unit;
    whole += up && rest > 0 ? 1 : (!up && rest < 0 ? -1 : 0);
    const SqlType result = call.type(2);
    call.give(DecimalValue{whole * powerOfTen(result.scale), result.scale});
}

void round(FunctionCall& call) {
    const SqlType type = call.type(3);
    const int digits = static_cast<int>(std::clamp<std::int64_t>(call.integer(1), -40, 40));
    const bool cut = call.integer(2) != 0;
    if (isApproximate(type)) {
        const double factor = std::pow(10.0, digits);
        const double scaled = call.real(0) * factor;
        const double whole = cut ? std::trunc(scaled) : std::round(scaled);
        giveFloat(call, std::isfinite(scaled) ? whole / factor : call.real(0));
        return;
    }
    DecimalValue value = isExact(type) ? decimalArgument(call, type) : DecimalValue{call.integer(0), 0};
    const int drop = value.scale - digits;
    if (drop > 0) {
        if (drop > 38) {
            value.unscaled = 0;
        } else {
            const Int128 unit = powerOfTen(drop);
            const Int128 rest = value.unscaled % unit;
            value.unscaled -= rest;
            if (!cut && (rest < 0 ? -rest : rest) >= unit - (rest < 0 ? -rest : rest)) {
                value.unscaled += rest < 0 ? -unit : unit;
            }
        }
    }
    if (isExact(type)) {
        if (type.id == TypeId::Decimal && !fitsPrecision(value.unscaled, type.precision)) {
            raise(8115, {"expression", "numeric"});
        }
        call.give(value);
        return;
    }
    checkInteger(type, value.unscaled);
    call.giveInteger(static_cast<std::int64_t>(value.unscaled));
}

void power(FunctionCall& call) {
    const SqlType type = call.type(2);
    const SqlType result = call.type(3);
    const double base = isExact(type) ? toDouble(decimalArgument(call, type)) : call.real(0);
    const double number = std::pow(base, call.real(1));
    if (std::isnan(number)) {
        invalidOperation();
    }
    if (isApproximate(result)) {
        giveFloat(call, number);
    } else if (isExact(result)) {
        const std::optional<DecimalValue> value = fromDouble(number, result.scale);
        if (!value || (result.id == TypeId::Decimal && !fitsPrecision(value->unscaled, result.precision))) {
            raise(8115, {"expression", messageName(result)});
        }
        call.give(*value);
    } else {
        if (std::fabs(number) >= 9.2e18) {
            raise(8115, {"expression", baseName(result.id)});
        }
        checkInteger(result, static_cast<Int128>(number));
        call.giveInteger(static_cast<std::int64_t>(number));
    }
}

void logarithm(FunctionCall& call) {
    if (call.isNull(0)) {
        return;
    }
    const double value = call.real(0);
    if (value <= 0) {
        invalidOperation();
    }
    giveFloat(call, call.isNull(1) ? std::log(value) : std::log(value) / std::log(call.real(1)));
}

double squareRoot(double x) {
    return std::sqrt(x);
}
double square(double x) {
    return x * x;
}
double exponential(double x) {
    return std::exp(x);
}
double logarithm10(double x) {
    return x <= 0 ? std::nan("") : std::log10(x);
}
double sine(double x) {
    return std::sin(x);
}
double cosine(double x) {
    return std::cos(x);
}
double tangent(double x) {
    return std::tan(x);
}
double cotangent(double x) {
    return 1 / std::tan(x);
}
double arcSine(double x) {
    return std::asin(x);
}
double arcCosine(double x) {
    return std::acos(x);
}
double arcTangent(double x) {
    return std::atan(x);
}
double degrees(double x) {
    return x * 180 / kPi;
}
double radians(double x) {
    return x * kPi / 180;
}

}  // namespace

const std::vector<FunctionEntry>& numberFunctionEntries() {
    static const std::vector<FunctionEntry> kTable = {
        {"t_abs", 3, FunctionEntry::Strict, absolute},
        {"t_sign", 3, FunctionEntry::Strict, sign},
        {"t_floor", 3, FunctionEntry::Strict, [](FunctionCall& c) { wholeNumber(c, false); }},
        {"t_ceiling", 3, FunctionEntry::Strict, [](FunctionCall& c) { wholeNumber(c, true); }},
        {"t_round", 4, FunctionEntry::Strict, round},
        {"t_power", 4, FunctionEntry::Strict, power},
        {"t_sqrt", 1, FunctionEntry::Strict, floatFunction<squareRoot>},
        {"t_square", 1, FunctionEntry::Strict, floatFunction<square>},
        {"t_exp", 1, FunctionEntry::Strict, floatFunction<exponential>},
        {"t_log", 2, FunctionEntry::Plain, logarithm},
        {"t_log10", 1, FunctionEntry::Strict, floatFunction<logarithm10>},
        {"t_sin", 1, FunctionEntry::Strict, floatFunction<sine>},
        {"t_cos", 1, FunctionEntry::Strict, floatFunction<cosine>},
        {"t_tan", 1, FunctionEntry::Strict, floatFunction<tangent>},
        {"t_cot", 1, FunctionEntry::Strict, floatFunction<cotangent>},
        {"t_asin", 1, FunctionEntry::Strict, floatFunction<arcSine>},
        {"t_acos", 1, FunctionEntry::Strict, floatFunction<arcCosine>},
        {"t_atan", 1, FunctionEntry::Strict, floatFunction<arcTangent>},
        {"t_atn2", 2, FunctionEntry::Strict,
         [](FunctionCall& c) { c.giveReal(std::atan2(c.real(0), c.real(1))); }},
        {"t_degrees", 1, FunctionEntry::Strict, floatFunction<degrees>},
        {"t_radians", 1, FunctionEntry::Strict, floatFunction<radians>},
    };
    return kTable;
}

}  // namespace magdb
