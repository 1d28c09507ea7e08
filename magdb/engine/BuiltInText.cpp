#include "engine/BinderFunction.h"
#include "engine/Convert.h"
#include "engine/SqlError.h"

#include <algorithm>

// Text functions: the type of the result and the function inside SQLite that does the work.

namespace magdb {

namespace {

SqlType free(const SqlType& type, int length) {
    return textType(isUnicode(type) ? TypeId::NVarChar : TypeId::VarChar, length);
}

SqlType free(const SqlType& type) {
    return free(type, type.length);
}

int fullLength(const SqlType& type) {
    return isUnicode(type) ? 4000 : 8000;
}

/// A function of one text whose result has the same type.
Bound sameText(FunctionBinder& call, const char* function) {
    const Bound value = call.text(0);
    return FunctionBinder::result(free(value.type), function, {value.sql});
}

Bound bindLen(FunctionBinder& call) {
    const Bound value = call.text(0);
    const bool large = value.type.length < 0;
    return FunctionBinder::result(plainType(large ? TypeId::BigInt : TypeId::Int), "t_len", {value.sql});
}

Bound bindDataLength(FunctionBinder& call) {
    const Bound value = call.argument(0);
    return FunctionBinder::result(plainType(value.type.length < 0 ? TypeId::BigInt : TypeId::Int),
                                  "t_datalength", {value.sql, FunctionBinder::packed(value.type)});
}

Bound bindSubstring(FunctionBinder& call) {
    const Bound value = call.argument(0);
    if (value.type.id == TypeId::VarBinary) {
        return FunctionBinder::result(value.type, "t_subbinary",
                                      {value.sql, call.integer(1).sql, call.integer(2).sql});
    }
    if (!isText(value.type) && !value.isNullLiteral()) {
        raise(8116, {messageName(value.type), "1", "substring"});
    }
    const Bound length = call.integer(2);
    int most = value.type.length;
    if (length.constant) {
        const std::int64_t wanted = std::get<std::int64_t>(*length.constant);
        most = most < 0 ? most : static_cast<int>(std::clamp<std::int64_t>(wanted, 1, most));
    }
    return FunctionBinder::result(free(value.type, value.isNullLiteral() ? 1 : most), "t_substring",
                                  {value.sql, call.integer(1).sql, length.sql});
}

Bound bindSide(FunctionBinder& call, const char* function) {
    const Bound value = call.text(0);
    const Bound length = call.integer(1);
    int most = value.type.length;
    if (length.constant) {
        const std::int64_t wanted = std::get<std::int64_t>(*length.constant);
        most =
            static_cast<int>(std::clamp<std::int64_t>(wanted, 1, most < 0 ? fullLength(value.type) : most));
    }
    return FunctionBinder::result(free(value.type, most), function, {value.sql, length.sql});
}

Bound bindReplace(FunctionBinder& call) {
    const Bound value = call.text(0);
    const Bound from = call.text(1);
    const Bound with = call.text(2);
    SqlType type = free(commonType(commonType(value.type, from.type), with.type));
    type.length = value.type.length < 0 ? -1 : fullLength(type);
    return FunctionBinder::result(type, "t_replace", {value.sql, from.sql, with.sql});
}

Bound bindReplicate(FunctionBinder& call) {
    const Bound value = call.text(0);
    SqlType type = free(value.type);
    type.length = value.type.length < 0 ? -1 : fullLength(type);
    return FunctionBinder::result(type, "t_replicate",
                                  {value.sql, call.integer(1).sql, std::to_string(type.length)});
}

Bound bindStuff(FunctionBinder& call) {
    const Bound value = call.text(0);
    const Bound with = call.text(3);
    SqlType type = free(commonType(value.type, with.type));
    type.length = value.type.length < 0 || with.type.length < 0
                      ? -1
                      : std::min(fullLength(type), value.type.length + with.type.length);
    return FunctionBinder::result(type, "t_stuff",
                                  {value.sql, call.integer(1).sql, call.integer(2).sql, with.sql});
}

Bound bindCharIndex(FunctionBinder& call) {
    const Bound wanted = call.text(0);
    const Bound value = call.text(1);
    const bool large = value.type.length < 0;
    const auto order = static_cast<int>(value.order != TextOrder::Database ? value.order : wanted.order);
    return FunctionBinder::result(
        plainType(large ? TypeId::BigInt : TypeId::Int), "t_charindex",
        {wanted.sql, value.sql, call.count() > 2 ? call.integer(2).sql : "1", std::to_string(order)});
}

Bound bindPatIndex(FunctionBinder& call) {
    const Bound pattern = call.text(0);
    const Bound value = call.text(1);
    const auto order = static_cast<int>(value.order != TextOrder::Database ? value.order : pattern.order);
    return FunctionBinder::result(plainType(value.type.length < 0 ? TypeId::BigInt : TypeId::Int),
                                  "t_patindex", {pattern.sql, value.sql, std::to_string(order)});
}

Bound bindConcat(FunctionBinder& call) {
    const bool separated = call.name == "concat_ws";
    bool unicode = false;
    int length = 0;
    std::string sql;
    for (std::size_t i = 0; i < call.count(); ++i) {
        const Bound value = call.text(i);
        unicode = unicode || isUnicode(value.type);
        length = length < 0 || value.type.length < 0 ? -1 : length + value.type.length;
        sql += (i == 0 ? "" : ",") + value.sql;
    }
    Bound result;
    result.type = textType(unicode ? TypeId::NVarChar : TypeId::VarChar,
                           length < 0 ? -1 : std::clamp(length, 1, unicode ? 4000 : 8000));
    if (separated && length >= 0) {
        result.type.length = unicode ? 4000 : 8000;
    }
    result.sql = (separated ? "t_concat_ws(" : "t_concat(") + sql + ")";
    result.nullable = false;
    return result;
}

Bound bindCodeOf(FunctionBinder& call) {
    return FunctionBinder::result(plainType(TypeId::Int), call.name == "ascii" ? "t_ascii" : "t_unicode",
                                  {call.text(0).sql});
}

Bound bindChar(FunctionBinder& call) {
    const bool national = call.name == "nchar";
    return FunctionBinder::result(textType(national ? TypeId::NChar : TypeId::Char, 1),
                                  national ? "t_nchar" : "t_char", {call.integer(0).sql});
}

Bound bindSpace(FunctionBinder& call) {
    return FunctionBinder::result(textType(TypeId::VarChar, 8000), "t_replicate",
                                  {"' '", call.integer(0).sql, "8000"});
}

Bound bindStr(FunctionBinder& call) {
    const Bound value = call.argumentAs(0, plainType(TypeId::Float));
    const Bound length = call.count() > 1 ? call.integer(1) : Bound{};
    int most = 10;
    if (length.constant) {
        most = static_cast<int>(std::clamp<std::int64_t>(std::get<std::int64_t>(*length.constant), 1, 8000));
    } else if (call.count() > 1) {
        most = 8000;
    }
    return FunctionBinder::result(
        textType(TypeId::VarChar, most), "t_str",
        {value.sql, call.count() > 1 ? length.sql : "10", call.count() > 2 ? call.integer(2).sql : "0"});
}

Bound bindQuoteName(FunctionBinder& call) {
    return FunctionBinder::result(textType(TypeId::NVarChar, 258), "t_quotename",
                                  {call.text(0).sql, call.count() > 1 ? call.text(1).sql : "'['"});
}

Bound bindTrim(FunctionBinder& call) {
    return sameText(call, call.name == "ltrim" ? "t_ltrim" : (call.name == "rtrim" ? "t_rtrim" : "t_trim"));
}

Bound bindCase(FunctionBinder& call) {
    return sameText(call, call.name == "upper" ? "t_upper" : "t_lower");
}

Bound bindTranslate(FunctionBinder& call) {
    const Bound value = call.text(0);
    return FunctionBinder::result(free(value.type), "t_translate",
                                  {value.sql, call.text(1).sql, call.text(2).sql});
}

}  // namespace

const std::vector<BuiltIn>& textFunctions() {
    static const std::vector<BuiltIn> kTable = {
        {"len", 1, 1, bindLen},
        {"datalength", 1, 1, bindDataLength},
        {"substring", 3, 3, bindSubstring},
        {"left", 2, 2, [](FunctionBinder& call) { return bindSide(call, "t_left"); }},
        {"right", 2, 2, [](FunctionBinder& call) { return bindSide(call, "t_right"); }},
        {"ltrim", 1, 1, bindTrim},
        {"rtrim", 1, 1, bindTrim},
        {"trim", 1, 1, bindTrim},
        {"upper", 1, 1, bindCase},
        {"lower", 1, 1, bindCase},
        {"reverse", 1, 1, [](FunctionBinder& call) { return sameText(call, "t_reverse"); }},
        {"replace", 3, 3, bindReplace},
        {"replicate", 2, 2, bindReplicate},
        {"stuff", 4, 4, bindStuff},
        {"charindex", 2, 3, bindCharIndex},
        {"patindex", 2, 2, bindPatIndex},
        {"concat", 2, 100, bindConcat},
        {"concat_ws", 3, 100, bindConcat},
        {"ascii", 1, 1, bindCodeOf},
        {"unicode", 1, 1, bindCodeOf},
        {"char", 1, 1, bindChar},
        {"nchar", 1, 1, bindChar},
        {"space", 1, 1, bindSpace},
        {"str", 1, 3, bindStr},
        {"quotename", 1, 2, bindQuoteName},
        {"translate", 3, 3, bindTranslate},
    };
    return kTable;
}

const BuiltIn* findBuiltIn(const std::string& name) {
    static const std::unordered_map<std::string, const BuiltIn*> kIndex = [] {
        std::unordered_map<std::string, const BuiltIn*> index;
        for (const auto* table :
             {&textFunctions(), &numberFunctions(), &dateFunctions(), &systemFunctions()}) {
            for (const BuiltIn& entry : *table) {
                index.emplace(entry.name, &entry);
            }
        }
        return index;
    }();
    const auto found = kIndex.find(name);
    return found == kIndex.end() ? catalogFunction(name) : found->second;
}

}  // namespace magdb
