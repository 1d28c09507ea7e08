#include "engine/DateTime.h"
#include "engine/Text.h"

#include <array>
#include <vector>

// Reading of written dates and times.

namespace magdb {

namespace {

constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};
int monthByName(std::string_view word) {
    const std::string key = lower(word);
    for (std::size_t i = 0; i < kMonths.size(); ++i) {
        const std::string name = lower(kMonths[i]);
        if (key == name || key == name.substr(0, 3)) {
            return static_cast<int>(i) + 1;
        }
    }
    return 0;
}

int fullYear(int year, std::size_t digits) {
    if (digits > 2) {
        return year;
    }
    return year < 50 ? 2000 + year : 1900 + year;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Reads the pieces of a written date: numbers, a month's name, a time.
class Reader {
public:
    Reader(std::string_view text, DateOrder order) : m_text(text), m_order(order) {}

    DateFault read(DateTimeValue& result) {
        while (m_at < m_text.size()) {
            if (!step()) {
                return DateFault::Syntax;
            }
        }
        CivilDate date;
        const DateFault fault = resolveDate(date);
        if (fault != DateFault::None) {
            return fault;
        }
        return finish(date, result);
    }

private:
    struct Number {
        int value = 0;
        std::size_t digits = 0;
    };

    [[nodiscard]] char peek() const { return m_at < m_text.size() ? m_text[m_at] : '\0'; }

    bool number(Number& out) {
        const std::size_t start = m_at;
        while (isDigit(peek()) && m_at - start < 9) {
            out.value = out.value * 10 + (m_text[m_at] - '0');
            ++m_at;
        }
        out.digits = m_at - start;
        return out.digits > 0;
    }

    bool step() {
        const char c = peek();
        if (c == ' ' || c == ',') {
            ++m_at;
            return true;
        }
        if (isLetter(c)) {
            return word();
        }
        if (!isDigit(c)) {
            return false;
        }
        Number n;
        number(n);
        if (peek() == ':' || amPmFollows()) {
            return time(n);
        }
        m_numbers.push_back(n);
        if (peek() == '-' || peek() == '/' || peek() == '.') {
            m_separated = true;
            ++m_at;
            return isDigit(peek()) || isLetter(peek());
        }
        return true;
    }

    bool word() {
        const std::size_t start = m_at;
        while (isLetter(peek())) {
            ++m_at;
        }
        const std::string_view text = m_text.substr(start, m_at - start);
        if ((text == "T" || text == "t") && m_numbers.size() == 3 && !m_hasTime && isDigit(peek())) {
            return true;
        }
        if ((text == "Z" || text == "z") && m_hasTime && m_at == m_text.size()) {
            return true;
        }
        m_month = m_month == 0 ? monthByName(text) : 0;
        if (peek() == '-' || peek() == '/' || peek() == '.') {
            ++m_at;
        }
        return m_month != 0;
    }

    [[nodiscard]] bool amPmFollows() const {
        std::size_t at = m_at;
        while (at < m_text.size() && m_text[at] == ' ') {
            ++at;
        }
        if (at + 1 >= m_text.size()) {
            return false;
        }
        const char first = static_cast<char>(m_text[at] | 0x20);
        const char second = static_cast<char>(m_text[at + 1] | 0x20);
        return (first == 'a' || first == 'p') && second == 'm' &&
               (at + 2 == m_text.size() || !isLetter(m_text[at + 2]));
    }

    bool time(const Number& hour) {
        if (m_hasTime) {
            return false;
        }
        m_hasTime = true;
        m_time.hour = hour.value;
        Number part;
        if (peek() == ':') {
            ++m_at;
            if (!number(part)) {
                return false;
            }
            m_time.minute = part.value;
        }
        if (peek() == ':') {
            ++m_at;
            part = {};
            if (!number(part)) {
                return false;
            }
            m_time.second = part.value;
            if (peek() == '.' || peek() == ':') {
                const bool point = peek() == '.';
                ++m_at;
                part = {};
                if (!number(part) || part.digits > 3) {
                    return false;
                }
                m_time.millisecond = part.value;
                for (std::size_t i = part.digits; point && i < 3; ++i) {
                    m_time.millisecond *= 10;
                }
            }
        }
        if (amPmFollows()) {
            while (peek() == ' ') {
                ++m_at;
            }
            const bool afternoon = (peek() | 0x20) == 'p';
            m_at += 2;
            if (m_time.hour > 12) {
                m_badTime = true;
            }
            m_time.hour = m_time.hour % 12 + (afternoon ? 12 : 0);
        }
        return true;
    }

    DateFault resolveDate(CivilDate& date) {
        if (m_month != 0) {
            return resolveNamedMonth(date);
        }
        if (m_numbers.empty()) {
            return DateFault::None;
        }
        if (m_numbers.size() == 1 && !m_separated) {
            return resolveCompact(date);
        }
        if (m_numbers.size() != 3) {
            return DateFault::Syntax;
        }
        std::array<Number, 3> n = {m_numbers[0], m_numbers[1], m_numbers[2]};
        if (n[0].digits > 2) {
            date = {n[0].value, n[1].value, n[2].value};
        } else if (m_order == DateOrder::Dmy) {
            date = {fullYear(n[2].value, n[2].digits), n[1].value, n[0].value};
        } else if (m_order == DateOrder::Mdy) {
            date = {fullYear(n[2].value, n[2].digits), n[0].value, n[1].value};
        } else {
            date = {fullYear(n[0].value, n[0].digits), n[1].value, n[2].value};
        }
        return DateFault::None;
    }

    DateFault resolveCompact(CivilDate& date) const {
        const Number& n = m_numbers.front();
        if (n.digits == 8) {
            date = {n.value / 10000, n.value / 100 % 100, n.value % 100};
        } else if (n.digits == 6) {
            date = {fullYear(n.value / 10000, 2), n.value / 100 % 100, n.value % 100};
        } else if (n.digits == 4) {
            date = {n.value, 1, 1};
        } else {
            return DateFault::Syntax;
        }
        return DateFault::None;
    }

    DateFault resolveNamedMonth(CivilDate& date) const {
        if (m_numbers.empty() || m_numbers.size() > 2) {
            return DateFault::Syntax;
        }
        if (m_numbers.size() == 1) {
            if (m_numbers[0].digits < 3) {
                return DateFault::Syntax;
            }
            date = {m_numbers[0].value, m_month, 1};
            return DateFault::None;
        }
        const bool yearFirst = m_numbers[0].digits > 2;
        const Number& year = yearFirst ? m_numbers[0] : m_numbers[1];
        const Number& day = yearFirst ? m_numbers[1] : m_numbers[0];
        date = {fullYear(year.value, year.digits), m_month, day.value};
        return DateFault::None;
    }

    DateFault finish(const CivilDate& date, DateTimeValue& result) const {
        if (date.month < 1 || date.month > 12 || date.day < 1 || date.year < 1 || date.year > 9999 ||
            date.day > daysInMonth(date.year, date.month) || m_badTime || m_time.hour > 23 ||
            m_time.minute > 59 || m_time.second > 59) {
            return DateFault::Range;
        }
        result.days = daysFromCivil(date);
        const int milliseconds =
            ((m_time.hour * 60 + m_time.minute) * 60 + m_time.second) * 1000 + m_time.millisecond;
        // Halves cannot occur: a tick is 10/3 milliseconds.
        result.ticks = (milliseconds * 3 + 5) / 10;
        if (result.ticks >= kTicksPerDay) {
            result.ticks -= kTicksPerDay;
            ++result.days;
        }
        return DateFault::None;
    }

    std::string_view m_text;
    DateOrder m_order;
    std::size_t m_at = 0;
    std::vector<Number> m_numbers;
    bool m_separated = false;
    int m_month = 0;
    bool m_hasTime = false;
    bool m_badTime = false;
    CivilTime m_time;
};

}  // namespace

DateFault parseDateTime(std::string_view text, DateOrder order, DateTimeValue& result) {
    return Reader(trimLeft(trimRight(text)), order).read(result);
}

}  // namespace magdb
