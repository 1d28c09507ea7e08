#pragma once

#include "engine/DateTime.h"
#include "engine/SqlType.h"
#include "tsql/Ast.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace magdb {

struct Column {
    std::string name;
    SqlType type;
    bool nullable = true;
    bool identity = false;
    std::string defaultName;   ///< of the DEFAULT constraint
    std::string defaultText;   ///< T-SQL; empty without default
    std::string computedText;  ///< T-SQL; empty for an ordinary column
    std::string collation;     ///< as declared; empty: the database's
};

/// A primary key, a unique constraint or an index.
struct Key {
    enum class Kind : std::uint8_t { PrimaryKey, Unique, UniqueIndex, Index };
    Kind kind = Kind::Index;
    std::string name;
    bool clustered = false;
    std::vector<int> columns;  ///< positions in Table::columns
    std::vector<bool> descending;
    std::string filter;  ///< T-SQL condition of a filtered index
};

struct Check {
    std::string name;
    std::string text;  ///< T-SQL condition
};

struct ForeignKey {
    std::string name;
    std::vector<int> columns;
    std::string referenced;  ///< name of the table
    std::vector<std::string> referencedColumns;
    tsql::ReferentialAction onDelete = tsql::ReferentialAction::NoAction;
    tsql::ReferentialAction onUpdate = tsql::ReferentialAction::NoAction;
};

enum class ObjectKind : std::uint8_t {
    Table,
    View,
    Procedure,
    ScalarFunction,
    InlineFunction,
    TableFunction
};

struct SchemaObject {
    std::int32_t id = 0;
    std::string name;
    ObjectKind kind = ObjectKind::Table;
    DateTimeValue created;
    DateTimeValue modified;
    virtual ~SchemaObject() = default;
};

/// A table of the database, a temporary table or a table variable.
struct Table : SchemaObject {
    std::string physical;  ///< SQLite's name with its store in front, quoted: main."x"
    std::string owner;     ///< of a ## table: the session that made it; empty for others
    std::vector<Column> columns;
    std::vector<Key> keys;
    std::vector<Check> checks;
    std::vector<ForeignKey> foreignKeys;
    std::int64_t identitySeed = 1;
    std::int64_t identityIncrement = 1;
    bool local = false;  ///< in the session's own store: changes to it do not touch the database

    [[nodiscard]] int columnIndex(std::string_view columnName) const;  ///< -1 when there is none
    [[nodiscard]] int identityColumn() const;                          ///< -1 when there is none
};

/// A view, procedure or function with its source and its tree.
struct Module : SchemaObject {
    std::string source;
    bool quotedIdentifier = true;
    bool system = false;
    std::shared_ptr<const tsql::Batch> batch;  ///< holds one CREATE statement

    [[nodiscard]] const tsql::CreateViewStatement& view() const;
    [[nodiscard]] const tsql::CreateProcedureStatement& procedure() const;
    [[nodiscard]] const tsql::CreateFunctionStatement& function() const;
};

/// What the database holds at one moment. Immutable once published; sessions share it.
class Schema {
public:
    Schema();
    /// A copy to change, with an identity of its own.
    Schema(const Schema& other);
    Schema& operator=(const Schema&) = delete;

    [[nodiscard]] std::shared_ptr<const SchemaObject> find(std::string_view name) const;
    [[nodiscard]] std::shared_ptr<const SchemaObject> findById(std::int32_t id) const;
    [[nodiscard]] std::shared_ptr<const Table> findTable(std::string_view name) const;
    [[nodiscard]] std::shared_ptr<const Module> findModule(std::string_view name) const;
    /// Ordered by name.
    [[nodiscard]] const std::map<std::string, std::shared_ptr<const SchemaObject>>& objects() const {
        return m_objects;
    }
    /// Tables with a foreign key to this one.
    [[nodiscard]] std::vector<std::shared_ptr<const Table>> referencing(std::string_view tableName) const;

    void put(std::shared_ptr<const SchemaObject> object);
    void remove(std::string_view name);

    std::int64_t version = 0;  ///< as stored in the file
    std::int32_t nextObjectId = 0;
    const std::uint64_t uid;  ///< no two Schema objects of a process share it

private:
    std::map<std::string, std::shared_ptr<const SchemaObject>> m_objects;
};

[[nodiscard]] std::string_view typeCode(ObjectKind kind);  ///< U, V, P, FN, IF, TF

}  // namespace magdb
