#include "magdb/engine/TsqlRunner.h"

#include <cstdio>
#include <cstdlib>

using namespace magdb;

namespace {

std::filesystem::path makeFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "magdb-tsql-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    return pattern;
}

std::string decimalText(const DecimalValue& value) {
    const bool negative = value.unscaled < 0;
    auto rest = negative ? -value.unscaled : value.unscaled;
    std::string digits;
    do {
        digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(rest % 10)));
        rest /= 10;
    } while (rest != 0);
    if (value.scale > 0) {
        if (digits.size() <= value.scale) {
            digits.insert(0, value.scale - digits.size() + 1, '0');
        }
        digits.insert(digits.size() - value.scale, ".");
    }
    return (negative ? "-" : "") + digits;
}

/// Civil date of a day count, by the well-known algorithm over eras of 400 years.
std::string dateText(const DateTimeValue& value) {
    const int days = value.days + 693901;  // from 0000-03-01
    const int era = (days >= 0 ? days : days - 146096) / 146097;
    const int dayOfEra = days - era * 146097;
    const int yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int shifted = (5 * dayOfYear + 2) / 153;
    const int day = dayOfYear - (153 * shifted + 2) / 5 + 1;
    const int month = shifted < 10 ? shifted + 3 : shifted - 9;
    const int year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    const int seconds = value.ticks / 300;
    const int millis = (value.ticks % 300 * 10 + 1) / 3;
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d.%03d", year, month, day, seconds / 3600,
                  seconds / 60 % 60, seconds % 60, millis);
    return text;
}

}  // namespace

std::string describe(const Value& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return std::to_string(*number);
    }
    if (const auto* real = std::get_if<double>(&value)) {
        char text[64];
        std::snprintf(text, sizeof text, "%.15g", *real);
        return text;
    }
    if (const auto* decimal = std::get_if<DecimalValue>(&value)) {
        return decimalText(*decimal);
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        return "'" + *text + "'";
    }
    if (const auto* bytes = std::get_if<Bytes>(&value)) {
        std::string text = "0x";
        for (const std::uint8_t byte : *bytes) {
            char digits[3];
            std::snprintf(digits, sizeof digits, "%02X", byte);
            text += digits;
        }
        return text;
    }
    if (const auto* time = std::get_if<DateTimeValue>(&value)) {
        return dateText(*time);
    }
    return "NULL";
}

TsqlRunner::TsqlRunner() : m_folder(makeFolder()) {
    m_engine = std::make_unique<Engine>((m_folder / "Testowa.db").string());
    m_session = m_engine->connectAsOwner();
}

TsqlRunner::~TsqlRunner() {
    m_session.reset();
    m_engine.reset();
    std::filesystem::remove_all(m_folder);
}

std::string TsqlRunner::run(std::string_view sql) {
    m_out.clear();
    m_messages.clear();
    m_columns.clear();
    m_session->executeBatch(sql, *this);
    return m_out;
}

std::string TsqlRunner::values(std::string_view sql) {
    m_typed = false;
    std::string out = run(sql);
    m_typed = true;
    return out;
}

std::string TsqlRunner::names(std::string_view sql) {
    run(sql);
    std::string out;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        out += (i == 0 ? "" : "|") + m_columns[i].name;
    }
    return out;
}

std::string TsqlRunner::messages(std::string_view sql) {
    run(sql);
    return m_messages;
}

void TsqlRunner::columns(const std::vector<ResultColumn>& columns) {
    m_columns = columns;
    m_out += m_out.empty() ? "" : " / ";
    m_firstRow = true;
}

void TsqlRunner::row(std::span<const Value> values) {
    m_out += m_firstRow ? "" : ";";
    m_firstRow = false;
    for (std::size_t i = 0; i < values.size(); ++i) {
        m_out += i == 0 ? "" : "|";
        m_out += m_typed ? typeName(m_columns.at(i).type) + " " : "";
        m_out += describe(values[i]);
    }
}

void TsqlRunner::statementDone(std::optional<std::int64_t> /*rowCount*/, bool /*hadResult*/,
                               bool /*inProcedure*/) {}

void TsqlRunner::message(const ServerMessage& message) {
    m_messages += (m_messages.empty() ? "" : "\n") + std::to_string(message.number) + " " + message.text;
    if (message.severity > 10) {
        m_out += (m_out.empty() ? "" : " / ") + std::string("Msg ") + std::to_string(message.number);
    }
}

void TsqlRunner::databaseChanged(const std::string& /*from*/, const std::string& /*to*/) {}
