#include "engine/Catalog.h"
#include "engine/Core.h"
#include "engine/Decimal.h"
#include "engine/Text.h"

#include <algorithm>
#include <unordered_set>

// INSERT, UPDATE, DELETE and TRUNCATE.

namespace magdb {

namespace {

DecimalValue asIdentity(std::int64_t value) {
    return DecimalValue{value, 0};
}

}  // namespace

std::optional<std::int64_t> Core::lastIdentity(const Table& table) {
    if (!table.local) {
        return catalog::lastIdentity(m_connection, table.id);
    }
    const auto found = m_localIdentity.find(table.physical);
    return found == m_localIdentity.end() ? std::nullopt : std::optional(found->second);
}

void Core::setLastIdentity(const Table& table, std::optional<std::int64_t> value) {
    if (!table.local) {
        catalog::setLastIdentity(m_connection, table.id, value);
    } else if (value) {
        m_localIdentity[table.physical] = *value;
    } else {
        m_localIdentity.erase(table.physical);
    }
}

void Core::runInsert(const tsql::InsertStatement& statement) {
    PlanEntry* holder = nullptr;
    const auto make = [&](Binder& binder) { return binder.insert(statement); };
    InsertPlan* insert = &plan<InsertPlan>(&statement, make, &holder);
    if (m_frame->isFunction && !insert->target->local) {
        refuse("changes of tables in a function");
    }
    UnitOfWork unit(*this, !insert->target->local, false);
    // The schema may have moved on while this session waited for its turn.
    insert = &plan<InsertPlan>(&statement, make, &holder);
    std::vector<SqlType> types;
    std::vector<Row> rows;
    if (statement.source == tsql::InsertStatement::Source::Execute) {
        rows = executeForRows(*statement.execute, insert->columns.size(), types);
        insert = &plan<InsertPlan>(&statement, make, &holder);
    } else if (statement.source == tsql::InsertStatement::Source::DefaultValues) {
        rows.emplace_back();
    } else {
        rows = fetchAll(insert->source);
        for (const ResultColumn& column : insert->source.columns) {
            types.push_back(column.type);
        }
    }
    insertRows(*insert, *holder, rows, types);
    unit.commit();
    if (!insert->output || insert->output->into) {
        done(static_cast<std::int64_t>(rows.size()));
    }
}

void Core::insertRows(InsertPlan& insert, PlanEntry& entry, const std::vector<Row>& rows,
                      const std::vector<SqlType>& types) {
    const Table& table = *insert.target;
    if (!entry.writer) {
        entry.writer = std::make_unique<RowWriter>(*this, insert.target);
    }
    RowWriter& writer = *entry.writer;
    writer.begin();
    const int identity = table.identityColumn();
    const bool identityGiven = identity >= 0 && std::find(insert.columns.begin(), insert.columns.end(),
                                                          identity) != insert.columns.end();
    if (identity >= 0) {
        const bool allowed = m_options.identityInsert == table.physical;
        if (identityGiven && !allowed) {
            raise(544, {table.name});
        }
        if (!identityGiven && allowed) {
            raise(545, {table.name});
        }
    }
    std::optional<std::int64_t> last = identity >= 0 ? lastIdentity(table) : std::nullopt;
    std::vector<Row> inserted;
    for (const Row& values : rows) {
        Row row(table.columns.size());
        for (std::size_t i = 0; i < insert.columns.size(); ++i) {
            row[static_cast<std::size_t>(insert.columns[i])] =
                writer.fit(values[i], types[i], insert.columns[i]);
        }
        if (!insert.defaultColumns.empty()) {
            // Once for each row: NEWID() and the like differ.
            const std::vector<Row> defaults = fetchAll(insert.defaults);
            for (std::size_t i = 0; i < insert.defaultColumns.size(); ++i) {
                row[static_cast<std::size_t>(insert.defaultColumns[i])] = writer.fit(
                    defaults.front()[i], insert.defaults.columns[i].type, insert.defaultColumns[i]);
            }
        }
        if (identity >= 0) {
            Value& value = row[static_cast<std::size_t>(identity)];
            const SqlType& type = table.columns[static_cast<std::size_t>(identity)].type;
            if (!identityGiven) {
                last = last ? *last + table.identityIncrement : table.identitySeed;
                value = convert(Value(*last), plainType(TypeId::BigInt), type);
            } else if (!isNull(value)) {
                const auto given = std::get<std::int64_t>(convert(value, type, plainType(TypeId::BigInt)));
                const bool further = !last || (table.identityIncrement > 0 ? given > *last : given < *last);
                last = further ? given : last;
                m_identity = m_frame->scopeIdentity = asIdentity(given);
            }
        }
        writer.insert(row);
        if (identity >= 0 && !identityGiven) {
            m_identity = m_frame->scopeIdentity = asIdentity(*last);
        }
        if (insert.output) {
            writer.compute(row);
            inserted.push_back(std::move(row));
        }
    }
    writer.finish("INSERT");
    if (identity >= 0 && !rows.empty()) {
        setLastIdentity(table, last);
    }
    if (insert.output) {
        sendOutput(*insert.output, entry, inserted, {}, table.columns.size());
    }
}

void Core::sendOutput(OutputPlan& output, PlanEntry& entry, const std::vector<Row>& inserted,
                      const std::vector<Row>& deleted, std::size_t width) {
    const std::size_t count = std::max(inserted.size(), deleted.size());
    if (!output.into) {
        m_sink->columns(output.query.columns);
    } else if (!entry.outputWriter) {
        entry.outputWriter = std::make_unique<RowWriter>(*this, output.into);
    }
    if (output.into) {
        entry.outputWriter->begin();
    }
    for (std::size_t i = 0; i < count; ++i) {
        Row both(width * 2);
        for (std::size_t c = 0; c < width; ++c) {
            both[c] = i < inserted.size() ? inserted[i][c] : Value();
            both[width + c] = i < deleted.size() ? deleted[i][c] : Value();
        }
        const std::vector<Row> values = fetchAll(output.query, &both);
        if (!output.into) {
            m_sink->row(values.front());
            continue;
        }
        Row row(output.into->columns.size());
        for (std::size_t c = 0; c < output.intoColumns.size(); ++c) {
            row[static_cast<std::size_t>(output.intoColumns[c])] = entry.outputWriter->fit(
                values.front()[c], output.query.columns[c].type, output.intoColumns[c]);
        }
        entry.outputWriter->insert(row);
    }
    if (output.into) {
        entry.outputWriter->finish("INSERT");
    } else {
        done(static_cast<std::int64_t>(count), true);
    }
}

std::vector<Row> Core::updateRows(UpdatePlan& update) {
    if (update.variableSlots.empty()) {
        return fetchAll(update.source);
    }
    SqliteStatement& running = start(update.source);
    const SqliteReset reset(running);
    std::vector<Row> rows;
    while (step(running)) {
        Row values;
        for (std::size_t i = 0; i < update.source.columns.size(); ++i) {
            values.push_back(running.value(static_cast<int>(i), update.source.columns[i].type));
        }
        for (std::size_t i = 0; i < update.variableSlots.size(); ++i) {
            m_frame->values[static_cast<std::size_t>(update.variableSlots[i])] =
                values[static_cast<std::size_t>(update.variableColumns[i])];
        }
        rows.push_back(std::move(values));
    }
    return rows;
}

void Core::runUpdate(const tsql::UpdateStatement& statement) {
    PlanEntry* holder = nullptr;
    const auto make = [&](Binder& binder) { return binder.update(statement); };
    UpdatePlan* update = &plan<UpdatePlan>(&statement, make, &holder);
    if (m_frame->isFunction && !update->target->local) {
        refuse("changes of tables in a function");
    }
    UnitOfWork unit(*this, !update->target->local, false);
    update = &plan<UpdatePlan>(&statement, make, &holder);
    if (!holder->writer) {
        holder->writer = std::make_unique<RowWriter>(*this, update->target);
    }
    RowWriter& writer = *holder->writer;
    writer.begin();
    const Table& table = *update->target;
    // First what to write, then the writing: an UPDATE never meets its own rows again.
    std::vector<Row> rows = updateRows(*update);
    std::unordered_set<std::int64_t> seen;
    std::erase_if(rows, [&](const Row& row) {
        return isNull(row.front()) || !seen.insert(std::get<std::int64_t>(row.front())).second;
    });
    if (m_options.rowCount > 0 && static_cast<std::int64_t>(rows.size()) > m_options.rowCount) {
        rows.resize(static_cast<std::size_t>(m_options.rowCount));
    }
    std::vector<std::int64_t> ids;
    std::vector<Row> before;
    std::vector<Row> after;
    for (const Row& row : rows) {
        const std::int64_t id = std::get<std::int64_t>(row.front());
        before.push_back(writer.read(id));
        Row fresh = before.back();
        for (std::size_t i = 0; i < update->columns.size(); ++i) {
            fresh[static_cast<std::size_t>(update->columns[i])] =
                writer.fit(row[i + 1], update->source.columns[i + 1].type, update->columns[i]);
        }
        ids.push_back(id);
        after.push_back(std::move(fresh));
    }
    if (ids.size() > 1 && writer.touchesKey(update->columns)) {
        writer.updateAll(ids, before, after, update->columns);
    } else {
        for (std::size_t i = 0; i < ids.size(); ++i) {
            writer.update(ids[i], before[i], after[i], update->columns);
        }
    }
    writer.finish("UPDATE");
    if (update->output) {
        for (Row& row : after) {
            writer.compute(row);
        }
        sendOutput(*update->output, *holder, after, before, table.columns.size());
    }
    unit.commit();
    if (!update->output || update->output->into) {
        done(static_cast<std::int64_t>(ids.size()));
    }
}

void Core::runDelete(const tsql::DeleteStatement& statement) {
    PlanEntry* holder = nullptr;
    const auto make = [&](Binder& binder) { return binder.remove(statement); };
    DeletePlan* remove = &plan<DeletePlan>(&statement, make, &holder);
    if (m_frame->isFunction && !remove->target->local) {
        refuse("changes of tables in a function");
    }
    UnitOfWork unit(*this, !remove->target->local, false);
    remove = &plan<DeletePlan>(&statement, make, &holder);
    if (!holder->writer) {
        holder->writer = std::make_unique<RowWriter>(*this, remove->target);
    }
    RowWriter& writer = *holder->writer;
    writer.begin();
    std::vector<Row> rows = fetchAll(remove->source);
    std::unordered_set<std::int64_t> seen;
    std::erase_if(rows, [&](const Row& row) {
        return isNull(row.front()) || !seen.insert(std::get<std::int64_t>(row.front())).second;
    });
    if (m_options.rowCount > 0 && static_cast<std::int64_t>(rows.size()) > m_options.rowCount) {
        rows.resize(static_cast<std::size_t>(m_options.rowCount));
    }
    const bool needsOld = remove->output || writer.isReferenced();
    std::vector<Row> deleted;
    for (const Row& row : rows) {
        const std::int64_t id = std::get<std::int64_t>(row.front());
        Row old = needsOld ? writer.read(id) : Row();
        writer.erase(id, old);
        if (remove->output) {
            deleted.push_back(std::move(old));
        }
    }
    writer.finish("DELETE");
    if (remove->output) {
        sendOutput(*remove->output, *holder, {}, deleted, remove->target->columns.size());
    }
    unit.commit();
    if (!remove->output || remove->output->into) {
        done(static_cast<std::int64_t>(rows.size()));
    }
}

void Core::runTruncate(const tsql::TruncateStatement& statement) {
    std::shared_ptr<const Table> table = tableToChange(statement.table);
    UnitOfWork unit(*this, !table->local, false);
    table = tableToChange(statement.table);
    if (!m_schema->referencing(table->name).empty() && !table->local) {
        raise(4712, {table->name});
    }
    m_connection.execute("DELETE FROM " + table->physical);
    setLastIdentity(*table, std::nullopt);
    unit.commit();
    m_rowCount = 0;
}

}  // namespace magdb
