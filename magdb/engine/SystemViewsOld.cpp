#include "engine/Binder.h"
#include "engine/SystemTypes.h"
#include "engine/SystemViewSet.h"

// sysobjects, syscolumns and the like: the names of long ago, which scripts still use.

namespace magdb {

namespace {

/// The old two-letter codes are padded with a blank.
std::string padded(std::string_view code) {
    std::string out(code);
    out.resize(2, ' ');
    return out;
}

std::vector<Value> objectRow(std::string_view name, std::int32_t id, std::string_view type,
                             std::int32_t parent, const SchemaObject& object) {
    return {text(name),     number(id),     text(padded(type)), number(kDboSchema),
            number(parent), object.created, text(padded(type)), number(0)};
}

auto objects(DatabaseRole role) {
    return [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            take(objectRow(object->name, object->id, typeCode(object->kind), 0, *object));
            if (object->kind != ObjectKind::Table) {
                continue;
            }
            for (const ConstraintInfo& constraint : constraintsOf(static_cast<const Table&>(*object))) {
                // A primary key was of the kind K then, like a unique constraint.
                std::vector<Value> row =
                    objectRow(constraint.name, constraint.id, constraint.type, object->id, *object);
                if (constraint.key != nullptr) {
                    row.at(6) = text("K ");
                }
                take(std::move(row));
            }
        }
    };
}

std::vector<Value> columnRow(std::string_view name, std::int32_t id, int position, const SqlType& type,
                             bool nullable, bool output, bool identity) {
    const TypeFacts& facts = typeFacts(type.id);
    return {text(name),
            number(id),
            number(facts.systemType),
            number(facts.systemType),
            number(storedLength(type)),
            number(position),
            number(nullable ? facts.oldNullType : facts.oldType),
            number(storedPrecision(type)),
            number(storedScale(type)),
            number((nullable ? 8 : 0) | (output ? 64 : 0) | (identity ? 128 : 0)),
            truth(nullable),
            truth(output)};
}

/// Columns of tables and views, and parameters of procedures and functions.
auto columns(DatabaseRole role) {
    return [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            int position = 0;
            for (const Column& column : columnsOf(context, *object)) {
                take(columnRow(column.name, object->id, ++position, column.type, column.nullable, false,
                               column.identity));
            }
            const auto* parameters = parametersOf(*object);
            for (std::size_t i = 0; parameters != nullptr && i < parameters->size(); ++i) {
                const tsql::Parameter& parameter = (*parameters)[i];
                const int number = static_cast<int>(i) + 1;
                take(columnRow(parameter.name, object->id, number, resolveType(parameter.type, number), true,
                               parameter.output, false));
            }
        }
    };
}

auto comments(DatabaseRole role) {
    return [role](CatalogContext& context, const RowTaker& take) {
        constexpr std::size_t kPiece = 4000;
        for (const auto& object : objectsOf(context, role)) {
            if (object->kind == ObjectKind::Table) {
                continue;
            }
            const std::string& source = static_cast<const Module&>(*object).source;
            int piece = 0;
            for (std::size_t at = 0; at < source.size();) {
                std::size_t end = std::min(at + kPiece, source.size());
                // Pieces end between characters.
                while (end < source.size() && (static_cast<unsigned char>(source[end]) & 0xC0U) == 0x80U) {
                    --end;
                }
                take({number(object->id), number(++piece), text(source.substr(at, end - at))});
                at = end;
            }
        }
    };
}

}  // namespace

void addOldViews(ViewList& list, DatabaseRole role) {
    list.push_back(
        {"",
         "sysobjects",
         {sysnameColumn("name"), intColumn("id"), ansiColumn("xtype", 2, false), smallColumn("uid"),
          intColumn("parent_obj"), dateColumn("crdate"), ansiColumn("type", 2), intColumn("status", true)},
         objects(role)});
    list.push_back({"",
                    "syscolumns",
                    {sysnameColumn("name", true), intColumn("id"), tinyColumn("xtype"),
                     smallColumn("xusertype"), smallColumn("length"), smallColumn("colid"),
                     tinyColumn("type"), smallColumn("prec", true), intColumn("scale", true),
                     tinyColumn("status", true), bitColumn("isnullable"), bitColumn("isoutparam")},
                    columns(role)});
    list.push_back({"",
                    "syscomments",
                    {intColumn("id"), smallColumn("colid"), textColumn("text", 4000)},
                    comments(role)});
}

}  // namespace magdb
