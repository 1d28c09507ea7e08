#pragma once

#include "engine/Convert.h"
#include "engine/Sqlite.h"

#include <cstdint>
#include <exception>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace magdb {

/// What the functions inside SQLite need of their session.
class Runtime {
public:
    virtual ~Runtime() = default;
    /// Current value of a variable of the running module.
    [[nodiscard]] virtual Value variableNow(int slot) = 0;
    /// Calls a scalar function of the database; arguments have the types of its parameters.
    [[nodiscard]] virtual Value callFunction(std::int32_t objectId, sqlite3_value** arguments, int count) = 0;
    /// OBJECT_ID, DB_NAME and their kin, by name in lower case.
    [[nodiscard]] virtual Value catalogFunction(std::string_view name,
                                                const std::vector<Value>& arguments) = 0;

    ConvertSettings settings;
    std::mt19937_64 random{std::random_device{}()};
    /// The error that a function ended with; SQLite itself carries only its text.
    std::exception_ptr pending;
};

/// Arguments and result of one call.
class FunctionCall {
public:
    FunctionCall(Runtime& session, sqlite3_context* context, int count, sqlite3_value** arguments)
        : runtime(session), m_context(context), m_count(count), m_arguments(arguments) {}

    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] bool isNull(int index) const;
    [[nodiscard]] std::int64_t integer(int index) const;
    [[nodiscard]] double real(int index) const;
    [[nodiscard]] std::string_view text(int index) const;  ///< valid during the call
    [[nodiscard]] SqlType type(int index) const;           ///< of a packed type
    [[nodiscard]] Value value(int index, const SqlType& type) const;
    [[nodiscard]] sqlite3_value** arguments() const { return m_arguments; }
    [[nodiscard]] sqlite3_context* context() const { return m_context; }
    /// True for a value that SQLite holds as a float, as an integer sum beyond 64 bits is.
    [[nodiscard]] bool isReal(int index) const;

    void give(const Value& result) { returnValue(m_context, result); }
    void giveText(std::string_view result);
    void giveInteger(std::int64_t result);
    void giveReal(double result);
    void giveNull();
    /// The argument itself.
    void giveArgument(int index);

    Runtime& runtime;

private:
    sqlite3_context* m_context;
    int m_count;
    sqlite3_value** m_arguments;
};

struct FunctionEntry {
    const char* name;
    int arguments;  ///< -1: any number
    enum Kind : std::uint8_t {
        Strict,   ///< NULL when any argument is; the same arguments give the same result
        Plain,    ///< looks at NULLs itself
        Volatile  ///< may give another result each time
    } kind;
    void (*call)(FunctionCall&);
};

[[nodiscard]] const std::vector<FunctionEntry>& textFunctionEntries();
[[nodiscard]] const std::vector<FunctionEntry>& numberFunctionEntries();
[[nodiscard]] const std::vector<FunctionEntry>& valueFunctionEntries();
void registerAggregates(sqlite3* connection, Runtime& runtime);

/// Makes the functions known to a connection. The runtime outlives it.
void registerFunctions(sqlite3* connection, Runtime& runtime);

}  // namespace magdb
