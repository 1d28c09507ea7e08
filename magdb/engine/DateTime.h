#pragma once

#include "engine/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace magdb {

inline constexpr std::int32_t kTicksPerSecond = 300;
inline constexpr std::int32_t kTicksPerDay = 86400 * kTicksPerSecond;

struct CivilDate {
    int year = 1900;
    int month = 1;  ///< 1 to 12
    int day = 1;    ///< 1 to 31
};

struct CivilTime {
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;  ///< rounded to the tick when it comes from a datetime
};

/// Days since 1900-01-01.
[[nodiscard]] std::int32_t daysFromCivil(const CivilDate& date);
[[nodiscard]] CivilDate civilFromDays(std::int32_t days);
[[nodiscard]] int daysInMonth(int year, int month);
[[nodiscard]] CivilTime civilTime(std::int32_t ticks);
/// True for 1753-01-01 to 9999-12-31, the range of datetime.
[[nodiscard]] bool isInRange(std::int32_t days);

/// Order of the numbers of a date written with separators.
enum class DateOrder : std::uint8_t { Mdy, Dmy, Ymd };

/// What came of reading a date: Syntax is error 241, Range error 242.
enum class DateFault : std::uint8_t { None, Syntax, Range };

/// Reads a date and time as T-SQL writes them: yyyymmdd, yyyy-mm-dd, ISO with T, numbers by `order`, names of
/// months in English, times with AM and PM. An empty text is 1900-01-01.
[[nodiscard]] DateFault parseDateTime(std::string_view text, DateOrder order, DateTimeValue& result);

/// The text of CONVERT for a style (0 to 14, 20, 21, 100 to 114, 120, 121, 126). Nothing for other styles.
[[nodiscard]] std::optional<std::string> formatDateTime(const DateTimeValue& value, int style);
[[nodiscard]] std::optional<std::string> formatDate(const DateTimeValue& value, int style);

enum class DatePart : std::uint8_t {
    Year,
    Quarter,
    Month,
    DayOfYear,
    Day,
    Week,
    IsoWeek,
    Weekday,
    Hour,
    Minute,
    Second,
    Millisecond,
    Microsecond,
    Nanosecond,
};

/// By any of its names (yy, yyyy, year, dd...).
[[nodiscard]] std::optional<DatePart> datePart(std::string_view name);

/// DATEPART. firstWeekday as SET DATEFIRST: 1 Monday to 7 Sunday.
[[nodiscard]] std::int64_t partOf(DatePart part, const DateTimeValue& value, int firstWeekday);
[[nodiscard]] std::string partName(DatePart part, const DateTimeValue& value, int firstWeekday);
/// DATEADD; nothing when the result leaves the range.
[[nodiscard]] std::optional<DateTimeValue> addPart(DatePart part, std::int64_t count,
                                                   const DateTimeValue& value);
/// DATEDIFF: boundaries of the part crossed from start to end.
[[nodiscard]] std::int64_t partsBetween(DatePart part, const DateTimeValue& start, const DateTimeValue& end);

/// Days and part of a day since 1900-01-01, as datetime converts to and from numbers.
[[nodiscard]] double toDays(const DateTimeValue& value);
[[nodiscard]] std::optional<DateTimeValue> fromDays(double days);

/// The local time of this machine, or UTC.
[[nodiscard]] DateTimeValue currentDateTime(bool utc);

}  // namespace magdb
