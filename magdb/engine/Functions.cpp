#include "engine/Functions.h"

#include "engine/DateTime.h"
#include "engine/Decimal.h"
#include "engine/Like.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <sqlite3.h>

#include <cmath>
#include <memory>

// Registration, and the functions of values in general: conversions, checks of arithmetic, dates.

namespace magdb {

bool FunctionCall::isNull(int index) const {
    return sqlite3_value_type(m_arguments[index]) == SQLITE_NULL;
}
bool FunctionCall::isReal(int index) const {
    return sqlite3_value_type(m_arguments[index]) == SQLITE_FLOAT;
}
std::int64_t FunctionCall::integer(int index) const {
    return sqlite3_value_int64(m_arguments[index]);
}
double FunctionCall::real(int index) const {
    return sqlite3_value_double(m_arguments[index]);
}

std::string_view FunctionCall::text(int index) const {
    const auto* data = reinterpret_cast<const char*>(sqlite3_value_text(m_arguments[index]));
    return data == nullptr
               ? std::string_view()
               : std::string_view(data, static_cast<std::size_t>(sqlite3_value_bytes(m_arguments[index])));
}

SqlType FunctionCall::type(int index) const {
    return unpackType(integer(index));
}

Value FunctionCall::value(int index, const SqlType& type) const {
    return readValue(m_arguments[index], type);
}

void FunctionCall::giveText(std::string_view result) {
    sqlite3_result_text64(m_context, result.data() != nullptr ? result.data() : "", result.size(),
                          SQLITE_TRANSIENT, SQLITE_UTF8);
}

void FunctionCall::giveInteger(std::int64_t result) {
    sqlite3_result_int64(m_context, result);
}
void FunctionCall::giveReal(double result) {
    sqlite3_result_double(m_context, result);
}
void FunctionCall::giveNull() {
    sqlite3_result_null(m_context);
}
void FunctionCall::giveArgument(int index) {
    sqlite3_result_value(m_context, m_arguments[index]);
}

namespace {

struct Registration {
    const FunctionEntry* entry;
    Runtime* runtime;
};

void invoke(sqlite3_context* context, int count, sqlite3_value** arguments) {
    const auto* registration = static_cast<const Registration*>(sqlite3_user_data(context));
    try {
        FunctionCall call(*registration->runtime, context, count, arguments);
        if (registration->entry->kind == FunctionEntry::Strict) {
            for (int i = 0; i < count; ++i) {
                if (call.isNull(i)) {
                    return;
                }
            }
        }
        registration->entry->call(call);
    } catch (...) {
        registration->runtime->pending = std::current_exception();
        sqlite3_result_error(context, "T-SQL error", -1);
    }
}

template <std::int64_t Low, std::int64_t High>
void checkRange(FunctionCall& call, const char* type) {
    const std::int64_t number = call.integer(0);
    if (call.isReal(0) || number < Low || number > High) {
        raise(8115, {"expression", type});
    }
    call.giveInteger(number);
}

void divide(FunctionCall& call) {
    const std::int64_t divisor = call.integer(1);
    if (divisor == 0) {
        raise(8134);
    }
    if (divisor == -1) {
        // The most negative number has no counterpart; a float result fails the range check around this.
        if (call.integer(0) == INT64_MIN) {
            call.giveReal(9223372036854775808.0);
            return;
        }
        call.giveInteger(-call.integer(0));
        return;
    }
    call.giveInteger(call.integer(0) / divisor);
}

void modulo(FunctionCall& call) {
    const std::int64_t divisor = call.integer(1);
    if (divisor == 0) {
        raise(8134);
    }
    call.giveInteger(divisor == -1 ? 0 : call.integer(0) % divisor);
}

void convertValue(FunctionCall& call) {
    if (call.isNull(0)) {
        return;
    }
    const SqlType from = call.type(1);
    call.give(convert(call.value(0, from), from, call.type(2), static_cast<int>(call.integer(3)),
                      call.runtime.settings));
}

void tryConvert(FunctionCall& call) {
    try {
        convertValue(call);
    } catch (const SqlError&) {
        call.giveNull();
    }
}

void decimalArithmetic(FunctionCall& call) {
    DecimalValue left =
        std::get<DecimalValue>(call.value(1, decimalType(38, static_cast<int>(call.integer(2)))));
    DecimalValue right =
        std::get<DecimalValue>(call.value(3, decimalType(38, static_cast<int>(call.integer(4)))));
    const SqlType type = call.type(5);
    const bool money = type.id == TypeId::Money;
    DecimalValue result = calculate(static_cast<ArithmeticOp>(call.integer(0)), left, right, type);
    if (money && (result.unscaled > INT64_MAX || result.unscaled < INT64_MIN)) {
        raise(8115, {"expression", "money"});
    }
    call.give(result);
}

void decimalNegate(FunctionCall& call) {
    DecimalValue value = std::get<DecimalValue>(call.value(0, decimalType(38, 0)));
    value.unscaled = -value.unscaled;
    call.give(value);
}

void floatArithmetic(FunctionCall& call) {
    const double a = call.real(1);
    const double b = call.real(2);
    double result = 0;
    switch (static_cast<ArithmeticOp>(call.integer(0))) {
        case ArithmeticOp::Add:
            result = a + b;
            break;
        case ArithmeticOp::Subtract:
            result = a - b;
            break;
        case ArithmeticOp::Multiply:
            result = a * b;
            break;
        default:
            if (b == 0) {
                raise(8134);
            }
            result = a / b;
            break;
    }
    if (!std::isfinite(result)) {
        raise(8115, {"expression", "float"});
    }
    call.giveReal(result);
}

void like(FunctionCall& call) {
    for (int i = 0; i < call.count(); ++i) {
        if (call.isNull(i)) {
            return;
        }
    }
    const std::int64_t flags = call.integer(2);
    const auto answer = [&](const LikePattern& compiled) {
        call.giveInteger(compiled.matches(call.text(0), (flags & kLikeTrailingBlanks) != 0) ? 1 : 0);
    };
    std::optional<char32_t> escape;
    if (call.count() > 3) {
        const std::u16string units = toUtf16(call.text(3));
        if (units.size() != 1) {
            raise(506, {call.text(3)});
        }
        escape = units.front();
    }
    // The pattern of a statement rarely changes from row to row.
    auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(call.context(), 1));
    if (pattern != nullptr && pattern->text() == call.text(1)) {
        answer(*pattern);
        return;
    }
    auto fresh = std::make_unique<LikePattern>(call.text(1), escape, (flags & ~kLikeTrailingBlanks) == 0);
    answer(*fresh);
    sqlite3_set_auxdata(call.context(), 1, fresh.release(),
                        [](void* object) { delete static_cast<LikePattern*>(object); });
}

DateTimeValue dateArgument(const FunctionCall& call, int index) {
    return decodeDateTime(call.integer(index));
}

void giveDate(FunctionCall& call, const std::optional<DateTimeValue>& date, const char* type) {
    if (!date || (std::string_view(type) == "datetime" && !isInRange(date->days))) {
        raise(517, {type});
    }
    call.give(*date);
}

void dateAdd(FunctionCall& call) {
    const auto part = static_cast<DatePart>(call.integer(0));
    const bool date = call.type(3).id == TypeId::Date;
    if (date && part >= DatePart::Hour) {
        raise(9810);
    }
    giveDate(call, addPart(part, call.integer(1), dateArgument(call, 2)), date ? "date" : "datetime");
}

void dateDiff(FunctionCall& call) {
    const std::int64_t count =
        partsBetween(static_cast<DatePart>(call.integer(0)), dateArgument(call, 1), dateArgument(call, 2));
    if (call.integer(3) == 0 && (count > INT32_MAX || count < INT32_MIN)) {
        raise(535);
    }
    call.giveInteger(count);
}

void datePartOf(FunctionCall& call) {
    call.giveInteger(partOf(static_cast<DatePart>(call.integer(0)), dateArgument(call, 1),
                            call.runtime.settings.firstWeekday));
}

void dateName(FunctionCall& call) {
    call.giveText(partName(static_cast<DatePart>(call.integer(0)), dateArgument(call, 1),
                           call.runtime.settings.firstWeekday));
}

void dateArithmetic(FunctionCall& call) {
    const std::int64_t sum = call.integer(1) + call.integer(0) * call.integer(2);
    giveDate(call, decodeDateTime(sum), "datetime");
}

void endOfMonth(FunctionCall& call) {
    const std::optional<DateTimeValue> moved =
        addPart(DatePart::Month, call.integer(1), dateArgument(call, 0));
    if (!moved) {
        raise(517, {"date"});
    }
    CivilDate date = civilFromDays(moved->days);
    date.day = daysInMonth(date.year, date.month);
    call.give(DateTimeValue{daysFromCivil(date), 0});
}

void dateFromParts(FunctionCall& call) {
    const std::int64_t year = call.integer(0);
    const std::int64_t month = call.integer(1);
    const std::int64_t day = call.integer(2);
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 ||
        day > daysInMonth(static_cast<int>(year), static_cast<int>(month))) {
        raise(289);
    }
    call.give(DateTimeValue{
        daysFromCivil({static_cast<int>(year), static_cast<int>(month), static_cast<int>(day)}), 0});
}

