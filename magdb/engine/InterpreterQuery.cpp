#include "engine/Core.h"
#include "engine/Text.h"

// SELECT: rows to the client, into variables, into a new table.

namespace magdb {

void Core::done(std::int64_t rows, bool hadResult) {
    m_rowCount = rows;
    if (m_sink != nullptr && !m_frame->isFunction) {
        m_sink->statementDone(m_options.noCount ? std::nullopt : std::optional(rows), hadResult,
                              m_frame->depth > 0);
    }
}

void Core::runSelect(const tsql::SelectStatement& statement) {
    SelectPlan& select =
        plan<SelectPlan>(&statement, [&](Binder& binder) { return binder.select(*statement.query); });
    if (!select.assignedSlots.empty()) {
        assignRows(select);
        return;
    }
    if (select.into) {
        selectInto(select);
        return;
    }
    if (m_frame->isFunction) {
        raise(444);
    }
    sendRows(select.query);
}

void Core::sendRows(Plan& plan) {
    SqliteStatement& statement = start(plan);
    const SqliteReset reset(statement);
    const std::size_t width = plan.columns.size();
    std::int64_t count = 0;
    Row values(width);
    // The first step may fail; only then are the columns announced.
    bool more = !m_options.formatOnly && step(statement);
    m_sink->columns(plan.columns);
    while (more) {
        for (std::size_t i = 0; i < width; ++i) {
            values[i] = statement.value(static_cast<int>(i), plan.columns[i].type);
        }
        m_sink->row(values);
        ++count;
        if (m_options.rowCount > 0 && count >= m_options.rowCount) {
            break;
        }
        more = step(statement);
    }
    done(count, true);
}

void Core::assignRows(SelectPlan& select) {
    SqliteStatement& statement = start(select.query);
    const SqliteReset reset(statement);
    std::int64_t count = 0;
    while (step(statement)) {
        for (std::size_t i = 0; i < select.assignedSlots.size(); ++i) {
            m_frame->values[static_cast<std::size_t>(select.assignedSlots[i])] =
                statement.value(static_cast<int>(i), select.assignedTypes[i]);
        }
        ++count;
        if (m_options.rowCount > 0 && count >= m_options.rowCount) {
            break;
        }
    }
    m_rowCount = count;
}

void Core::selectInto(SelectPlan& select) {
    auto table = std::make_shared<Table>();
    table->name = select.into->name;
    for (const ResultColumn& result : select.query.columns) {
        if (result.name.empty()) {
            raise(1038);
        }
        if (table->columnIndex(result.name) >= 0) {
            raise(2705, {result.name, table->name});
        }
        Column column;
        column.name = result.name;
        column.type = result.type;
        column.nullable = result.nullable;
        column.identity = result.identity && table->identityColumn() < 0;
        table->columns.push_back(std::move(column));
    }
    UnitOfWork unit(*this, !(select.into->name.starts_with("#") && !select.into->name.starts_with("##")),
                    false);
    const std::vector<Row> rows = fetchAll(select.query);
    createTable(table);
    const std::shared_ptr<const Table> made = tableToChange(*select.into);
    RowWriter writer(*this, made);
    std::optional<std::int64_t> last;
    const int identity = made->identityColumn();
    for (const Row& row : rows) {
        writer.insert(row);
        if (identity >= 0) {
            const Value& value = row[static_cast<std::size_t>(identity)];
            if (const auto* number = std::get_if<std::int64_t>(&value)) {
                last = last ? std::max(*last, *number) : *number;
            }
        }
    }
    if (last) {
        setLastIdentity(*made, last);
    }
    unit.commit();
    done(static_cast<std::int64_t>(rows.size()));
}

}  // namespace magdb
