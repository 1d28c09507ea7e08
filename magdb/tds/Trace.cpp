#include "tds/Trace.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <system_error>

namespace magdb::tds {

namespace {

void appendEscaped(std::string_view text, std::string& out) {
    for (const char c : text) {
        switch (c) {
            case '\\':
                out += "\\\\";
                break;
            case '\t':
                out += "\\t";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\n':
                out += "\\n";
                break;
            default:
                out += c;
        }
    }
}

std::string decimalText(const DecimalValue& value) {
    __extension__ unsigned __int128 rest = value.unscaled < 0
                                               ? -static_cast<unsigned __int128>(value.unscaled)
                                               : static_cast<unsigned __int128>(value.unscaled);
    std::string digits;
    do {
        if (!digits.empty() && digits.size() == value.scale) {
            digits += '.';
        }
        digits += static_cast<char>('0' + static_cast<int>(rest % 10));
        rest /= 10;
    } while (rest != 0 || digits.size() <= value.scale);
    if (value.unscaled < 0) {
        digits += '-';
    }
    std::reverse(digits.begin(), digits.end());
    return digits;
}

std::string bytesText(const Bytes& bytes) {
    std::string text = "0x";
    for (const std::uint8_t byte : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02X", byte);
        text += digits;
    }
    return text;
}

std::string dateText(const DateTimeValue& value) {
    using namespace std::chrono;
    const year_month_day date(sys_days(year(1900) / 1 / 1) + days(value.days));
    const int seconds = value.ticks / 300;
    // Thirds of a centisecond are shown as the server meant here shows them: .000, .003, .007.
    const int milliseconds = (value.ticks % 300 * 10 + 1) / 3;
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d.%03d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), seconds / 3600,
                  seconds / 60 % 60, seconds % 60, milliseconds);
    return text;
}

struct ValueText {
    std::string operator()(std::monostate) const { return "NULL"; }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const {
        char text[32];
        const auto end = std::to_chars(std::begin(text), std::end(text), value);
        return {std::begin(text), end.ptr};
    }
    std::string operator()(const DecimalValue& value) const { return decimalText(value); }
    std::string operator()(const std::string& value) const { return value; }
    std::string operator()(const Bytes& value) const { return bytesText(value); }
    std::string operator()(const DateTimeValue& value) const { return dateText(value); }
};

}  // namespace

std::string traceText(const CallParameter& parameter) {
    return parameter.useDefault ? "DEFAULT" : std::visit(ValueText{}, parameter.value);
}

Trace::Trace(const std::string& path) {
    if (path.empty()) {
        return;
    }
    descriptor_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (descriptor_ < 0) {
        throw std::system_error(errno, std::generic_category(), path);
    }
}

Trace::~Trace() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void Trace::batch(std::int16_t session, std::string_view text) const {
    if (descriptor_ >= 0) {
        write(session, "BATCH", {std::string(text)});
    }
}

void Trace::call(std::int16_t session, std::string_view procedure,
                 const std::vector<CallParameter>& parameters) const {
    if (descriptor_ < 0) {
        return;
    }
    std::vector<std::string> fields{std::string(procedure)};
    for (const CallParameter& parameter : parameters) {
        fields.push_back((parameter.name.empty() ? "?" : parameter.name) + "=" + traceText(parameter));
    }
    write(session, "RPC", fields);
}

void Trace::transaction(std::int16_t session, std::string_view statement) const {
    if (descriptor_ >= 0) {
        write(session, "TRANSACTION", {std::string(statement)});
    }
}

void Trace::write(std::int16_t session, std::string_view kind, const std::vector<std::string>& fields) const {
    std::string line = std::to_string(session) + '\t' + std::string(kind);
    for (const std::string& field : fields) {
        line += '\t';
        appendEscaped(field, line);
    }
    line += '\n';
    // One write to a file opened for appending keeps lines whole across threads.
    for (std::string_view left = line; !left.empty();) {
        const ssize_t written = ::write(descriptor_, left.data(), left.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            std::fprintf(stderr, "magdb: the trace cannot be written\n");
            return;
        }
        left.remove_prefix(static_cast<std::size_t>(written));
    }
}

}  // namespace magdb::tds