void isDateText(FunctionCall& call) {
    DateTimeValue value;
    const std::string_view text = call.isNull(0) ? std::string_view() : call.text(0);
    const bool good = !trimRight(text).empty() &&
                      parseDateTime(text, call.runtime.settings.dateOrder, value) == DateFault::None &&
                      isInRange(value.days);
    call.giveInteger(good ? 1 : 0);
}

void newId(FunctionCall& call) {
    Bytes bytes(16);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(call.runtime.random() & 0xFF);
    }
    bytes[7] = static_cast<std::uint8_t>((bytes[7] & 0x0F) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
    call.give(convert(bytes, textType(TypeId::VarBinary, 16), plainType(TypeId::UniqueIdentifier)));
}

void randomNumber(FunctionCall& call) {
    if (!call.isNull(0)) {
        call.runtime.random.seed(static_cast<std::uint64_t>(call.integer(0)));
    }
    call.giveReal(std::generate_canonical<double, 53>(call.runtime.random));
}

void catalogCall(FunctionCall& call) {
    std::vector<Value> arguments;
    for (int i = 1; i < call.count(); ++i) {
        const int kind = sqlite3_value_type(call.arguments()[i]);
        arguments.push_back(kind == SQLITE_NULL      ? Value()
                            : kind == SQLITE_INTEGER ? Value(call.integer(i))
                                                     : Value(std::string(call.text(i))));
    }
    call.give(call.runtime.catalogFunction(call.text(0), arguments));
}

