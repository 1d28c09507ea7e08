#include "engine/Core.h"
#include "engine/Decimal.h"
#include "engine/Text.h"

#include <array>
#include <cstdio>

// RAISERROR, THROW, and what becomes of errors.

namespace magdb {

namespace {

constexpr int kUserError = 50000;
constexpr std::size_t kMaxMessageUnits = 2047;

/// One %... of a RAISERROR text.
struct Format {
    std::string flags;
    std::string width;
    std::string precision;
    char kind = 0;
};

bool readFormat(std::string_view text, std::size_t& at, Format& format) {
    while (at < text.size() && std::string_view("-+0# ").find(text[at]) != std::string_view::npos) {
        format.flags += text[at++];
    }
    const auto number = [&](std::string& out) {
        while (at < text.size() && ((text[at] >= '0' && text[at] <= '9') || text[at] == '*')) {
            out += text[at++];
        }
    };
    number(format.width);
    if (at < text.size() && text[at] == '.') {
        ++at;
        number(format.precision);
        format.precision += format.precision.empty() ? "0" : "";
    }
    if (text.substr(at, 3) == "I64") {
        at += 3;
    } else if (at < text.size() && (text[at] == 'h' || text[at] == 'l')) {
        ++at;
    }
    if (at >= text.size() || std::string_view("diuosxX").find(text[at]) == std::string_view::npos) {
        return false;
    }
    format.kind = text[at++];
    return true;
}

std::string padded(std::string text, const Format& format) {
    const std::size_t width = format.width.empty() ? 0 : static_cast<std::size_t>(std::stoi(format.width));
    const auto length = static_cast<std::size_t>(utf16Length(text));
    if (length >= width || width > 8000) {
        return text;
    }
    const bool left = format.flags.find('-') != std::string::npos;
    return left ? text + std::string(width - length, ' ') : std::string(width - length, ' ') + text;
}

std::string formatNumber(std::int64_t value, const Format& format) {
    const std::string flags = format.flags.find('-') != std::string::npos ? "-" : "";
    std::string pattern = "%" + format.flags;
    pattern += format.width.substr(0, 4);
    pattern += format.precision.empty() ? "" : "." + format.precision.substr(0, 4);
    pattern += "ll";
    pattern += format.kind == 'i' ? 'd' : format.kind;
    std::array<char, 10100> buffer{};
    const bool isSigned = format.kind == 'd' || format.kind == 'i';
    // The pattern was put together from checked parts, so it holds one conversion of this width.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    if (isSigned) {
        std::snprintf(buffer.data(), buffer.size(), pattern.c_str(), static_cast<long long>(value));
    } else {
        std::snprintf(buffer.data(), buffer.size(), pattern.c_str(),
                      static_cast<unsigned long long>(static_cast<std::uint32_t>(value)));
    }
#pragma GCC diagnostic pop
    return buffer.data();
}

}  // namespace

