#include "engine/Core.h"
#include "engine/Text.h"

#include <algorithm>

// SET of session options.

namespace magdb {

void Core::setSwitch(const std::string& name, bool on, const tsql::SetOptionStatement& statement) {
    if (name == "NOCOUNT") {
        m_options.noCount = on;
    } else if (name == "XACT_ABORT") {
        m_options.xactAbort = on;
    } else if (name == "IMPLICIT_TRANSACTIONS") {
        m_options.implicitTransactions = on;
    } else if (name == "FMTONLY") {
        m_options.formatOnly = on;
    } else if (name == "NOEXEC" || name == "PARSEONLY") {
        m_options.noExec = on;
    } else if (name == "QUOTED_IDENTIFIER") {
        m_options.quotedIdentifier = on;
    } else if (name == "IDENTITY_INSERT") {
        const std::shared_ptr<const Table> table = tableToChange(*statement.table);
        const std::string key = table->physical;
        if (table->identityColumn() < 0) {
            raise(8106, {table->name});
        }
        if (on && !m_options.identityInsert.empty() && m_options.identityInsert != key) {
            raise(8107, {m_options.identityInsert, table->name});
        }
        if (on) {
            m_options.identityInsert = key;
        } else if (m_options.identityInsert == key) {
            m_options.identityInsert.clear();
        }
    } else if (name == "ANSI_NULLS" || name == "ANSI_WARNINGS" || name == "CONCAT_NULL_YIELDS_NULL" ||
               name == "ARITHABORT") {
        // The engine always works by the standard, as SQL Server does for every modern driver. A program
        // that asks for the old ways would get wrong answers, so it is told.
        if (!on && name != "ANSI_WARNINGS" && name != "ARITHABORT") {
            refuse("SET " + name + " OFF");
        }
    } else {
        static const std::vector<std::string> kIndifferent = {"ANSI_PADDING",
                                                              "ANSI_NULL_DFLT_ON",
                                                              "ANSI_NULL_DFLT_OFF",
                                                              "ANSI_DEFAULTS",
                                                              "ARITHIGNORE",
                                                              "NUMERIC_ROUNDABORT",
                                                              "CURSOR_CLOSE_ON_COMMIT",
                                                              "NO_BROWSETABLE",
                                                              "FORCEPLAN",
                                                              "REMOTE_PROC_TRANSACTIONS",
                                                              "ANSI_DFLT_ON"};
        if (std::find(kIndifferent.begin(), kIndifferent.end(), name) == kIndifferent.end()) {
            refuse("SET " + name);
        }
    }
}

void Core::runOption(const tsql::SetOptionStatement& statement) {
    m_rowCount = 0;
    const auto number = [&]() {
        const Value value = evaluateAs(*statement.number, plainType(TypeId::BigInt));
        return isNull(value) ? std::int64_t{0} : std::get<std::int64_t>(value);
    };
    for (const std::string& name : statement.names) {
        if (statement.on) {
            setSwitch(name, *statement.on, statement);
        } else if (name == "ROWCOUNT") {
            m_options.rowCount = std::max<std::int64_t>(0, number());
        } else if (name == "TEXTSIZE") {
            const std::int64_t size = number();
            m_options.textSize = size <= 0 ? 4096 : static_cast<int>(std::min<std::int64_t>(size, INT32_MAX));
        } else if (name == "LOCK_TIMEOUT") {
            m_options.lockTimeout = static_cast<int>(std::clamp<std::int64_t>(number(), -1, INT32_MAX));
        } else if (name == "DATEFIRST") {
            settings.firstWeekday = static_cast<int>(std::clamp<std::int64_t>(number(), 1, 7));
        } else if (name == "DATEFORMAT") {
            std::string format = statement.value;
            if (format.empty() && statement.number) {
                format = upper(
                    std::get<std::string>(evaluateAs(*statement.number, textType(TypeId::VarChar, 10))));
            }
            settings.dateOrder = format == "DMY"   ? DateOrder::Dmy
                                 : format == "YMD" ? DateOrder::Ymd
                                                   : DateOrder::Mdy;
        } else if (name == "LANGUAGE") {
            std::string language = statement.value;
            if (language.empty() && statement.number) {
                language = upper(
                    std::get<std::string>(evaluateAs(*statement.number, textType(TypeId::VarChar, 60))));
            }
            // A language brings its order of dates and first day of the week; messages stay English.
            const bool english = language == "US_ENGLISH" || language == "ENGLISH";
            settings.dateOrder = english ? DateOrder::Mdy
                                         : (language == "POLSKI" || language == "POLISH" ||
                                                    language == "BRITISH" || language == "BRITISH ENGLISH"
                                                ? DateOrder::Dmy
                                                : DateOrder::Mdy);
            settings.firstWeekday = english ? 7 : 1;
        } else if (name == "TRANSACTION ISOLATION LEVEL" || name == "DEADLOCK_PRIORITY" ||
                   name == "CONTEXT_INFO") {
            // Readers see one moment and writers queue, which is stricter than every level asked for.
        } else {
            refuse("SET " + name);
        }
    }
}

}  // namespace magdb
