#include "engine/Catalog.h"
#include "engine/Core.h"
#include "engine/Text.h"
#include "tsql/Parser.h"

#include <algorithm>

// CREATE and DROP: tables, temporary tables, modules. ALTER TABLE and indexes are in InterpreterAlter.cpp.

namespace magdb {

namespace {

std::string signatureOf(const Table& table) {
    std::string text = nameKey(table.name);
    for (const Column& column : table.columns) {
        text += "\n" + column.name + " " + typeName(column.type) + (column.nullable ? "" : " not null") +
                (column.identity ? " identity" : "") + " " + column.defaultText + " " + column.computedText +
                " " + column.collation;
    }
    for (const Key& key : table.keys) {
        text += "\nkey " + std::to_string(static_cast<int>(key.kind)) + key.name;
        for (const int column : key.columns) {
            text += " " + std::to_string(column);
        }
    }
    for (const Check& check : table.checks) {
        text += "\ncheck " + check.name + check.text;
    }
    return text + "\n" + std::to_string(table.identitySeed) + " " + std::to_string(table.identityIncrement);
}

const char* kindName(tsql::ObjectType type) {
    switch (type) {
        case tsql::ObjectType::Table:
            return "table";
        case tsql::ObjectType::View:
            return "view";
        case tsql::ObjectType::Procedure:
            return "procedure";
        case tsql::ObjectType::Function:
            return "function";
    }
    return "";
}

bool isOfType(ObjectKind kind, tsql::ObjectType type) {
    switch (type) {
        case tsql::ObjectType::Table:
            return kind == ObjectKind::Table;
        case tsql::ObjectType::View:
            return kind == ObjectKind::View;
        case tsql::ObjectType::Procedure:
            return kind == ObjectKind::Procedure;
        case tsql::ObjectType::Function:
            return kind == ObjectKind::ScalarFunction || kind == ObjectKind::InlineFunction ||
                   kind == ObjectKind::TableFunction;
    }
    return false;
}

bool isPlainTemporary(const std::string& name) {
    return name.starts_with("#") && !name.starts_with("##");
}

}  // namespace

std::shared_ptr<const Table> Core::temporaryTable(const std::string& name) const {
    const std::string key = nameKey(name);
    for (std::size_t i = m_temporaries.size(); i-- > 0;) {
        if (m_temporaries[i].key == key) {
            return m_temporaries[i].table;
        }
    }
    return nullptr;
}

std::vector<std::shared_ptr<const Table>> Core::temporaryTables() const {
    std::vector<std::shared_ptr<const Table>> tables;
    for (const Temporary& entry : m_temporaries) {
        tables.push_back(entry.table);
    }
    return tables;
}

std::shared_ptr<const Table> Core::tableToChange(const tsql::ObjectName& name) {
    std::shared_ptr<const Table> table = name.name.starts_with("#") ? temporaryTable(name.name) : nullptr;
    if (!table && !isPlainTemporary(name.name)) {
        const bool own = name.database.empty() || sameName(name.database, databaseName()) ||
                         (name.name.starts_with("##") && sameName(name.database, "tempdb"));
        table = own ? m_schema->findTable(name.name) : nullptr;
    }
    if (!table) {
        raise(4902, {dotted(name)});
    }
    return table;
}

void Core::storeObject(const std::shared_ptr<SchemaObject>& object) {
    Schema& schema = changingSchema();
    const DateTimeValue now = currentDateTime(false);
    if (object->id == 0) {
        // Numbers are spread out, so that constraints of a table can be numbered beside it.
        schema.nextObjectId = schema.nextObjectId > INT32_MAX - 2000 ? 100000000 : schema.nextObjectId + 1000;
        object->id = schema.nextObjectId;
        object->created = now;
    }
    object->modified = now;
    catalog::store(m_connection, schema, *object);
    schema.put(object);
}

void Core::removeObject(const SchemaObject& object) {
    // The last owner of the object may be the schema that it is taken out of.
    const std::string name = object.name;
    const std::int32_t id = object.id;
    Schema& schema = changingSchema();
    catalog::remove(m_connection, schema, id);
    schema.remove(name);
}

std::string Core::filterOf(const Table& table, const Key& key) {
    if (key.filter.empty()) {
        return {};
    }
    const tsql::ExprPtr condition = tsql::parseCondition(key.filter);
    Binder binder(*this);
    return binder.indexFilter(table, *condition);
}

void Core::makeIndexes(const Table& table, std::size_t firstKey) {
    for (std::size_t i = firstKey; i < table.keys.size(); ++i) {
        for (const std::string& sql : createIndexSql(table, table.keys[i], filterOf(table, table.keys[i]))) {
            try {
                m_connection.execute(sql);
            } catch (const SqliteError& error) {
                if (std::string_view(error.what()).find("UNIQUE") == std::string_view::npos) {
                    throw;
                }
                raise(1505, {"dbo." + table.name, table.keys[i].name, "..."});
            }
        }
    }
}

void Core::finishTable(Table& table) {
    for (Column& column : table.columns) {
        if (!column.computedText.empty() && column.type.id == TypeId::Null) {
            const tsql::ExprPtr expr = tsql::parseExpression(column.computedText);
            Binder binder(*this);
            const Bound bound = binder.typeOver(table, *expr);
            column.type = bound.type;
            column.nullable = bound.nullable;
        }
        if (!column.defaultText.empty()) {
            const tsql::ExprPtr expr = tsql::parseExpression(column.defaultText);
            Binder binder(*this);
            static_cast<void>(binder.scalarAs(*expr, column.type));
        }
    }
    for (const Check& check : table.checks) {
        const tsql::ExprPtr condition = tsql::parseCondition(check.text);
        Binder binder(*this);
        static_cast<void>(binder.violation(table, *condition));
    }
    for (ForeignKey& key : table.foreignKeys) {
        const std::shared_ptr<const Table> other =
            sameName(key.referenced, table.name) ? nullptr : m_schema->findTable(key.referenced);
        const Table* parent = sameName(key.referenced, table.name) ? &table : other.get();
        if (parent == nullptr) {
            raise(1767, {key.name, key.referenced});
        }
        if (key.referencedColumns.empty()) {
            for (const Key& candidate : parent->keys) {
                for (const int column : candidate.columns) {
                    if (candidate.kind == Key::Kind::PrimaryKey) {
                        key.referencedColumns.push_back(
                            parent->columns[static_cast<std::size_t>(column)].name);
                    }
                }
            }
        }
        const bool known = std::any_of(parent->keys.begin(), parent->keys.end(), [&](const Key& candidate) {
            return candidate.kind != Key::Kind::Index &&
                   candidate.columns.size() == key.referencedColumns.size() &&
                   std::all_of(candidate.columns.begin(), candidate.columns.end(), [&](int column) {
                       return std::any_of(
                           key.referencedColumns.begin(), key.referencedColumns.end(),
                           [&](const std::string& name) {
                               return sameName(name, parent->columns[static_cast<std::size_t>(column)].name);
                           });
                   });
        });
        if (!known || key.referencedColumns.size() != key.columns.size()) {
            raise(1776, {key.referenced, key.name});
        }
    }
}

void Core::createTable(const std::shared_ptr<Table>& table) {
    if (isPlainTemporary(table->name)) {
        createTemporary(table);
        return;
    }
    if (m_schema->find(table->name)) {
        raise(2714, {table->name});
    }
    if (nameKey(table->name).starts_with("sqlite_") || nameKey(table->name).starts_with("magdb_")) {
        refuse("names that begin with sqlite_ or magdb_");
    }
    finishTable(*table);
    table->physical = physicalName(table->name);
    if (table->name.starts_with("##")) {
        table->owner = std::to_string(m_spid);
        m_ownGlobals.insert(nameKey(table->name));
    }
    m_connection.execute(createTableSql(*table));
    makeIndexes(*table, 0);
    storeObject(table);
}

void Core::createTemporary(std::shared_ptr<Table> table) {
    const std::string key = nameKey(table->name);
    for (std::size_t i = m_frame->temporaryMark; i < m_temporaries.size(); ++i) {
        if (m_temporaries[i].key == key) {
            raise(2714, {table->name});
        }
    }
    table->local = true;
    table->foreignKeys.clear();
    finishTable(*table);
    const std::string signature = signatureOf(*table);
    std::shared_ptr<const Table> made;
    // A table of the same shape that was dropped before serves again, so that plans over it stay.
    if (const auto spare = m_spareTables.find(signature); spare != m_spareTables.end()) {
        made = spare->second;
        m_spareTables.erase(spare);
        m_connection.execute("DELETE FROM " + made->physical);
        m_localIdentity.erase(made->physical);
    } else {
        ++m_temporaryCount;
        table->id = -1000 * m_temporaryCount;
        table->created = currentDateTime(false);
        table->modified = table->created;
        table->physical = "tmp." + quoted(key + "_" + std::to_string(m_temporaryCount));
        m_connection.execute(createTableSql(*table));
        makeIndexes(*table, 0);
        made = table;
    }
    m_temporaries.push_back({key, made, signature});
    ++m_temporaryEpoch;
}

void Core::dropTemporary(std::size_t index) {
    const Temporary entry = m_temporaries[index];
    m_temporaries.erase(m_temporaries.begin() + static_cast<std::ptrdiff_t>(index));
    ++m_temporaryEpoch;
    m_localIdentity.erase(entry.table->physical);
    if (entry.signature.empty()) {
        m_connection.execute("DROP TABLE " + entry.table->physical);
        return;
    }
    m_connection.execute("DELETE FROM " + entry.table->physical);
    m_spareTables.emplace(entry.signature, entry.table);
}

void Core::runCreateTable(const tsql::CreateTableStatement& statement) {
    const bool local = isPlainTemporary(statement.name.name);
    UnitOfWork unit(*this, !local, false);
    createTable(buildTable(statement.name.name, statement.table, m_frame->module->batch->source));
    unit.commit();
}

void Core::runDrop(const tsql::DropObjectStatement& statement) {
    for (const tsql::ObjectName& name : statement.names) {
        const std::string key = nameKey(name.name);
        if (isPlainTemporary(name.name)) {
            std::size_t index = m_temporaries.size();
            while (index > 0 && m_temporaries[index - 1].key != key) {
                --index;
            }
            if (index > 0) {
                dropTemporary(index - 1);
            } else if (!statement.ifExists) {
                raise(3701, {kindName(statement.type), name.name});
            }
            continue;
        }
        UnitOfWork unit(*this, true, false);
        const std::shared_ptr<const SchemaObject> found = m_schema->find(name.name);
        if (!found || !isOfType(found->kind, statement.type)) {
            if (!statement.ifExists || found) {
                raise(3701, {kindName(statement.type), name.name});
            }
            continue;
        }
        if (found->kind == ObjectKind::Table) {
            const auto& table = dynamic_cast<const Table&>(*found);
            for (const std::shared_ptr<const Table>& child : m_schema->referencing(table.name)) {
                if (child->id != table.id) {
                    raise(3726, {table.name});
                }
            }
            m_connection.execute("DROP TABLE " + table.physical);
            m_ownGlobals.erase(key);
        }
        removeObject(*found);
        unit.commit();
    }
}

void Core::createModule(const tsql::ObjectName& name, ObjectKind kind, bool alter) {
    if (!name.schema.empty() && !sameName(name.schema, "dbo")) {
        refuse("schemas other than dbo");
    }
    UnitOfWork unit(*this, true, false);
    const std::shared_ptr<const SchemaObject> existing = m_schema->find(name.name);
    if (existing && !alter) {
        raise(2714, {name.name});
    }
    if (alter && (!existing || existing->kind != kind)) {
        raise(208, {dotted(name)});
    }
    auto module = std::make_shared<Module>();
    module->name = name.name;
    module->kind = kind;
    module->batch = m_frame->module->batch;
    module->source = module->batch->source;
    module->quotedIdentifier = m_options.quotedIdentifier;
    if (existing) {
        module->id = existing->id;
        module->created = existing->created;
    }
    if (kind == ObjectKind::View || kind == ObjectKind::InlineFunction) {
        const std::vector<SourceColumn> columns = [&] {
            try {
                Binder binder(*this);
                return binder.viewColumns(*module);
            } catch (const SqlError& error) {
                if (error.number() != 8155) {
                    throw;
                }
                const std::string& text = error.message().text;
                const std::size_t at = text.find("for column ") + 11;
                raise(4511, {text.substr(at, text.find(' ', at) - at)});
            }
        }();
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].name.empty()) {
                raise(4511, {std::to_string(i + 1)});
            }
        }
    } else {
        // Declarations and types are checked now; names of tables when the statements run.
        module->id = module->id == 0 ? -1 : module->id;
        static_cast<void>(compiledModule(*module));
        m_modules.erase(module->id);
        m_moduleIdentity.erase(module->id);
        module->id = module->id == -1 ? 0 : module->id;
    }
    storeObject(module);
    unit.commit();
}

void Core::dropGlobalTables() {
    if (m_ownGlobals.empty()) {
        return;
    }
    m_frame = &m_idle;
    m_cancelled = false;
    UnitOfWork unit(*this, true, false);
    for (const std::string& key : m_ownGlobals) {
        const std::shared_ptr<const Table> table = m_schema->findTable(key);
        if (table && table->owner == std::to_string(m_spid)) {
            m_connection.execute("DROP TABLE " + table->physical);
            removeObject(*table);
        }
    }
    unit.commit();
    m_ownGlobals.clear();
}

}  // namespace magdb
