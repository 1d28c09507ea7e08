#include "engine/Schema.h"

#include "engine/Text.h"

#include <atomic>

namespace magdb {

namespace {

std::uint64_t nextUid() {
    static std::atomic<std::uint64_t> counter{1};
    return counter++;
}

}  // namespace

int Table::columnIndex(std::string_view columnName) const {
    const std::string key = nameKey(columnName);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (nameKey(columns[i].name) == key) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

int Table::identityColumn() const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].identity) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

const tsql::CreateViewStatement& Module::view() const {
    return tsql::as<tsql::CreateViewStatement>(*batch->statements.front());
}

const tsql::CreateProcedureStatement& Module::procedure() const {
    return tsql::as<tsql::CreateProcedureStatement>(*batch->statements.front());
}

const tsql::CreateFunctionStatement& Module::function() const {
    return tsql::as<tsql::CreateFunctionStatement>(*batch->statements.front());
}

Schema::Schema() : uid(nextUid()) {}

Schema::Schema(const Schema& other)
    : version(other.version), nextObjectId(other.nextObjectId), uid(nextUid()), m_objects(other.m_objects) {}

std::shared_ptr<const SchemaObject> Schema::find(std::string_view name) const {
    const auto found = m_objects.find(nameKey(name));
    return found == m_objects.end() ? nullptr : found->second;
}

std::shared_ptr<const SchemaObject> Schema::findById(std::int32_t id) const {
    for (const auto& [key, object] : m_objects) {
        if (object->id == id) {
            return object;
        }
    }
    return nullptr;
}

std::shared_ptr<const Table> Schema::findTable(std::string_view name) const {
    return std::dynamic_pointer_cast<const Table>(find(name));
}

std::shared_ptr<const Module> Schema::findModule(std::string_view name) const {
    return std::dynamic_pointer_cast<const Module>(find(name));
}

std::vector<std::shared_ptr<const Table>> Schema::referencing(std::string_view tableName) const {
    std::vector<std::shared_ptr<const Table>> result;
    for (const auto& [key, object] : m_objects) {
        const auto table = std::dynamic_pointer_cast<const Table>(object);
        if (!table) {
            continue;
        }
        for (const ForeignKey& foreign : table->foreignKeys) {
            if (sameName(foreign.referenced, tableName)) {
                result.push_back(table);
                break;
            }
        }
    }
    return result;
}

void Schema::put(std::shared_ptr<const SchemaObject> object) {
    const std::string key = nameKey(object->name);
    m_objects[key] = std::move(object);
}

void Schema::remove(std::string_view name) {
    m_objects.erase(nameKey(name));
}

std::string_view typeCode(ObjectKind kind) {
    switch (kind) {
        case ObjectKind::Table:
            return "U";
        case ObjectKind::View:
            return "V";
        case ObjectKind::Procedure:
            return "P";
        case ObjectKind::ScalarFunction:
            return "FN";
        case ObjectKind::InlineFunction:
            return "IF";
        case ObjectKind::TableFunction:
            return "TF";
    }
    return {};
}

}  // namespace magdb