void level(FunctionCall& call) {
    if (call.integer(1) > 0 && call.integer(0) > call.integer(1)) {
        raise(530, {std::to_string(call.integer(1))});
    }
    call.giveInteger(call.integer(0));
}

}  // namespace

const std::vector<FunctionEntry>& valueFunctionEntries() {
    static const std::vector<FunctionEntry> kTable = {
        {"ck1", 1, FunctionEntry::Strict, [](FunctionCall& c) { checkRange<0, 255>(c, "tinyint"); }},
        {"ck2", 1, FunctionEntry::Strict, [](FunctionCall& c) { checkRange<-32768, 32767>(c, "smallint"); }},
        {"ck4", 1, FunctionEntry::Strict,
         [](FunctionCall& c) { checkRange<INT32_MIN, INT32_MAX>(c, "int"); }},
        {"ck8", 1, FunctionEntry::Strict,
         [](FunctionCall& c) { checkRange<INT64_MIN, INT64_MAX>(c, "bigint"); }},
        {"t_div", 2, FunctionEntry::Strict, divide},
        {"t_mod", 2, FunctionEntry::Strict, modulo},
        {"t_conv", 4, FunctionEntry::Plain, convertValue},
        {"t_try", 4, FunctionEntry::Plain, tryConvert},
        {"t_dec", 6, FunctionEntry::Strict, decimalArithmetic},
        {"t_neg", 1, FunctionEntry::Strict, decimalNegate},
        {"t_flt", 3, FunctionEntry::Strict, floatArithmetic},
        {"t_like", -1, FunctionEntry::Plain, like},
        {"t_dateadd", 4, FunctionEntry::Strict, dateAdd},
        {"t_datediff", 4, FunctionEntry::Strict, dateDiff},
        {"t_datepart", 2, FunctionEntry::Strict, datePartOf},
        {"t_datename", 2, FunctionEntry::Strict, dateName},
        {"t_dtarith", 3, FunctionEntry::Strict, dateArithmetic},
        {"t_eomonth", 2, FunctionEntry::Strict, endOfMonth},
        {"t_datefromparts", 3, FunctionEntry::Strict, dateFromParts},
        {"t_isdate", 1, FunctionEntry::Plain, isDateText},
        {"t_newid", 0, FunctionEntry::Volatile, newId},
        {"t_rand", 1, FunctionEntry::Volatile, randomNumber},
        {"t_catalog", -1, FunctionEntry::Volatile, catalogCall},
        {"t_level", 2, FunctionEntry::Strict, level},
        {"t_now", 1, FunctionEntry::Volatile,
         [](FunctionCall& c) { c.give(c.runtime.variableNow(static_cast<int>(c.integer(0)))); }},
        {"t_udf", -1, FunctionEntry::Volatile,
         [](FunctionCall& c) {
             c.give(c.runtime.callFunction(static_cast<std::int32_t>(c.integer(0)), c.arguments() + 1,
                                           c.count() - 1));
         }},
    };
    return kTable;
}

void registerFunctions(sqlite3* connection, Runtime& runtime) {
    for (const auto* table : {&valueFunctionEntries(), &textFunctionEntries(), &numberFunctionEntries()}) {
        for (const FunctionEntry& entry : *table) {
            const int flags =
                SQLITE_UTF8 | (entry.kind == FunctionEntry::Volatile ? 0 : SQLITE_DETERMINISTIC);
            auto registration = std::make_unique<Registration>(Registration{&entry, &runtime});
            sqlite3_create_function_v2(connection, entry.name, entry.arguments, flags, registration.release(),
                                       invoke, nullptr, nullptr,
                                       [](void* object) { delete static_cast<Registration*>(object); });
        }
    }
    registerAggregates(connection, runtime);
}

}  // namespace magdb
