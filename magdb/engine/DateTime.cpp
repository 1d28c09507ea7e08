#include "engine/DateTime.h"

#include "engine/Text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <ctime>
#include <unordered_map>

namespace magdb {

namespace {

constexpr std::array<std::string_view, 12> kMonths = {"January",   "February", "March",    "April",
                                                      "May",       "June",     "July",     "August",
                                                      "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> kWeekdays = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                       "Friday", "Saturday", "Sunday"};

bool isLeap(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

/// Days since 1900-01-01 of a Monday-based week: 1900-01-01 was a Monday.
int weekdayFromMonday(std::int32_t days) {
    return ((days % 7) + 7) % 7;
}

std::string padded(int value, int width, char fill = '0') {
    std::string text = std::to_string(value);
    if (static_cast<int>(text.size()) < width) {
        text.insert(0, static_cast<std::size_t>(width) - text.size(), fill);
    }
    return text;
}

int isoWeek(std::int32_t days) {
    // The week belongs to the year of its Thursday.
    const std::int32_t thursday = days - weekdayFromMonday(days) + 3;
    const int year = civilFromDays(thursday).year;
    return (thursday - daysFromCivil({year, 1, 1})) / 7 + 1;
}

std::string clock12(const CivilTime& time) {
    const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return padded(hour, 2, ' ') + ":" + padded(time.minute, 2);
}

std::string clock24(const CivilTime& time) {
    return padded(time.hour, 2) + ":" + padded(time.minute, 2) + ":" + padded(time.second, 2);
}

std::string dateByStyle(const CivilDate& d, int style) {
    const std::string day = padded(d.day, 2);
    const std::string month = padded(d.month, 2);
    const bool century = style >= 100;
    const std::string year = century ? padded(d.year, 4) : padded(d.year % 100, 2);
    const std::string shortMonth(kMonths[static_cast<std::size_t>(d.month - 1)].substr(0, 3));
    switch (style % 100) {
        case 1:
            return month + "/" + day + "/" + year;
        case 2:
            return year + "." + month + "." + day;
        case 3:
            return day + "/" + month + "/" + year;
        case 4:
            return day + "." + month + "." + year;
        case 5:
            return day + "-" + month + "-" + year;
        case 6:
            return day + " " + shortMonth + " " + year;
        case 7:
            return shortMonth + " " + day + ", " + year;
        case 10:
            return month + "-" + day + "-" + year;
        case 11:
            return year + "/" + month + "/" + day;
        case 12:
            return year + month + day;
        default:
            return {};
    }
}

std::string longDate(const CivilDate& d) {
    return std::string(kMonths[static_cast<std::size_t>(d.month - 1)].substr(0, 3)) + " " +
           padded(d.day, 2, ' ') + " " + padded(d.year, 4);
}

std::string isoDate(const CivilDate& d) {
    return padded(d.year, 4) + "-" + padded(d.month, 2) + "-" + padded(d.day, 2);
}

}  // namespace

std::int32_t daysFromCivil(const CivilDate& date) {
    // Counts years from March, so that the leap day ends the year.
    const int y = date.year - (date.month <= 2 ? 1 : 0);
    const int era = (y >= 0 ? y : y - 399) / 400;
    const int yearOfEra = y - era * 400;
    const int dayOfYear = (153 * (date.month + (date.month > 2 ? -3 : 9)) + 2) / 5 + date.day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    constexpr int kDaysTo1900 = 693901;
    return era * 146097 + dayOfEra - kDaysTo1900;
}

CivilDate civilFromDays(std::int32_t days) {
    const int shifted = days + 693901;
    const int era = (shifted >= 0 ? shifted : shifted - 146096) / 146097;
    const int dayOfEra = shifted - era * 146097;
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int monthFromMarch = (5 * dayOfYear + 2) / 153;
    CivilDate date;
    date.day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
    date.month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    date.year = yearOfEra + era * 400 + (date.month <= 2 ? 1 : 0);
    return date;
}

int daysInMonth(int year, int month) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeap(year) ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

CivilTime civilTime(std::int32_t ticks) {
    CivilTime time;
    const std::int32_t seconds = ticks / kTicksPerSecond;
    time.hour = seconds / 3600;
    time.minute = seconds / 60 % 60;
    time.second = seconds % 60;
    time.millisecond = (ticks % kTicksPerSecond * 10 + 1) / 3;
    return time;
}

bool isInRange(std::int32_t days) {
    return days >= -53690 && days <= 2958463;
}

std::optional<std::string> formatDate(const DateTimeValue& value, int style) {
    const CivilDate d = civilFromDays(value.days);
    if (style == 0 || style == 100 || style == 9 || style == 109) {
        return longDate(d);
    }
    if (style == 20 || style == 21 || style == 23 || style == 120 || style == 121 || style == 126) {
        return isoDate(d);
    }
    const std::string text = dateByStyle(d, style);
    return text.empty() ? std::nullopt : std::optional(text);
}

std::optional<std::string> formatDateTime(const DateTimeValue& value, int style) {
    const CivilDate d = civilFromDays(value.days);
    const CivilTime t = civilTime(value.ticks);
    const std::string half = t.hour < 12 ? "AM" : "PM";
    const std::string thousandths = padded(t.millisecond, 3);
    switch (style) {
        case 0:
        case 100:
            return longDate(d) + " " + clock12(t) + half;
        case 9:
        case 109:
            return longDate(d) + " " + clock12(t) + ":" + padded(t.second, 2) + ":" + thousandths + half;
        case 8:
        case 24:
        case 108:
            return style == 24 ? isoDate(d) + " " + clock24(t) : clock24(t);
        case 13:
        case 113:
            return padded(d.day, 2) + " " +
                   std::string(kMonths[static_cast<std::size_t>(d.month - 1)].substr(0, 3)) + " " +
                   padded(d.year, 4) + " " + clock24(t) + ":" + thousandths;
        case 14:
        case 114:
            return clock24(t) + ":" + thousandths;
        case 20:
        case 120:
            return isoDate(d) + " " + clock24(t);
        case 21:
        case 25:
        case 121:
            return isoDate(d) + " " + clock24(t) + "." + thousandths;
        case 23:
            return isoDate(d);
        case 126:
            return isoDate(d) + "T" + clock24(t) + (t.millisecond == 0 ? "" : "." + thousandths);
        default: {
            const std::string text = dateByStyle(d, style);
            return text.empty() ? std::nullopt : std::optional(text);
        }
    }
}

std::optional<DatePart> datePart(std::string_view name) {
    static const std::unordered_map<std::string, DatePart> kNames = {
        {"year", DatePart::Year},
        {"yy", DatePart::Year},
        {"yyyy", DatePart::Year},
        {"quarter", DatePart::Quarter},
        {"qq", DatePart::Quarter},
        {"q", DatePart::Quarter},
        {"month", DatePart::Month},
        {"mm", DatePart::Month},
        {"m", DatePart::Month},
        {"dayofyear", DatePart::DayOfYear},
        {"dy", DatePart::DayOfYear},
        {"y", DatePart::DayOfYear},
        {"day", DatePart::Day},
        {"dd", DatePart::Day},
        {"d", DatePart::Day},
        {"week", DatePart::Week},
        {"wk", DatePart::Week},
        {"ww", DatePart::Week},
        {"iso_week", DatePart::IsoWeek},
        {"isowk", DatePart::IsoWeek},
        {"isoww", DatePart::IsoWeek},
        {"weekday", DatePart::Weekday},
        {"dw", DatePart::Weekday},
        {"w", DatePart::Weekday},
        {"hour", DatePart::Hour},
        {"hh", DatePart::Hour},
        {"minute", DatePart::Minute},
        {"mi", DatePart::Minute},
        {"n", DatePart::Minute},
        {"second", DatePart::Second},
        {"ss", DatePart::Second},
        {"s", DatePart::Second},
        {"millisecond", DatePart::Millisecond},
        {"ms", DatePart::Millisecond},
        {"microsecond", DatePart::Microsecond},
        {"mcs", DatePart::Microsecond},
        {"nanosecond", DatePart::Nanosecond},
        {"ns", DatePart::Nanosecond},
    };
    const auto found = kNames.find(lower(name));
    return found == kNames.end() ? std::nullopt : std::optional(found->second);
}

std::int64_t partOf(DatePart part, const DateTimeValue& value, int firstWeekday) {
    const CivilDate d = civilFromDays(value.days);
    const CivilTime t = civilTime(value.ticks);
    const std::int32_t newYear = daysFromCivil({d.year, 1, 1});
    switch (part) {
        case DatePart::Year:
            return d.year;
        case DatePart::Quarter:
            return (d.month + 2) / 3;
        case DatePart::Month:
            return d.month;
        case DatePart::DayOfYear:
            return value.days - newYear + 1;
        case DatePart::Day:
            return d.day;
        case DatePart::Week: {
            const int offset = (weekdayFromMonday(newYear) - (firstWeekday - 1) + 7) % 7;
            return (value.days - newYear + offset) / 7 + 1;
        }
        case DatePart::IsoWeek:
            return isoWeek(value.days);
        case DatePart::Weekday:
            return (weekdayFromMonday(value.days) - (firstWeekday - 1) + 7) % 7 + 1;
        case DatePart::Hour:
            return t.hour;
        case DatePart::Minute:
            return t.minute;
        case DatePart::Second:
            return t.second;
        case DatePart::Millisecond:
            return t.millisecond;
        case DatePart::Microsecond:
            return std::int64_t{t.millisecond} * 1000;
        case DatePart::Nanosecond:
            return std::int64_t{t.millisecond} * 1000000;
    }
    return 0;
}

std::string partName(DatePart part, const DateTimeValue& value, int firstWeekday) {
    if (part == DatePart::Month) {
        return std::string(kMonths[static_cast<std::size_t>(civilFromDays(value.days).month - 1)]);
    }
    if (part == DatePart::Weekday) {
        return std::string(kWeekdays[static_cast<std::size_t>(weekdayFromMonday(value.days))]);
    }
    return std::to_string(partOf(part, value, firstWeekday));
}

std::optional<DateTimeValue> addPart(DatePart part, std::int64_t count, const DateTimeValue& value) {
    constexpr std::int64_t kLimit = 4000LL * 366 * kTicksPerDay;
    std::int64_t months = 0;
    std::int64_t ticks = 0;
    switch (part) {
        case DatePart::Year:
            months = count * 12;
            break;
        case DatePart::Quarter:
            months = count * 3;
            break;
        case DatePart::Month:
            months = count;
            break;
        case DatePart::DayOfYear:
        case DatePart::Day:
        case DatePart::Weekday:
            ticks = count * kTicksPerDay;
            break;
        case DatePart::Week:
        case DatePart::IsoWeek:
            ticks = count * 7 * kTicksPerDay;
            break;
        case DatePart::Hour:
            ticks = count * 3600 * kTicksPerSecond;
            break;
        case DatePart::Minute:
            ticks = count * 60 * kTicksPerSecond;
            break;
        case DatePart::Second:
            ticks = count * kTicksPerSecond;
            break;
        case DatePart::Millisecond:
            ticks = (count * 3 + (count >= 0 ? 5 : -5)) / 10;
            break;
        case DatePart::Microsecond:
            ticks = (count * 3 + (count >= 0 ? 5000 : -5000)) / 10000;
            break;
        case DatePart::Nanosecond:
            ticks = count / 3333333;
            break;
    }
    DateTimeValue result = value;
    if (months != 0) {
        CivilDate d = civilFromDays(value.days);
        const std::int64_t index = std::int64_t{d.year} * 12 + d.month - 1 + months;
        if (index < 12 || index >= 120000) {
            return std::nullopt;
        }
        d.year = static_cast<int>(index / 12);
        d.month = static_cast<int>(index % 12) + 1;
        d.day = std::min(d.day, daysInMonth(d.year, d.month));
        result.days = daysFromCivil(d);
    }
    if (ticks > kLimit || ticks < -kLimit) {
        return std::nullopt;
    }
    const std::int64_t total = std::int64_t{result.days} * kTicksPerDay + result.ticks + ticks;
    std::int64_t days = total / kTicksPerDay;
    std::int64_t rest = total % kTicksPerDay;
    if (rest < 0) {
        rest += kTicksPerDay;
        --days;
    }
    result.days = static_cast<std::int32_t>(days);
    result.ticks = static_cast<std::int32_t>(rest);
    return result.days > 2958463 || result.days < -693595 ? std::nullopt : std::optional(result);
}

std::int64_t partsBetween(DatePart part, const DateTimeValue& start, const DateTimeValue& end) {
    const CivilDate a = civilFromDays(start.days);
    const CivilDate b = civilFromDays(end.days);
    // Counting from a day before every datetime keeps the divisions above positive.
    constexpr std::int64_t kShift = 1000000;
    const auto shifted = [&](std::int64_t ticks) {
        return ((std::int64_t{end.days} + kShift) * kTicksPerDay + end.ticks) / ticks -
               ((std::int64_t{start.days} + kShift) * kTicksPerDay + start.ticks) / ticks;
    };
    switch (part) {
        case DatePart::Year:
            return b.year - a.year;
        case DatePart::Quarter:
            return (b.year * 4 + (b.month - 1) / 3) - (a.year * 4 + (a.month - 1) / 3);
        case DatePart::Month:
            return (b.year * 12 + b.month) - (a.year * 12 + a.month);
        case DatePart::DayOfYear:
        case DatePart::Day:
        case DatePart::Weekday:
            return std::int64_t{end.days} - start.days;
        case DatePart::Week:
        case DatePart::IsoWeek:
            // Weeks begin on Sunday here whatever DATEFIRST says; 1900-01-01 was a Monday.
            return (std::int64_t{end.days} + 1 + 7 * kShift) / 7 -
                   (std::int64_t{start.days} + 1 + 7 * kShift) / 7;
        case DatePart::Hour:
            return shifted(std::int64_t{3600} * kTicksPerSecond);
        case DatePart::Minute:
            return shifted(std::int64_t{60} * kTicksPerSecond);
        case DatePart::Second:
            return shifted(kTicksPerSecond);
        case DatePart::Millisecond:
        case DatePart::Microsecond:
        case DatePart::Nanosecond: {
            const std::int64_t milliseconds =
                (std::int64_t{end.days} - start.days) * 86400000 +
                ((std::int64_t{end.ticks} * 10 + 1) / 3 - (std::int64_t{start.ticks} * 10 + 1) / 3);
            return milliseconds * (part == DatePart::Millisecond   ? 1
                                   : part == DatePart::Microsecond ? 1000
                                                                   : 1000000);
        }
    }
    return 0;
}

double toDays(const DateTimeValue& value) {
    return value.days + static_cast<double>(value.ticks) / kTicksPerDay;
}

std::optional<DateTimeValue> fromDays(double days) {
    if (!(days > -53691.0 && days < 2958464.0)) {
        return std::nullopt;
    }
    const double whole = std::floor(days);
    DateTimeValue value;
    value.days = static_cast<std::int32_t>(whole);
    value.ticks = static_cast<std::int32_t>(std::llround((days - whole) * kTicksPerDay));
    if (value.ticks >= kTicksPerDay) {
        value.ticks -= kTicksPerDay;
        ++value.days;
    }
    return value;
}

DateTimeValue currentDateTime(bool utc) {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm fields{};
    if (utc) {
        gmtime_r(&seconds, &fields);
    } else {
        localtime_r(&seconds, &fields);
    }
    const auto within = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()) % 1000;
    DateTimeValue value;
    value.days = daysFromCivil({fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday});
    value.ticks =
        ((fields.tm_hour * 60 + fields.tm_min) * 60 + std::min(fields.tm_sec, 59)) * kTicksPerSecond +
        static_cast<std::int32_t>(within.count() * 3 / 10);
    return value;
}

}  // namespace magdb