void Core::runRaiseError(const tsql::RaiseErrorStatement& statement) {
    SqlType messageType;
    const Value messageValue = evaluate(*statement.message, &messageType);
    ServerMessage message;
    message.number = kUserError;
    const auto integer = [&](const tsql::ExprPtr& expr, std::int64_t fallback) {
        const Value value = expr ? evaluateAs(*expr, plainType(TypeId::Int)) : Value();
        return isNull(value) ? fallback : std::get<std::int64_t>(value);
    };
    message.severity = static_cast<int>(std::clamp<std::int64_t>(integer(statement.severity, 0), 0, 25));
    message.state = static_cast<int>(std::clamp<std::int64_t>(integer(statement.state, 1), 0, 255));
    if (!isText(messageType)) {
        if (m_frame->module->objectId < 0 && !isNull(messageValue)) {
            // A procedure of the server itself raises the server's own messages.
            std::vector<std::string> texts;
            for (const tsql::ExprPtr& argument : statement.arguments) {
                SqlType type;
                const Value value = evaluate(*argument, &type);
                texts.push_back(isNull(value) ? "(null)" : displayText(value, type));
            }
            texts.resize(2);
            raise(static_cast<int>(std::get<std::int64_t>(messageValue)), {texts[0], texts[1]});
        }
        // Messages by number live in a table that no program here fills.
        message.number = 18054;
        message.severity = 16;
        message.state = 1;
        message.text = "Error " + displayText(messageValue, messageType) + ", severity " +
                       std::to_string(message.severity) + ", state " + std::to_string(message.state) +
                       " was raised, but no message with that error number was found in sys.messages.";
        throw SqlError(message);
    }
    const std::string text = isNull(messageValue) ? std::string() : std::get<std::string>(messageValue);
    std::vector<std::pair<Value, SqlType>> arguments;
    for (const tsql::ExprPtr& argument : statement.arguments) {
        SqlType type;
        Value value = evaluate(*argument, &type);
        if (!isText(type) && !isInteger(type) && type.id != TypeId::Null && !isNull(value)) {
            raise(2748, {messageName(type), std::to_string(arguments.size() + 4)});
        }
        arguments.emplace_back(std::move(value), type);
    }
    std::size_t next = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] != '%') {
            message.text += text[at++];
            continue;
        }
        if (text.substr(at, 2) == "%%") {
            message.text += '%';
            at += 2;
            continue;
        }
        Format format;
        std::size_t end = at + 1;
        if (!readFormat(text, end, format)) {
            raise(2787, {text.substr(at, 20)});
        }
        at = end;
        for (std::string* star : {&format.width, &format.precision}) {
            if (*star == "*") {
                *star = next < arguments.size() ? displayText(arguments[next].first, arguments[next].second)
                                                : "0";
                ++next;
            }
        }
        if (next >= arguments.size()) {
            message.text += "(null)";
            continue;
        }
        const auto& [value, type] = arguments[next++];
        if (isNull(value)) {
            message.text += padded("(null)", format);
        } else if (format.kind == 's') {
            std::string shown = displayText(value, type);
            if (!format.precision.empty()) {
                shown = substringUnits(shown, 0, std::stoi(format.precision));
            }
            message.text += padded(shown, format);
        } else if (isText(type)) {
            raise(2786, {std::to_string(next)});
        } else {
            message.text += formatNumber(std::get<std::int64_t>(value), format);
        }
    }
    if (utf16Length(message.text) > static_cast<std::int64_t>(kMaxMessageUnits)) {
        message.text = substringUnits(message.text, 0, kMaxMessageUnits - 3) + "...";
    }
    message.line = static_cast<int>(statement.pos.line);
    message.procedure = m_frame->module->name;
    m_rowCount = 0;
    if (message.severity > 10 && insideTry()) {
        SqlError error(message);
        error.placed = true;
        throw error;
    }
    m_error = message.severity > 10 || statement.setError ? message.number : 0;
    if (message.severity <= 10) {
        message.number = 50000;
        m_sink->message(message);
        return;
    }
    // Outside TRY it is a report, not an end: the statements behind it run. The call as a whole is undone.
    m_raisedInCall = true;
    send(message);
    if (message.severity >= 20) {
        throw Cancelled();
    }
}

void Core::runThrow(const tsql::ThrowStatement& statement) {
    if (!statement.number) {
        if (m_caught.empty()) {
            raise(10704);
        }
        SqlError error(m_caught.back());
        error.placed = true;
        throw error;
    }
    ServerMessage message;
    const Value number = evaluateAs(*statement.number, plainType(TypeId::Int));
    const Value state = evaluateAs(*statement.state, plainType(TypeId::Int));
    const Value text = evaluateAs(*statement.message, textType(TypeId::NVarChar, 2048));
    message.number = isNull(number) ? 0 : static_cast<int>(std::get<std::int64_t>(number));
    if (message.number < 50000) {
        raise(35100, {std::to_string(message.number)});
    }
    message.severity = 16;
    message.state =
        isNull(state) ? 1 : static_cast<int>(std::clamp<std::int64_t>(std::get<std::int64_t>(state), 0, 255));
    message.text = isNull(text) ? std::string() : std::get<std::string>(text);
    message.line = static_cast<int>(statement.pos.line);
    message.procedure = m_frame->module->name;
    SqlError error(message);
    error.placed = true;
    throw error;
}

void Core::send(ServerMessage message) {
    if (m_sink != nullptr) {
        m_sink->message(message);
    }
}

void Core::place(SqlError& error, const tsql::Statement& statement) const {
    if (error.placed) {
        return;
    }
    error.message().line = static_cast<int>(statement.pos.line);
    if (m_frame->module != nullptr) {
        error.message().procedure = m_frame->module->name;
    }
    error.placed = true;
}

bool Core::insideTry() const {
    return m_tryDepth > 0;
}

bool Core::endsBatch(int number, int severity) {
    switch (number) {
        case 208:
        case 207:
        case 209:
        case 4104:
        case 137:
        case 1087:
        case 241:
        case 242:
        case 244:
        case 245:
        case 248:
        case 235:
        case 1205:
        case 8114:
        case 8169:
        case 217:
        case 3930:
        case 40001:
        case 40517:
            return true;
        default:
            return severity >= 19 || severity == 15;
    }
}

}  // namespace magdb
