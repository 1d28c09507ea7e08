#include "engine/SystemViewSet.h"
#include "engine/Text.h"

// Keys, indexes, checks and defaults.

namespace magdb {

namespace {

using Rows = std::function<void(const Table&, const RowTaker&)>;

/// A view whose rows come from one table after the other.
void add(ViewList& list, DatabaseRole role, std::string name, std::vector<Column> columns, Rows rows) {
    list.push_back({"sys", std::move(name), std::move(columns),
                    [role, rows = std::move(rows)](CatalogContext& context, const RowTaker& take) {
                        for (const auto& object : objectsOf(context, role)) {
                            if (object->kind == ObjectKind::Table) {
                                rows(static_cast<const Table&>(*object), take);
                            }
                        }
                    }});
}

/// Number of a key among the indexes of its table: 1 is the clustered one.
int indexId(const Table& table, const Key& wanted) {
    int next = 2;
    for (const Key& key : table.keys) {
        const int id = key.clustered ? 1 : next++;
        if (&key == &wanted) {
            return id;
        }
    }
    return 0;
}

bool isUnique(const Key& key) {
    return key.kind != Key::Kind::Index;
}

void indexes(const Table& table, const RowTaker& take) {
    bool clustered = false;
    for (const Key& key : table.keys) {
        clustered = clustered || key.clustered;
    }
    if (!clustered) {
        take({number(table.id), nothing(), number(0), number(0), text("HEAP"), truth(false), truth(false),
              truth(false), truth(false), nothing()});
    }
    for (const Key& key : table.keys) {
        take({number(table.id), text(key.name), number(indexId(table, key)), number(key.clustered ? 1 : 2),
              text(key.clustered ? "CLUSTERED" : "NONCLUSTERED"), truth(isUnique(key)),
              truth(key.kind == Key::Kind::PrimaryKey), truth(key.kind == Key::Kind::Unique),
              truth(!key.filter.empty()), optionalText(key.filter)});
    }
}

void indexColumns(const Table& table, const RowTaker& take) {
    for (const Key& key : table.keys) {
        for (std::size_t i = 0; i < key.columns.size(); ++i) {
            const bool descending = i < key.descending.size() && key.descending[i];
            take({number(table.id), number(indexId(table, key)), number(static_cast<std::int64_t>(i) + 1),
                  number(key.columns[i] + 1), number(static_cast<std::int64_t>(i) + 1), truth(descending),
                  truth(false)});
        }
    }
}

void keyConstraints(const Table& table, const RowTaker& take) {
    for (const ConstraintInfo& constraint : constraintsOf(table)) {
        if (constraint.key != nullptr) {
            take({text(constraint.name), number(constraint.id), number(kDboSchema), number(table.id),
                  text(constraint.type), text(constraint.description),
                  number(indexId(table, *constraint.key))});
        }
    }
}

/// Checks and defaults share their columns.
Rows expressions(const std::string& wanted) {
    return [wanted](const Table& table, const RowTaker& take) {
        for (const ConstraintInfo& constraint : constraintsOf(table)) {
            if (constraint.type == wanted) {
                take({text(constraint.name), number(constraint.id), number(kDboSchema), number(table.id),
                      text(constraint.type), text(constraint.description), number(constraint.column),
                      text(constraint.definition)});
            }
        }
    };
}

std::vector<Column> expressionColumns() {
    return {sysnameColumn("name"),         intColumn("object_id"),       intColumn("schema_id"),
            intColumn("parent_object_id"), ansiColumn("type", 2, false), textColumn("type_desc", 60),
            intColumn("parent_column_id"), textColumn("definition", -1)};
}

const char* actionText(tsql::ReferentialAction action) {
    constexpr const char* kTexts[] = {"NO_ACTION", "CASCADE", "SET_NULL", "SET_DEFAULT"};
    return kTexts[static_cast<std::size_t>(action)];
}

void addForeignKeys(ViewList& list, DatabaseRole role) {
    // The referenced table is known by name: its number is looked up among all objects.
    const auto view = [&](std::string name, std::vector<Column> columns, bool byColumn) {
        const auto fill = [role, byColumn](CatalogContext& context, const RowTaker& take) {
            for (const auto& object : objectsOf(context, role)) {
                if (object->kind != ObjectKind::Table) {
                    continue;
                }
                const auto& table = static_cast<const Table&>(*object);
                for (const ConstraintInfo& constraint : constraintsOf(table)) {
                    if (constraint.foreignKey == nullptr) {
                        continue;
                    }
                    const ForeignKey& key = *constraint.foreignKey;
                    const auto target = context.schema().findTable(key.referenced);
                    const std::int32_t targetId = target ? target->id : 0;
                    if (!byColumn) {
                        take({text(key.name), number(constraint.id), number(kDboSchema), number(table.id),
                              number(targetId), number(static_cast<std::int64_t>(key.onDelete)),
                              text(actionText(key.onDelete)), number(static_cast<std::int64_t>(key.onUpdate)),
                              text(actionText(key.onUpdate)), truth(false)});
                        continue;
                    }
                    for (std::size_t i = 0; i < key.columns.size() && i < key.referencedColumns.size(); ++i) {
                        const int column = target ? target->columnIndex(key.referencedColumns[i]) : -1;
                        take({number(constraint.id), number(static_cast<std::int64_t>(i) + 1),
                              number(table.id), number(key.columns[i] + 1), number(targetId),
                              number(column + 1)});
                    }
                }
            }
        };
        list.push_back({"sys", std::move(name), std::move(columns), fill});
    };
    view(
        "foreign_keys",
        {sysnameColumn("name"), intColumn("object_id"), intColumn("schema_id"), intColumn("parent_object_id"),
         intColumn("referenced_object_id"), tinyColumn("delete_referential_action"),
         textColumn("delete_referential_action_desc", 60), tinyColumn("update_referential_action"),
         textColumn("update_referential_action_desc", 60), bitColumn("is_disabled")},
        false);
    view(
        "foreign_key_columns",
        {intColumn("constraint_object_id"), intColumn("constraint_column_id"), intColumn("parent_object_id"),
         intColumn("parent_column_id"), intColumn("referenced_object_id"), intColumn("referenced_column_id")},
        true);
}

}  // namespace

void addConstraintViews(ViewList& list, DatabaseRole role) {
    add(list, role, "indexes",
        {intColumn("object_id"), sysnameColumn("name", true), intColumn("index_id"), tinyColumn("type"),
         textColumn("type_desc", 60), bitColumn("is_unique"), bitColumn("is_primary_key"),
         bitColumn("is_unique_constraint"), bitColumn("has_filter"), textColumn("filter_definition", -1)},
        indexes);
    add(list, role, "index_columns",
        {intColumn("object_id"), intColumn("index_id"), intColumn("index_column_id"), intColumn("column_id"),
         tinyColumn("key_ordinal"), bitColumn("is_descending_key"), bitColumn("is_included_column")},
        indexColumns);
    add(list, role, "key_constraints",
        {sysnameColumn("name"), intColumn("object_id"), intColumn("schema_id"), intColumn("parent_object_id"),
         ansiColumn("type", 2, false), textColumn("type_desc", 60), intColumn("unique_index_id")},
        keyConstraints);
    add(list, role, "check_constraints", expressionColumns(), expressions("C"));
    add(list, role, "default_constraints", expressionColumns(), expressions("D"));
    addForeignKeys(list, role);
}

}  // namespace magdb
