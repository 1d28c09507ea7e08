#include "engine/BinderFunction.h"
#include "engine/Convert.h"
#include "engine/SqlError.h"
#include "engine/SystemCatalogue.h"
#include "engine/Text.h"

#include <algorithm>
#include <mutex>

// Functions of values in general (ISNULL, COALESCE, NULLIF, IIF, CHOOSE) and those that ask the catalogue.

namespace magdb {

namespace {

const SqlType kInt = plainType(TypeId::Int);
const SqlType kName = textType(TypeId::NVarChar, 128);

Bound bindIsNull(FunctionBinder& call) {
    const Bound value = call.argument(0);
    const Bound other = call.argument(1);
    Bound result;
    result.type = value.isNullLiteral() ? other.type : value.type;
    if (result.type.id == TypeId::Null) {
        result.type = kInt;
    }
    result.nullable = value.nullable && other.nullable;
    result.order = value.order;
    result.sql = value.isNullLiteral() ? call.to(other, result.type).sql
                                       : "ifnull(" + value.sql + "," + call.to(other, result.type).sql + ")";
    return result;
}

Bound bindCoalesce(FunctionBinder& call) {
    std::vector<Bound> values;
    SqlType type;
    Bound result;
    for (std::size_t i = 0; i < call.count(); ++i) {
        values.push_back(call.argument(i));
        const Bound& value = values.back();
        type = type.id == TypeId::Decimal && value.digits > 0 ? commonType(type, asDecimal(value))
                                                              : commonType(type, value.type);
        result.nullable = result.nullable && value.nullable;
    }
    if (type.id == TypeId::Null) {
        raise(4127);
    }
    result.type = type;
    result.sql = "coalesce(";
    for (std::size_t i = 0; i < values.size(); ++i) {
        result.sql += (i == 0 ? "" : ",") + call.to(values[i], type).sql;
    }
    result.sql += ")";
    return result;
}

Bound bindNullIf(FunctionBinder& call) {
    const Bound left = call.argument(0);
    const Bound right = call.argument(1);
    if (left.isNullLiteral()) {
        raise(4151);
    }
    Bound result = left;
    result.constant.reset();
    result.digits = 0;
    result.nullable = true;
    result.identity = false;
    result.name.clear();
    result.sql = "(CASE WHEN " + call.compareEqual(left, right) + " THEN NULL ELSE " + left.sql + " END)";
    return result;
}

Bound bindIif(FunctionBinder& call) {
    const std::string condition = call.condition(0);
    const Bound yes = call.argument(1);
    const Bound no = call.argument(2);
    Bound result;
    result.type = commonType(yes.type, no.type);
    if (result.type.id == TypeId::Null) {
        raise(8133);
    }
    result.nullable = yes.nullable || no.nullable;
    result.sql = "(CASE WHEN " + condition + " THEN " + call.to(yes, result.type).sql + " ELSE " +
                 call.to(no, result.type).sql + " END)";
    return result;
}

Bound bindChoose(FunctionBinder& call) {
    const Bound index = call.argumentAs(0, kInt);
    std::vector<Bound> values;
    SqlType type;
    for (std::size_t i = 1; i < call.count(); ++i) {
        values.push_back(call.argument(i));
        type = commonType(type, values.back().type);
    }
    Bound result;
    result.type = type;
    result.sql = "(CASE " + index.sql;
    for (std::size_t i = 0; i < values.size(); ++i) {
        result.sql += " WHEN " + std::to_string(i + 1) + " THEN " + call.to(values[i], type).sql;
    }
    result.sql += " END)";
    return result;
}

Bound bindIsNumeric(FunctionBinder& call) {
    const Bound value = call.argument(0);
    if (isNumber(value.type)) {
        Bound result;
        result.type = kInt;
        result.sql = "(" + value.sql + " IS NOT NULL)";
        return result;
    }
    if (!isText(value.type)) {
        Bound result;
        result.type = kInt;
        result.sql = "0";
        return result;
    }
    return FunctionBinder::result(kInt, "t_isnumeric", {value.sql});
}

Bound bindNewId(FunctionBinder&) {
    Bound result = FunctionBinder::result(plainType(TypeId::UniqueIdentifier), "t_newid", {});
    result.nullable = false;
    return result;
}

/// Functions of the catalogue: t_catalog('name', arguments...) with texts and integers as they come.
Bound bindCatalog(FunctionBinder& call) {
    const MetadataFunction* function = findMetadataFunction(call.name);
    Bound result;
    result.type = function->result;
    std::string sql = "t_catalog('" + call.name + "'";
    for (std::size_t i = 0; i < call.count(); ++i) {
        const Bound value = call.argument(i);
        sql += "," + (isText(value.type) || isInteger(value.type) || value.isNullLiteral()
                          ? value.sql
                          : call.to(value, plainType(TypeId::BigInt)).sql);
    }
    result.sql = sql + ")";
    return result;
}

Bound bindUserName(FunctionBinder&) {
    Bound result;
    result.type = kName;
    result.constant = std::string("dbo");
    result.sql = "'dbo'";
    return result;
}

Bound bindDbName(FunctionBinder& call) {
    if (call.count() == 0) {
        return call.system(SystemValue::DatabaseName, kName);
    }
    return bindCatalog(call);
}

}  // namespace

const BuiltIn* catalogFunction(const std::string& name) {
    static std::unordered_map<std::string, BuiltIn> known;
    static std::mutex mutex;
    const MetadataFunction* function = findMetadataFunction(name);
    if (function == nullptr) {
        return nullptr;
    }
    const std::lock_guard lock(mutex);
    return &known
                .try_emplace(name, BuiltIn{function->name.c_str(), static_cast<int>(function->minArguments),
                                           static_cast<int>(function->maxArguments), bindCatalog})
                .first->second;
}

const std::vector<BuiltIn>& systemFunctions() {
    static const std::vector<BuiltIn> kTable = {
        {"isnull", 2, 2, bindIsNull},         {"coalesce", 1, 100, bindCoalesce},
        {"nullif", 2, 2, bindNullIf},         {"iif", 3, 3, bindIif},
        {"choose", 2, 100, bindChoose},       {"isnumeric", 1, 1, bindIsNumeric},
        {"newid", 0, 0, bindNewId},           {"user", 0, 0, bindUserName},
        {"user_name", 0, 1, bindUserName},    {"current_user", 0, 0, bindUserName},
        {"session_user", 0, 0, bindUserName}, {"db_name", 0, 1, bindDbName},
    };
    return kTable;
}

}  // namespace magdb
