#include "engine/BinderFunction.h"
#include "engine/Convert.h"
#include "engine/SqlError.h"

#include <algorithm>

// Functions of numbers and of dates.

namespace magdb {

namespace {

const SqlType kFloat = plainType(TypeId::Float);
const SqlType kInt = plainType(TypeId::Int);

/// The type that ABS, CEILING, ROUND... work in: texts count as float, small integers as int.
Bound number(FunctionBinder& call, std::size_t index) {
    Bound value = call.argument(index);
    if (isText(value.type) || value.isNullLiteral()) {
        return call.to(value, kFloat);
    }
    if (!isNumber(value.type)) {
        raise(8116, {messageName(value.type), std::to_string(index + 1), call.name});
    }
    if (isInteger(value.type) && value.type.id < TypeId::Int) {
        return call.to(value, kInt);
    }
    if (value.type.id == TypeId::Real) {
        return call.to(value, kFloat);
    }
    return value;
}

Bound bindKeeping(FunctionBinder& call) {
    const Bound value = number(call, 0);
    SqlType type = value.type;
    if (type.id == TypeId::Decimal && (call.name == "ceiling" || call.name == "floor")) {
        type.scale = 0;
    }
    return FunctionBinder::result(
        type, "t_" + call.name,
        {value.sql, FunctionBinder::packed(value.type), FunctionBinder::packed(type)});
}

Bound bindRound(FunctionBinder& call) {
    const Bound value = number(call, 0);
    return FunctionBinder::result(
        value.type, "t_round",
        {value.sql, call.integer(1).sql, call.count() > 2 ? call.integer(2).sql : "0",
         FunctionBinder::packed(value.type)});
}

Bound bindPower(FunctionBinder& call) {
    const Bound value = number(call, 0);
    SqlType type = value.type;
    if (type.id == TypeId::Decimal) {
        type.precision = 38;
    }
    return FunctionBinder::result(type, "t_power",
                                  {value.sql, call.argumentAs(1, kFloat).sql,
                                   FunctionBinder::packed(value.type), FunctionBinder::packed(type)});
}

Bound bindFloat(FunctionBinder& call) {
    return FunctionBinder::result(kFloat, "t_" + call.name, {call.argumentAs(0, kFloat).sql});
}

Bound bindLog(FunctionBinder& call) {
    const Bound value = call.argumentAs(0, kFloat);
    return FunctionBinder::result(kFloat, "t_log",
                                  {value.sql, call.count() > 1 ? call.argumentAs(1, kFloat).sql : "NULL"});
}

Bound bindAtn2(FunctionBinder& call) {
    return FunctionBinder::result(kFloat, "t_atn2",
                                  {call.argumentAs(0, kFloat).sql, call.argumentAs(1, kFloat).sql});
}

Bound bindPi(FunctionBinder&) {
    Bound bound;
    bound.type = kFloat;
    bound.constant = 3.14159265358979323846;
    bound.sql = sqliteLiteral(*bound.constant);
    return bound;
}

Bound bindRand(FunctionBinder& call) {
    return FunctionBinder::result(kFloat, "t_rand", {call.count() > 0 ? call.integer(0).sql : "NULL"});
}

// ------------------------------------------------------------------------------------------------- dates

std::string part(FunctionBinder& call) {
    const std::optional<DatePart> known = datePart(call.node.datePart);
    if (!known) {
        raise(155, {call.node.datePart, call.name});
    }
    return std::to_string(static_cast<int>(*known));
}

/// A date argument in its own type; texts and numbers count as datetime.
Bound date(FunctionBinder& call, std::size_t index) {
    Bound value = call.argument(index);
    if (isDate(value.type)) {
        return value;
    }
    if (value.isNullLiteral()) {
        value.type = plainType(TypeId::DateTime);
        return value;
    }
    return call.to(value, plainType(TypeId::DateTime));
}

Bound bindDateAdd(FunctionBinder& call) {
    const Bound count = call.argumentAs(0, kInt);
    const Bound value = date(call, 1);
    return FunctionBinder::result(value.type, "t_dateadd",
                                  {part(call), count.sql, value.sql, FunctionBinder::packed(value.type)});
}

Bound bindDateDiff(FunctionBinder& call) {
    const bool big = call.name == "datediff_big";
    return FunctionBinder::result(plainType(big ? TypeId::BigInt : TypeId::Int), "t_datediff",
                                  {part(call), date(call, 0).sql, date(call, 1).sql, big ? "1" : "0"});
}

Bound bindDatePart(FunctionBinder& call) {
    const bool name = call.name == "datename";
    return FunctionBinder::result(name ? textType(TypeId::NVarChar, 30) : kInt,
                                  name ? "t_datename" : "t_datepart", {part(call), date(call, 0).sql});
}

Bound bindYmd(FunctionBinder& call) {
    const DatePart which = call.name == "year"    ? DatePart::Year
                           : call.name == "month" ? DatePart::Month
                                                  : DatePart::Day;
    return FunctionBinder::result(kInt, "t_datepart",
                                  {std::to_string(static_cast<int>(which)), date(call, 0).sql});
}

Bound bindEoMonth(FunctionBinder& call) {
    return FunctionBinder::result(plainType(TypeId::Date), "t_eomonth",
                                  {date(call, 0).sql, call.count() > 1 ? call.integer(1).sql : "0"});
}

Bound bindDateFromParts(FunctionBinder& call) {
    return FunctionBinder::result(plainType(TypeId::Date), "t_datefromparts",
                                  {call.integer(0).sql, call.integer(1).sql, call.integer(2).sql});
}

Bound bindIsDate(FunctionBinder& call) {
    return FunctionBinder::result(kInt, "t_isdate", {call.text(0).sql});
}

}  // namespace

const std::vector<BuiltIn>& numberFunctions() {
    static const std::vector<BuiltIn> kTable = {
        {"abs", 1, 1, bindKeeping},  {"ceiling", 1, 1, bindKeeping}, {"floor", 1, 1, bindKeeping},
        {"sign", 1, 1, bindKeeping}, {"degrees", 1, 1, bindFloat},   {"radians", 1, 1, bindFloat},
        {"round", 2, 3, bindRound},  {"power", 2, 2, bindPower},     {"sqrt", 1, 1, bindFloat},
        {"square", 1, 1, bindFloat}, {"exp", 1, 1, bindFloat},       {"log", 1, 2, bindLog},
        {"log10", 1, 1, bindFloat},  {"sin", 1, 1, bindFloat},       {"cos", 1, 1, bindFloat},
        {"tan", 1, 1, bindFloat},    {"cot", 1, 1, bindFloat},       {"asin", 1, 1, bindFloat},
        {"acos", 1, 1, bindFloat},   {"atan", 1, 1, bindFloat},      {"atn2", 2, 2, bindAtn2},
        {"pi", 0, 0, bindPi},        {"rand", 0, 1, bindRand},
    };
    return kTable;
}

const std::vector<BuiltIn>& dateFunctions() {
    static const std::vector<BuiltIn> kTable = {
        {"dateadd", 2, 2, bindDateAdd},
        {"datediff", 2, 2, bindDateDiff},
        {"datediff_big", 2, 2, bindDateDiff},
        {"datepart", 1, 1, bindDatePart},
        {"datename", 1, 1, bindDatePart},
        {"year", 1, 1, bindYmd},
        {"month", 1, 1, bindYmd},
        {"day", 1, 1, bindYmd},
        {"eomonth", 1, 2, bindEoMonth},
        {"datefromparts", 3, 3, bindDateFromParts},
        {"isdate", 1, 1, bindIsDate},
    };
    return kTable;
}

}  // namespace magdb
