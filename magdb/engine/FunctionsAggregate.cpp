#include "engine/Collation.h"
#include "engine/Decimal.h"
#include "engine/Functions.h"
#include "engine/SqlError.h"

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

// Aggregates inside SQLite. Each holds one State, which SQLite allocates as zeros; those that work over
// windows can also take a value back.

namespace magdb {

namespace {

/// The state of an aggregate with a C++ object: made at the first step, deleted at the end.
template <class State>
State* stateOf(sqlite3_context* context, bool create) {
    auto** slot = static_cast<State**>(
        sqlite3_aggregate_context(context, create ? static_cast<int>(sizeof(State*)) : 0));
    if (slot == nullptr) {
        return nullptr;
    }
    if (*slot == nullptr && create) {
        *slot = new State();
    }
    return *slot;
}

template <class State>
void dispose(sqlite3_context* context) {
    auto** slot = static_cast<State**>(sqlite3_aggregate_context(context, 0));
    if (slot != nullptr) {
        delete *slot;
        *slot = nullptr;
    }
}

Runtime& runtimeOf(sqlite3_context* context) {
    return *static_cast<Runtime*>(sqlite3_user_data(context));
}

/// Runs a body and hands its T-SQL error to the session.
template <class Body>
void guarded(sqlite3_context* context, Body body) {
    try {
        body();
    } catch (...) {
        runtimeOf(context).pending = std::current_exception();
        sqlite3_result_error(context, "T-SQL error", -1);
    }
}

/// SUM, AVG and the deviations in one: exact integer and decimal sums, float sums.
struct Total {
    Int128 exact = 0;
    double approximate = 0;
    double squares = 0;
    std::int64_t count = 0;
    SqlType from;
    SqlType to;
};

enum class Number : std::uint8_t { Int4, Int8, Decimal, Float };

template <Number Kind, int Direction>
void addTotal(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) {
        return;
    }
    guarded(context, [&] {
        Total& total = *stateOf<Total>(context, true);
        total.count += Direction;
        if constexpr (Kind == Number::Float) {
            const double value = sqlite3_value_double(arguments[0]);
            total.approximate += Direction * value;
            total.squares += Direction * value * value;
        } else if constexpr (Kind == Number::Decimal) {
            if (count > 2) {
                total.from = unpackType(sqlite3_value_int64(arguments[1]));
                total.to = unpackType(sqlite3_value_int64(arguments[2]));
            }
            const Int128 value = std::get<DecimalValue>(readValue(arguments[0], total.from)).unscaled;
            if (__builtin_add_overflow(total.exact, Direction * value, &total.exact)) {
                raise(8115, {"expression", "numeric"});
            }
        } else {
            total.exact += Int128{Direction} * sqlite3_value_int64(arguments[0]);
        }
    });
}

template <Number Kind, bool Average>
void giveTotal(sqlite3_context* context) {
    const Total* total = stateOf<Total>(context, false);
    if (total == nullptr || total->count == 0) {
        sqlite3_result_null(context);
        return;
    }
    guarded(context, [&] {
        if constexpr (Kind == Number::Float) {
            const double value =
                Average ? total->approximate / static_cast<double>(total->count) : total->approximate;
            if (!std::isfinite(value)) {
                raise(8115, {"expression", "float"});
            }
            sqlite3_result_double(context, value);
        } else if constexpr (Kind == Number::Decimal) {
            DecimalValue value{total->exact, total->from.scale};
            if (Average) {
                value = calculate(ArithmeticOp::Divide, value, DecimalValue{total->count, 0}, total->to);
            }
            if (!fitsPrecision(value.unscaled, 38) ||
                (total->to.id == TypeId::Money &&
                 (value.unscaled > INT64_MAX || value.unscaled < INT64_MIN))) {
                raise(8115, {"expression", total->to.id == TypeId::Money ? "money" : "numeric"});
            }
            returnValue(context, value);
        } else {
            const Int128 value = Average ? total->exact / total->count : total->exact;
            const bool big = Kind == Number::Int8;
            if (value > (big ? Int128{INT64_MAX} : Int128{INT32_MAX}) ||
                value < (big ? Int128{INT64_MIN} : Int128{INT32_MIN})) {
                raise(8115, {"expression", big ? "bigint" : "int"});
            }
            sqlite3_result_int64(context, static_cast<std::int64_t>(value));
        }
    });
}

template <Number Kind, bool Average>
void endTotal(sqlite3_context* context) {
    giveTotal<Kind, Average>(context);
    dispose<Total>(context);
}

template <Number Kind, bool Average>
void registerTotal(sqlite3* connection, Runtime& runtime, const char* name, int arguments) {
    sqlite3_create_window_function(connection, name, arguments, SQLITE_UTF8, &runtime, addTotal<Kind, 1>,
                                   endTotal<Kind, Average>, giveTotal<Kind, Average>, addTotal<Kind, -1>,
                                   nullptr);
}

/// VAR and STDEV; of a sample (divided by n - 1) or of the whole.
template <bool Root, bool Whole>
void endDeviation(sqlite3_context* context) {
    const Total* total = stateOf<Total>(context, false);
    const double n = total == nullptr ? 0 : static_cast<double>(total->count);
    if (n < 1 || (!Whole && n < 2)) {
        sqlite3_result_null(context);
    } else {
        const double variance = std::max(
            0.0, (total->squares - total->approximate * total->approximate / n) / (Whole ? n : n - 1));
        sqlite3_result_double(context, Root ? std::sqrt(variance) : variance);
    }
    dispose<Total>(context);
}

/// A scalar subquery: its one value, or error 512.
struct Single {
    sqlite3_value* value = nullptr;
    bool any = false;
    Single() = default;
    Single(const Single&) = delete;
    Single& operator=(const Single&) = delete;
    ~Single() { sqlite3_value_free(value); }
};

void addSingle(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    guarded(context, [&] {
        Single& single = *stateOf<Single>(context, true);
        if (single.any) {
            raise(512);
        }
        single.any = true;
        single.value = sqlite3_value_dup(arguments[0]);
    });
}

void endSingle(sqlite3_context* context) {
    const Single* single = stateOf<Single>(context, false);
    if (single == nullptr || single->value == nullptr) {
        sqlite3_result_null(context);
    } else {
        sqlite3_result_value(context, single->value);
    }
    dispose<Single>(context);
}

/// STRING_AGG: texts, and the keys of WITHIN GROUP to sort them by at the end.
struct Joined {
    struct Item {
        std::string text;
        std::vector<sqlite3_value*> keys;
    };
    std::vector<Item> items;
    std::vector<bool> descending;
    std::string separator;
    Joined() = default;
    Joined(const Joined&) = delete;
    Joined& operator=(const Joined&) = delete;
    ~Joined() {
        for (const Item& item : items) {
            for (sqlite3_value* key : item.keys) {
                sqlite3_value_free(key);
            }
        }
    }
};

std::string_view textOf(sqlite3_value* value) {
    const auto* data = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {data != nullptr ? data : "", static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

int compareKeys(sqlite3_value* a, sqlite3_value* b) {
    const int kindA = sqlite3_value_type(a);
    const int kindB = sqlite3_value_type(b);
    if (kindA == SQLITE_NULL || kindB == SQLITE_NULL) {
        return (kindA == SQLITE_NULL ? 0 : 1) - (kindB == SQLITE_NULL ? 0 : 1);
    }
    if (kindA == SQLITE_TEXT) {
        return collate(textOf(a), textOf(b));
    }
    if (kindA == SQLITE_BLOB) {
        const std::string_view x(static_cast<const char*>(sqlite3_value_blob(a)),
                                 static_cast<std::size_t>(sqlite3_value_bytes(a)));
        const std::string_view y(static_cast<const char*>(sqlite3_value_blob(b)),
                                 static_cast<std::size_t>(sqlite3_value_bytes(b)));
        return x.compare(y);
    }
    if (kindA == SQLITE_INTEGER && kindB == SQLITE_INTEGER) {
        const std::int64_t x = sqlite3_value_int64(a);
        const std::int64_t y = sqlite3_value_int64(b);
        return x < y ? -1 : (x > y ? 1 : 0);
    }
    const double x = sqlite3_value_double(a);
    const double y = sqlite3_value_double(b);
    return x < y ? -1 : (x > y ? 1 : 0);
}

void addJoined(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) {
        return;
    }
    guarded(context, [&] {
        Joined& joined = *stateOf<Joined>(context, true);
        joined.separator = textOf(arguments[1]);
        Joined::Item item;
        item.text = textOf(arguments[0]);
        joined.descending.clear();
        for (int i = 2; i + 1 < count; i += 2) {
            item.keys.push_back(sqlite3_value_dup(arguments[i]));
            joined.descending.push_back(sqlite3_value_int64(arguments[i + 1]) != 0);
        }
        joined.items.push_back(std::move(item));
    });
}

void endJoined(sqlite3_context* context) {
    Joined* joined = stateOf<Joined>(context, false);
    if (joined == nullptr) {
        sqlite3_result_null(context);
        return;
    }
    std::stable_sort(joined->items.begin(), joined->items.end(),
                     [&](const Joined::Item& a, const Joined::Item& b) {
                         for (std::size_t i = 0; i < a.keys.size(); ++i) {
                             const int order = compareKeys(a.keys[i], b.keys[i]);
                             if (order != 0) {
                                 return joined->descending[i] ? order > 0 : order < 0;
                             }
                         }
                         return false;
                     });
    std::string text;
    for (std::size_t i = 0; i < joined->items.size(); ++i) {
        text += (i == 0 ? "" : joined->separator) + joined->items[i].text;
    }
    sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    dispose<Joined>(context);
}

void registerPlain(sqlite3* connection, Runtime& runtime, const char* name, int arguments,
                   void (*step)(sqlite3_context*, int, sqlite3_value**), void (*end)(sqlite3_context*)) {
    sqlite3_create_function_v2(connection, name, arguments, SQLITE_UTF8, &runtime, nullptr, step, end,
                               nullptr);
}

}  // namespace

void registerAggregates(sqlite3* connection, Runtime& runtime) {
    registerTotal<Number::Int4, false>(connection, runtime, "t_sum_int4", 1);
    registerTotal<Number::Int8, false>(connection, runtime, "t_sum_int8", 1);
    registerTotal<Number::Int4, true>(connection, runtime, "t_avg_int4", 1);
    registerTotal<Number::Int8, true>(connection, runtime, "t_avg_int8", 1);
    registerTotal<Number::Decimal, false>(connection, runtime, "t_sum_dec", 3);
    registerTotal<Number::Decimal, true>(connection, runtime, "t_avg_dec", 3);
    registerTotal<Number::Float, false>(connection, runtime, "t_sum_flt", 1);
    registerTotal<Number::Float, true>(connection, runtime, "t_avg_flt", 1);
    registerPlain(connection, runtime, "t_var", 1, addTotal<Number::Float, 1>, endDeviation<false, false>);
    registerPlain(connection, runtime, "t_varp", 1, addTotal<Number::Float, 1>, endDeviation<false, true>);
    registerPlain(connection, runtime, "t_stdev", 1, addTotal<Number::Float, 1>, endDeviation<true, false>);
    registerPlain(connection, runtime, "t_stdevp", 1, addTotal<Number::Float, 1>, endDeviation<true, true>);
    registerPlain(connection, runtime, "t_single", 1, addSingle, endSingle);
    registerPlain(connection, runtime, "t_string_agg", -1, addJoined, endJoined);
}

}  // namespace magdb
