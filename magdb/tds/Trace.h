#pragma once

#include "engine/Session.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace magdb::tds {

/// A file that takes every request at the moment it is received, one line each: session, kind, then fields,
/// all separated by tabs, with backslash escapes for backslash, tab, CR and LF. Thread-safe; lines never mix
/// and are in the file when the call returns.
class Trace {
public:
    /// Appends to the file. An empty path traces nothing. Throws std::system_error when it cannot be opened.
    explicit Trace(const std::string& path);
    ~Trace();
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    void batch(std::int16_t session, std::string_view text) const;
    /// Parameters as name=value; "?" stands for the name of one passed by position.
    void call(std::int16_t session, std::string_view procedure,
              const std::vector<CallParameter>& parameters) const;
    /// A transaction request, as the statement that it stands for.
    void transaction(std::int16_t session, std::string_view statement) const;

private:
    void write(std::int16_t session, std::string_view kind, const std::vector<std::string>& fields) const;

    int descriptor_ = -1;
};

/// A parameter's value as the trace shows it: text as it is, NULL, DEFAULT, 0x.. for bytes, numbers and dates
/// in their plain T-SQL form.
[[nodiscard]] std::string traceText(const CallParameter& parameter);

}  // namespace magdb::tds
