#pragma once

#include "engine/Binder.h"

#include <initializer_list>
#include <string>

namespace magdb {

/// A call of a built-in function while it is bound: its arguments as expressions, and what binding them
/// takes.
class FunctionBinder {
public:
    FunctionBinder(Binder& owner, const tsql::FunctionExpr& call, std::string functionName);

    [[nodiscard]] std::size_t count() const { return node.arguments.size(); }
    [[nodiscard]] Bound argument(std::size_t index);
    [[nodiscard]] Bound argumentAs(std::size_t index, const SqlType& type);
    /// A text argument in its own type; other types become varchar.
    [[nodiscard]] Bound text(std::size_t index);
    [[nodiscard]] Bound integer(std::size_t index);
    [[nodiscard]] std::string condition(std::size_t index);
    [[nodiscard]] std::string compareEqual(const Bound& left, const Bound& right);
    [[nodiscard]] Bound to(const Bound& value, const SqlType& type);
    [[nodiscard]] Bound system(SystemValue value, const SqlType& type);
    [[nodiscard]] static Bound result(const SqlType& type, const std::string& function,
                                      std::initializer_list<std::string> arguments);
    [[nodiscard]] static std::string packed(const SqlType& type);

    const tsql::FunctionExpr& node;
    const std::string name;  ///< in lower case

private:
    Binder& m_binder;
};

struct BuiltIn {
    const char* name;
    int least;  ///< arguments
    int most;
    Bound (*bind)(FunctionBinder&);
};

/// By name in lower case; null when there is none.
[[nodiscard]] const BuiltIn* findBuiltIn(const std::string& name);

/// A function of the catalogue (OBJECT_ID...), or null.
[[nodiscard]] const BuiltIn* catalogFunction(const std::string& name);

// The tables that findBuiltIn() looks through.
[[nodiscard]] const std::vector<BuiltIn>& textFunctions();
[[nodiscard]] const std::vector<BuiltIn>& numberFunctions();
[[nodiscard]] const std::vector<BuiltIn>& dateFunctions();
[[nodiscard]] const std::vector<BuiltIn>& systemFunctions();

}  // namespace magdb
