#include "engine/Core.h"
#include "engine/Text.h"

#include <algorithm>

// Cursors. All are static: the rows are those at the moment of OPEN.

namespace magdb {

Cursor* Core::findCursor(const std::string& name) {
    const std::string key = nameKey(name);
    const auto local = m_frame->cursors.find(key);
    if (local != m_frame->cursors.end()) {
        return local->second.get();
    }
    const auto global = m_cursors.find(key);
    return global == m_cursors.end() ? nullptr : global->second.get();
}

void Core::runDeclareCursor(const tsql::DeclareCursorStatement& statement) {
    auto cursor = std::make_shared<Cursor>();
    bool local = false;
    for (const std::string& option : statement.options) {
        if (option == "LOCAL") {
            local = true;
        } else if (option == "SCROLL") {
            cursor->scroll = true;
        } else if (option == "DYNAMIC" || option == "FOR UPDATE" || option == "SCROLL_LOCKS" ||
                   option == "OPTIMISTIC" || option.starts_with("FOR UPDATE")) {
            refuse(option + " cursors");
        }
    }
    const bool forwardOnly = std::find(statement.options.begin(), statement.options.end(), "FORWARD_ONLY") !=
                             statement.options.end();
    const bool fast = std::find(statement.options.begin(), statement.options.end(), "FAST_FORWARD") !=
                      statement.options.end();
    const bool named = std::any_of(statement.options.begin(), statement.options.end(),
                                   [](const std::string& o) { return o == "STATIC" || o == "KEYSET"; });
    cursor->scroll = cursor->scroll || (named && !forwardOnly && !fast);
    Binder binder(*this);
    cursor->plan = binder.rows(*statement.query);
    cursor->variables = m_frame->values;
    auto& owner = local ? m_frame->cursors : m_cursors;
    if (!owner.emplace(nameKey(statement.name), cursor).second) {
        raise(16915, {statement.name});
    }
}

void Core::runCursor(const tsql::CursorStatement& statement) {
    Cursor* cursor = findCursor(statement.name);
    if (cursor == nullptr) {
        raise(16916, {statement.name});
    }
    switch (statement.kind) {
        case tsql::StatementKind::OpenCursor: {
            if (cursor->open) {
                raise(16905);
            }
            std::swap(m_frame->values, cursor->variables);
            try {
                cursor->rows = fetchAll(cursor->plan);
            } catch (...) {
                std::swap(m_frame->values, cursor->variables);
                throw;
            }
            std::swap(m_frame->values, cursor->variables);
            cursor->open = true;
            cursor->position = 0;
            m_cursorRows = static_cast<std::int64_t>(cursor->rows.size());
            break;
        }
        case tsql::StatementKind::CloseCursor:
            if (!cursor->open) {
                raise(16917);
            }
            cursor->open = false;
            cursor->rows.clear();
            break;
        default: {
            const std::string key = nameKey(statement.name);
            if (m_frame->cursors.erase(key) == 0) {
                m_cursors.erase(key);
            }
            break;
        }
    }
    m_rowCount = 0;
}

void Core::runFetch(const tsql::FetchCursorStatement& statement) {
    Cursor* cursor = findCursor(statement.name);
    if (cursor == nullptr) {
        raise(16916, {statement.name});
    }
    if (!cursor->open) {
        raise(16917);
    }
    using Direction = tsql::FetchCursorStatement::Direction;
    if (!cursor->scroll && statement.direction != Direction::Next) {
        constexpr std::array<const char*, 6> kNames = {"next", "prior",    "first",
                                                       "last", "absolute", "relative"};
        raise(16911, {"fetch", kNames[static_cast<std::size_t>(statement.direction)]});
    }
    const auto count = static_cast<std::int64_t>(cursor->rows.size());
    const auto offset = [&]() {
        const Value value = evaluateAs(*statement.position, plainType(TypeId::BigInt));
        return isNull(value) ? std::int64_t{0} : std::get<std::int64_t>(value);
    };
    std::int64_t target = 0;
    switch (statement.direction) {
        case Direction::Next:
            target = cursor->position + 1;
            break;
        case Direction::Prior:
            target = cursor->position - 1;
            break;
        case Direction::First:
            target = 1;
            break;
        case Direction::Last:
            target = count;
            break;
        case Direction::Absolute: {
            const std::int64_t n = offset();
            target = n < 0 ? count + 1 + n : n;
            break;
        }
        case Direction::Relative:
            target = cursor->position + offset();
            break;
    }
    cursor->position = std::clamp<std::int64_t>(target, 0, count + 1);
    const bool found = cursor->position >= 1 && cursor->position <= count;
    m_fetchStatus = found ? 0 : -1;
    if (statement.into.empty()) {
        m_sink->columns(cursor->plan.columns);
        if (found) {
            m_sink->row(cursor->rows[static_cast<std::size_t>(cursor->position - 1)]);
        }
        done(found ? 1 : 0, true);
        return;
    }
    if (statement.into.size() != cursor->plan.columns.size()) {
        raise(16924);
    }
    for (std::size_t i = 0; i < statement.into.size() && found; ++i) {
        const Variable* destination = variable(statement.into[i]);
        if (destination == nullptr || destination->table) {
            raise(137, {statement.into[i]});
        }
        m_frame->values[static_cast<std::size_t>(destination->slot)] =
            convert(cursor->rows[static_cast<std::size_t>(cursor->position - 1)][i],
                    cursor->plan.columns[i].type, destination->type, 0, settings);
    }
    m_rowCount = found ? 1 : 0;
}

}  // namespace magdb
