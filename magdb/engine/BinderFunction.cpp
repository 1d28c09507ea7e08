#include "engine/BinderFunction.h"

#include "engine/Convert.h"
#include "engine/Decimal.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <algorithm>
#include <utility>

// Calls of functions: the choice between aggregates, window functions, the built-in ones and those of users.

namespace magdb {

namespace {

const std::unordered_map<std::string, std::pair<SystemValue, SqlType>>& sessionFunctions() {
    static const SqlType kName = textType(TypeId::NVarChar, 128);
    static const std::unordered_map<std::string, std::pair<SystemValue, SqlType>> kTable = {
        {"getdate", {SystemValue::Now, plainType(TypeId::DateTime)}},
        {"current_timestamp", {SystemValue::Now, plainType(TypeId::DateTime)}},
        {"getutcdate", {SystemValue::NowUtc, plainType(TypeId::DateTime)}},
        {"host_name", {SystemValue::HostName, kName}},
        {"app_name", {SystemValue::ApplicationName, kName}},
        {"suser_sname", {SystemValue::LoginName, kName}},
        {"suser_name", {SystemValue::LoginName, kName}},
        {"original_login", {SystemValue::LoginName, kName}},
        {"system_user", {SystemValue::LoginName, kName}},
        {"scope_identity", {SystemValue::ScopeIdentity, decimalType(38, 0)}},
        {"xact_state", {SystemValue::XactState, plainType(TypeId::SmallInt)}},
        {"error_number", {SystemValue::ErrorNumber, plainType(TypeId::Int)}},
        {"error_severity", {SystemValue::ErrorSeverity, plainType(TypeId::Int)}},
        {"error_state", {SystemValue::ErrorState, plainType(TypeId::Int)}},
        {"error_line", {SystemValue::ErrorLine, plainType(TypeId::Int)}},
        {"error_message", {SystemValue::ErrorMessage, textType(TypeId::NVarChar, 4000)}},
        {"error_procedure", {SystemValue::ErrorProcedure, kName}},
    };
    return kTable;
}

bool isAggregate(const std::string& name) {
    static const std::vector<std::string> kNames = {"count", "count_big", "sum", "avg",  "min",       "max",
                                                    "stdev", "stdevp",    "var", "varp", "string_agg"};
    return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

bool isWindowOnly(const std::string& name) {
    static const std::vector<std::string> kNames = {"row_number",   "rank",     "dense_rank",  "ntile",
                                                    "lag",          "lead",     "first_value", "last_value",
                                                    "percent_rank", "cume_dist"};
    return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

}  // namespace

Bound Binder::function(const tsql::FunctionExpr& node) {
    const std::string name = lower(node.name.name);
    const bool qualified = !node.name.schema.empty();
    if (!qualified) {
        if (isWindowOnly(name) || (isAggregate(name) && node.over)) {
            return windowed(node, name);
        }
        if (isAggregate(name)) {
            return aggregate(node, name);
        }
        if (const auto found = sessionFunctions().find(name); found != sessionFunctions().end()) {
            if (!node.arguments.empty()) {
                raise(174, {name, "0"});
            }
            return systemValue(found->second.first, found->second.second);
        }
        if (const BuiltIn* builtIn = findBuiltIn(name)) {
            const auto count = static_cast<int>(node.arguments.size());
            if (count < builtIn->least || count > builtIn->most) {
                if (builtIn->least == builtIn->most) {
                    raise(174, {name, std::to_string(builtIn->least)});
                }
                raise(189, {name, std::to_string(builtIn->least), std::to_string(builtIn->most)});
            }
            FunctionBinder call(*this, node, name);
            return builtIn->bind(call);
        }
        raise(195, {node.name.name});
    }
    return userFunction(node);
}

Bound Binder::userFunction(const tsql::FunctionExpr& node) {
    const std::shared_ptr<const SchemaObject> found = object(node.name);
    if (!found || found->kind != ObjectKind::ScalarFunction) {
        raise(4121, {node.name.schema, dotted(node.name)});
    }
    const auto& module = dynamic_cast<const Module&>(*found);
    const tsql::CreateFunctionStatement& definition = module.function();
    if (node.arguments.size() != definition.parameters.size()) {
        raise(node.arguments.size() < definition.parameters.size() ? 313 : 8144, {dotted(node.name)});
    }
    Bound result;
    result.sql = "t_udf(" + std::to_string(module.id);
    for (std::size_t i = 0; i < node.arguments.size(); ++i) {
        const tsql::Parameter& parameter = definition.parameters[i];
        const bool byDefault = node.arguments[i]->kind == tsql::ExprKind::Default;
        if (byDefault && !parameter.defaultValue) {
            raise(201, {node.name.name, parameter.name});
        }
        result.sql += "," + to(expr(byDefault ? *parameter.defaultValue : *node.arguments[i]),
                               resolveType(parameter.type, static_cast<int>(i) + 1))
                                .sql;
    }
    result.sql += ")";
    result.type = resolveType(definition.returnType, 0);
    return result;
}

// ----------------------------------------------------------------------------------------- call in hand

FunctionBinder::FunctionBinder(Binder& owner, const tsql::FunctionExpr& call, std::string functionName)
    : node(call), name(std::move(functionName)), m_binder(owner) {}

Bound FunctionBinder::argument(std::size_t index) {
    return m_binder.expr(*node.arguments[index]);
}

Bound FunctionBinder::argumentAs(std::size_t index, const SqlType& type) {
    return to(argument(index), type);
}

Bound FunctionBinder::to(const Bound& value, const SqlType& type) {
    return m_binder.to(value, type);
}

std::string FunctionBinder::condition(std::size_t index) {
    return m_binder.where(*node.arguments[index]);
}

std::string FunctionBinder::compareEqual(const Bound& left, const Bound& right) {
    return m_binder.compare(tsql::BinaryOp::Equal, left, right);
}

Bound FunctionBinder::system(SystemValue value, const SqlType& type) {
    return m_binder.systemValue(value, type);
}

Bound FunctionBinder::text(std::size_t index) {
    Bound value = argument(index);
    if (value.isNullLiteral()) {
        value.type = textType(TypeId::VarChar, 1);
        return value;
    }
    if (isText(value.type)) {
        return value;
    }
    if (value.type.id == TypeId::Money || value.type.id == TypeId::VarBinary) {
        return to(value, textType(TypeId::VarChar, value.type.id == TypeId::Money ? 30 : value.type.length));
    }
    return to(value, textType(TypeId::VarChar, 50));
}

Bound FunctionBinder::integer(std::size_t index) {
    return argumentAs(index, plainType(TypeId::BigInt));
}

Bound FunctionBinder::result(const SqlType& type, const std::string& function,
                             std::initializer_list<std::string> arguments) {
    Bound bound;
    bound.type = type;
    bound.sql = function + "(";
    bool first = true;
    for (const std::string& argument : arguments) {
        bound.sql += (first ? "" : ",") + argument;
        first = false;
    }
    bound.sql += ")";
    return bound;
}

std::string FunctionBinder::packed(const SqlType& type) {
    return std::to_string(packType(type));
}

}  // namespace magdb
