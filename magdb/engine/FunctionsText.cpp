#include "engine/Decimal.h"
#include "engine/Functions.h"
#include "engine/Like.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <sqlite3.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <cmath>

// The text functions of T-SQL, inside SQLite.

namespace magdb {

namespace {

constexpr std::int64_t kHuge = 0x7FFFFFFF;

std::u16string folded(std::string_view text, bool ignoreCase) {
    std::u16string units = toUtf16(text);
    for (char16_t& unit : units) {
        if (!ignoreCase) {
            break;
        }
        const UChar32 c = u_foldCase(unit, U_FOLD_CASE_DEFAULT);
        unit = c <= 0xFFFF ? static_cast<char16_t>(c) : unit;
    }
    return units;
}

void substring(FunctionCall& call) {
    const std::int64_t length = call.integer(2);
    if (length < 0) {
        raise(537);
    }
    call.giveText(substringUnits(call.text(0), std::clamp(call.integer(1), -kHuge, kHuge) - 1,
                                 std::min(length, kHuge)));
}

void subBinary(FunctionCall& call) {
    const Bytes bytes = std::get<Bytes>(call.value(0, textType(TypeId::VarBinary, -1)));
    const std::int64_t size = static_cast<std::int64_t>(bytes.size());
    const std::int64_t start = std::clamp(call.integer(1) - 1, -kHuge, kHuge);
    if (call.integer(2) < 0) {
        raise(537);
    }
    const std::int64_t end = std::clamp<std::int64_t>(start + std::min(call.integer(2), kHuge), 0, size);
    const std::int64_t begin = std::clamp<std::int64_t>(start, 0, end);
    call.give(Bytes(bytes.begin() + begin, bytes.begin() + end));
}

void left(FunctionCall& call) {
    const std::int64_t length = call.integer(1);
    if (length < 0) {
        raise(537);
    }
    call.giveText(substringUnits(call.text(0), 0, std::min(length, kHuge)));
}

void right(FunctionCall& call) {
    const std::int64_t length = call.integer(1);
    if (length < 0) {
        raise(536, {"RIGHT"});
    }
    const std::int64_t total = utf16Length(call.text(0));
    call.giveText(
        substringUnits(call.text(0), std::max<std::int64_t>(0, total - std::min(length, kHuge)), kHuge));
}

void reverse(FunctionCall& call) {
    std::u16string units = toUtf16(call.text(0));
    std::reverse(units.begin(), units.end());
    // Pairs of surrogates keep their order.
    for (std::size_t i = 0; i + 1 < units.size(); ++i) {
        if (units[i] >= 0xDC00 && units[i] <= 0xDFFF && units[i + 1] >= 0xD800 && units[i + 1] < 0xDC00) {
            std::swap(units[i], units[i + 1]);
        }
    }
    call.giveText(toUtf8(units));
}

void replace(FunctionCall& call) {
    const std::string_view text = call.text(0);
    const std::string_view from = call.text(1);
    if (from.empty()) {
        call.giveArgument(0);
        return;
    }
    // Case is ignored, as the collation does.
    const std::u16string original = toUtf16(text);
    const std::u16string haystack = folded(text, true);
    const std::u16string needle = folded(from, true);
    const std::u16string with = toUtf16(call.text(2));
    std::u16string result;
    std::size_t at = 0;
    while (true) {
        const std::size_t found = haystack.find(needle, at);
        if (found == std::u16string::npos) {
            break;
        }
        result.append(original, at, found - at);
        result += with;
        at = found + needle.size();
    }
    result.append(original, at, std::u16string::npos);
    call.giveText(toUtf8(result));
}

void replicate(FunctionCall& call) {
    const std::int64_t count = call.integer(1);
    if (count < 0) {
        return;
    }
    const std::string_view text = call.text(0);
    const std::int64_t limit = call.integer(2);
    const std::int64_t length = utf16Length(text);
    std::int64_t fitting = count;
    if (limit >= 0 && length > 0) {
        fitting = std::min(count, limit / length + 1);
    }
    if (fitting * static_cast<std::int64_t>(text.size()) > kHuge) {
        raise(8115, {"expression", "varchar(max)"});
    }
    std::string result;
    result.reserve(static_cast<std::size_t>(fitting) * text.size());
    for (std::int64_t i = 0; i < fitting && !text.empty(); ++i) {
        result += text;
    }
    call.giveText(limit >= 0 ? substringUnits(result, 0, limit) : result);
}

void stuff(FunctionCall& call) {
    if (call.isNull(0) || call.isNull(1) || call.isNull(2)) {
        return;
    }
    const std::int64_t total = utf16Length(call.text(0));
    const std::int64_t start = call.integer(1);
    const std::int64_t length = call.integer(2);
    if (start < 1 || start > total || length < 0) {
        return;
    }
    call.giveText(substringUnits(call.text(0), 0, start - 1) +
                  std::string(call.isNull(3) ? std::string_view() : call.text(3)) +
                  substringUnits(call.text(0), start - 1 + std::min(length, kHuge), kHuge));
}

void charIndex(FunctionCall& call) {
    const std::string_view needle = call.text(0);
    const std::string_view text = call.text(1);
    const std::int64_t start = std::max<std::int64_t>(call.integer(2), 1) - 1;
    const bool ignoreCase = call.integer(3) == 0;
    if (needle.empty()) {
        call.giveInteger(0);
        return;
    }
    if (needle.size() == 1 && isAscii(text)) {
        const char c = needle.front();
        const bool letter = ignoreCase && ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'));
        if (!letter) {
            const std::size_t found = text.find(c, static_cast<std::size_t>(start));
            call.giveInteger(found == std::string_view::npos ? 0 : static_cast<std::int64_t>(found) + 1);
            return;
        }
    }
    const std::size_t found =
        folded(text, ignoreCase).find(folded(needle, ignoreCase), static_cast<std::size_t>(start));
    call.giveInteger(found == std::u16string::npos ? 0 : static_cast<std::int64_t>(found) + 1);
}

void patIndex(FunctionCall& call) {
    call.giveInteger(LikePattern(call.text(0), std::nullopt, call.integer(2) == 0).find(call.text(1)));
}

void concat(FunctionCall& call) {
    std::string result;
    for (int i = 0; i < call.count(); ++i) {
        result += call.isNull(i) ? std::string_view() : call.text(i);
    }
    call.giveText(result);
}

void concatWithSeparator(FunctionCall& call) {
    const std::string separator(call.isNull(0) ? std::string_view() : call.text(0));
    std::string result;
    bool first = true;
    for (int i = 1; i < call.count(); ++i) {
        if (call.isNull(i)) {
            continue;
        }
        result += (first ? std::string() : separator) + std::string(call.text(i));
        first = false;
    }
    call.giveText(result);
}

void dataLength(FunctionCall& call) {
    const SqlType type = call.type(1);
    if (isText(type)) {
        call.giveInteger(utf16Length(call.text(0)) * (isUnicode(type) ? 2 : 1));
        return;
    }
    switch (type.id) {
        case TypeId::VarBinary:
            call.giveInteger(sqlite3_value_bytes(call.arguments()[0]));
            return;
        case TypeId::UniqueIdentifier:
            call.giveInteger(16);
            return;
        case TypeId::Bit:
        case TypeId::TinyInt:
            call.giveInteger(1);
            return;
        case TypeId::SmallInt:
            call.giveInteger(2);
            return;
        case TypeId::Int:
        case TypeId::Real:
            call.giveInteger(4);
            return;
        case TypeId::Date:
            call.giveInteger(3);
            return;
        case TypeId::Decimal:
            call.giveInteger(
                type.precision <= 9 ? 5 : (type.precision <= 19 ? 9 : (type.precision <= 28 ? 13 : 17)));
            return;
        default:
            call.giveInteger(8);
            return;
    }
}

void unicodeOf(FunctionCall& call) {
    const std::u16string units = toUtf16(call.text(0));
    if (!units.empty()) {
        call.giveInteger(units.front());
    }
}

void asciiOf(FunctionCall& call) {
    if (!call.text(0).empty()) {
        call.giveInteger(codePageCode(call.text(0)));
    }
}

void charOf(FunctionCall& call) {
    const std::int64_t code = call.integer(0);
    if (code >= 0 && code <= 255) {
        call.giveText(codePageChar(static_cast<int>(code)));
    }
}

void ncharOf(FunctionCall& call) {
    const std::int64_t code = call.integer(0);
    if (code >= 0 && code <= 0xFFFF) {
        call.giveText(toUtf8(std::u16string(1, static_cast<char16_t>(code))));
    }
}

/// A float with so many decimals, halves away from zero.
std::string fixedText(double value, std::int64_t decimals) {
    if (const std::optional<DecimalValue> number = fromDouble(value, static_cast<int>(decimals))) {
        return formatDecimal(*number);
    }
    std::array<char, 400> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.*f", static_cast<int>(decimals), value);
    return buffer.data();
}

void str(FunctionCall& call) {
    const std::int64_t length = call.integer(1);
    const std::int64_t decimals = std::clamp<std::int64_t>(call.integer(2), 0, 16);
    if (length < 1 || length > 8000) {
        return;
    }
    const auto room = static_cast<std::size_t>(length);
    std::string text = fixedText(call.real(0), decimals);
    const std::size_t whole = std::min(text.find('.'), text.size());
    if (whole > room) {
        call.giveText(std::string(room, '*'));
        return;
    }
    if (text.size() > room) {
        // Decimals give way to the whole part.
        text = fixedText(call.real(0), room > whole + 1 ? static_cast<std::int64_t>(room - whole - 1) : 0);
    }
    if (text.size() < room) {
        text.insert(0, room - text.size(), ' ');
    }
    call.giveText(text);
}

void quoteName(FunctionCall& call) {
    const std::string_view quote = call.text(1);
    if (quote.empty() || utf16Length(call.text(0)) > 128) {
        return;
    }
    const char open = quote.front();
    char close = open;
    switch (open) {
        case '[':
        case ']':
            close = ']';
            break;
        case '(':
        case ')':
            close = ')';
            break;
        case '<':
        case '>':
            close = '>';
            break;
        case '{':
        case '}':
            close = '}';
            break;
        case '\'':
        case '"':
        case '`':
            break;
        default:
            return;
    }
    std::string result(
        1, close == ']' ? '[' : (close == ')' ? '(' : (close == '>' ? '<' : (close == '}' ? '{' : open))));
    for (const char c : call.text(0)) {
        result += c;
        if (c == close) {
            result += c;
        }
    }
    call.giveText(result + close);
}

void translate(FunctionCall& call) {
    const std::u32string from = toUtf32(call.text(1));
    const std::u32string with = toUtf32(call.text(2));
    if (from.size() != with.size()) {
        raise(9828);
    }
    std::u16string result;
    for (const char16_t unit : toUtf16(call.text(0))) {
        const std::size_t at = from.find(unit);
        result += at == std::u32string::npos ? unit : static_cast<char16_t>(with[at]);
    }
    call.giveText(toUtf8(result));
}

void isNumeric(FunctionCall& call) {
    const std::string_view text = call.isNull(0) ? std::string_view() : trimRight(trimLeft(call.text(0)));
    std::string plain(text);
    // Money is numeric too: a sign of currency and commas between the digits.
    if (!plain.empty() && plain.front() == '$') {
        plain.erase(0, 1);
    }
    std::erase(plain, ',');
    const bool sign = plain == "+" || plain == "-" || plain == "." || (plain.empty() && !text.empty());
    if (sign) {
        call.giveInteger(1);
        return;
    }
    char* end = nullptr;
    const bool digits = plain.find_first_not_of("0123456789+-.eE") == std::string::npos &&
                        plain.find_first_of("0123456789") != std::string::npos;
    const double number = digits ? std::strtod(plain.c_str(), &end) : 0;
    call.giveInteger(digits && end != nullptr && *end == '\0' && std::isfinite(number) ? 1 : 0);
}

}  // namespace

const std::vector<FunctionEntry>& textFunctionEntries() {
    static const std::vector<FunctionEntry> kTable = {
        {"t_len", 1, FunctionEntry::Strict,
         [](FunctionCall& c) { c.giveInteger(utf16Length(trimRight(c.text(0)))); }},
        {"t_datalength", 2, FunctionEntry::Strict, dataLength},
        {"t_substring", 3, FunctionEntry::Strict, substring},
        {"t_subbinary", 3, FunctionEntry::Strict, subBinary},
        {"t_left", 2, FunctionEntry::Strict, left},
        {"t_right", 2, FunctionEntry::Strict, right},
        {"t_ltrim", 1, FunctionEntry::Strict, [](FunctionCall& c) { c.giveText(trimLeft(c.text(0))); }},
        {"t_rtrim", 1, FunctionEntry::Strict, [](FunctionCall& c) { c.giveText(trimRight(c.text(0))); }},
        {"t_trim", 1, FunctionEntry::Strict,
         [](FunctionCall& c) { c.giveText(trimLeft(trimRight(c.text(0)))); }},
        {"t_upper", 1, FunctionEntry::Strict, [](FunctionCall& c) { c.giveText(upper(c.text(0))); }},
        {"t_lower", 1, FunctionEntry::Strict, [](FunctionCall& c) { c.giveText(lower(c.text(0))); }},
        {"t_reverse", 1, FunctionEntry::Strict, reverse},
        {"t_replace", 3, FunctionEntry::Strict, replace},
        {"t_replicate", 3, FunctionEntry::Strict, replicate},
        {"t_stuff", 4, FunctionEntry::Plain, stuff},
        {"t_charindex", 4, FunctionEntry::Strict, charIndex},
        {"t_patindex", 3, FunctionEntry::Strict, patIndex},
        {"t_concat", -1, FunctionEntry::Plain, concat},
        {"t_concat_ws", -1, FunctionEntry::Plain, concatWithSeparator},
        {"t_ascii", 1, FunctionEntry::Strict, asciiOf},
        {"t_unicode", 1, FunctionEntry::Strict, unicodeOf},
        {"t_char", 1, FunctionEntry::Strict, charOf},
        {"t_nchar", 1, FunctionEntry::Strict, ncharOf},
        {"t_str", 3, FunctionEntry::Strict, str},
        {"t_quotename", 2, FunctionEntry::Strict, quoteName},
        {"t_translate", 3, FunctionEntry::Strict, translate},
        {"t_isnumeric", 1, FunctionEntry::Plain, isNumeric},
    };
    return kTable;
}

}  // namespace magdb
