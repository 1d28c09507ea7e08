#include "common/modListBox.h"

#include "common/AppContext.h"
#include "common/DbGateway.h"
#include "common/ErrorTrap.h"
#include "common/modSQL.h"
#include "platform/Convert.h"
#include "platform/DataCombo.h"
#include "platform/ListView.h"
#include "platform/RunTimeError.h"

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 defaultLpWidth = 600;
const QString hiddenMark = u"xxx_"_s;
const QString lpCaption = u"Lp"_s;
const QString ascendingMark = u"[v]"_s;
const QString descendingMark = u"[^]"_s;
constexpr QLatin1StringView moduleName("modListBox");
// Two routines of the module report under no name: their titles show two blanks.
constexpr QLatin1StringView noName("");

void makeHeaders(ListView& lvw, const DbRecordset& rs, bool skipHidden, bool blnLp) {
    if (skipHidden && blnLp) {
        lvw.addHeader(lpCaption);
    }
    const DbFields fields = rs.Fields();
    for (int i = 0; i < fields.Count(); ++i) {
        const QString name = fields.Item(i).Name();
        if (!skipHidden || !ColumnName::isHidden(name)) {
            lvw.addHeader(ColumnName::caption(name));
        }
    }
}

// A first column is a national text or a whole number; any other text fails here, unless it reads as a
// number.
ListItem* addRow(ListView& lvw, const QVariant& first, int type) {
    ListItem* item = lvw.addItem(first.isValid() ? ToText(first) : QString::number(0));
    if (type != DbType::NationalVarChar) {
        // The row stands before its text is converted: a text that fails stays in the list as it is.
        item->setText(QString::number(ToInt32(NullToValue(first, 0))));
    }
    return item;
}

// Positions of the result's columns that make cells behind the first one. Headers can be left from a narrower
// query: cells beyond them cannot be seen.
QVector<int> cellColumns(const ListView& lvw, const DbRecordset& rs, int firstField) {
    QVector<int> columns;
    const DbFields fields = rs.Fields();
    for (int i = firstField; i < fields.Count() && columns.size() + 1 < lvw.headerCount(); ++i) {
        if (!ColumnName::isHidden(fields.Item(i).Name())) {
            columns.append(i);
        }
    }
    return columns;
}

// Reads the cells where they lie in the result: a list may have tens of thousands of rows, and in a search
// the user waits for them at each key stroke.
void addRows(ListView& lvw, const DbRecordset& rs, bool blnLp) {
    const QVector<int> columns = cellColumns(lvw, rs, blnLp ? 0 : 1);
    const int rowCount = rs.RecordCount();
    const DbTable& table = *rs.table();
    for (int row = 0; row < rowCount; ++row) {
        ListItem* item = blnLp ? lvw.addItem(QString::number(rowCount - row))
                               : addRow(lvw, table.at(row, 0), table.columns.first().type);
        int cell = 0;
        for (const int column : columns) {
            const QVariant& value = table.at(row, column);
            item->setSubItem(++cell, value.isValid() ? ToText(value) : QString());
        }
    }
}

// What stands between the first ":" and the first ";".
QString widthPart(const QString& name) {
    const qsizetype colon = name.indexOf(u':');
    const qsizetype semicolon = name.indexOf(u';');
    if (semicolon < colon) {
        // Every name with a width carries its ";".
        throw RunTimeError(RunTime::InvalidProcedureCall);
    }
    return name.mid(colon + 1, semicolon - colon - 1);
}

ListAlignment alignmentOf(const QString& code) {
    const qint16 alignment = ToInt16(code);
    if (alignment < static_cast<qint16>(ListAlignment::Left) ||
        alignment > static_cast<qint16>(ListAlignment::Centre)) {
        throw RunTimeError(RunTime::InvalidPropertyValue);
    }
    return static_cast<ListAlignment>(alignment);
}

// `position` counts the result's columns from 1. The list's column is counted from it, so that a hidden
// column in the middle shifts what stands behind it: hidden columns stand at the end.
void styleColumn(ListView& lvw, const QString& name, int position, int listColumn) {
    if (name.contains(u':')) {
        const QString width = widthPart(name);
        if (IsNumeric(width)) {
            lvw.setHeaderWidth(listColumn, ToInt16(width));
        }
    }
    const qsizetype semicolon = name.indexOf(u';');
    if (semicolon >= 0 && position >= 2) {
        const QString alignment = name.mid(semicolon + 1);
        if (IsNumeric(alignment)) {
            lvw.setHeaderAlignment(listColumn, alignmentOf(alignment));
        }
    }
}

QString beforeMark(const QString& text) {
    return text.section(u'[', 0, 0);
}

RowSource toRowSource(const DbTable& table) {
    RowSource source;
    for (const DbColumn& column : table.columns) {
        source.Columns.append(column.name);
    }
    const qsizetype width = table.columns.size();
    for (qsizetype row = 0; row < table.rowCount; ++row) {
        source.Rows.append(QList<QVariant>(table.values.sliced(row * width, width)));
    }
    return source;
}

}  // namespace

bool ColumnName::isHidden(const QString& name) {
    return name.contains(hiddenMark);
}

QString ColumnName::caption(const QString& name) {
    return name.section(u':', 0, 0);
}

void FilleListView(AppContext& context, ListView& lvw, const QString& strSQL, const QString& strSort,
                   bool blnHeaders, bool blnNoDefaultSort, bool blnSetWidth, bool blnLp, qint16 intLpWidth) {
    ClassTrap(context, moduleName, "FilleListView", [&] {
        DbRecordset rs;
        rs.Open(strSQL, mainConnection(context));
        lvw.clearItems();
        if (lvw.headerCount() == 0) {
            // With blnHeaders a result of hidden columns alone makes no headers; the rule that shows hidden
            // columns belongs to lists without it.
            makeHeaders(lvw, rs, blnHeaders, blnLp);
        }
        addRows(lvw, rs, blnLp);
        if (blnSetWidth) {
            SetWidthColumnOnGrid(context, lvw, rs, blnLp, intLpWidth);
        }
        if (!strSort.isEmpty()) {
            Sorted(context, lvw, strSort + u"  "_s + descendingMark, false);
        } else if (!blnNoDefaultSort) {
            Sorted(context, lvw, lvw.headerText(1), false);
        } else {
            lvw.setSorted(false);
        }
    });
}

void SetWidthColumnOnGrid(AppContext& context, ListView& lvw, const DbRecordset& rs, bool blnLp,
                          qint16 intLpWidth) {
    ClassTrap(context, moduleName, "SetWidthColumnOnGrid", [&] {
        if (blnLp) {
            lvw.setHeaderWidth(1, intLpWidth == 0 ? defaultLpWidth : intLpWidth);
        }
        const DbFields fields = rs.Fields();
        for (int i = 1; i <= fields.Count(); ++i) {
            styleColumn(lvw, fields.Item(i - 1).Name(), i, blnLp ? i + 1 : i);
        }
    });
}

void Sorted(AppContext& context, ListView& lvw, const QString& strColumn, bool blnSkip) {
    ClassTrap(context, moduleName, "Sorted", [&] {
        if (blnSkip) {
            return;
        }
        const qsizetype markStart = strColumn.indexOf(u'[');
        const bool marked = markStart >= 0;
        const QString newMark =
            marked && strColumn.mid(markStart) == ascendingMark ? descendingMark : ascendingMark;
        const QString wanted = marked ? TrimBlanks(strColumn.left(markStart)) : strColumn;
        for (int i = 0; i < lvw.headerCount(); ++i) {
            const QString header = lvw.headerText(i + 1);
            const QString plain = beforeMark(header);
            if (TrimBlanks(plain) == wanted) {
                lvw.setHeaderText(i + 1, plain + (marked ? u""_s : u" "_s) + newMark);
                lvw.setSortKey(i);
                lvw.setSortOrder(newMark == descendingMark ? ListSortOrder::Descending
                                                           : ListSortOrder::Ascending);
                lvw.setSorted(true);
            } else if (header.contains(u'[')) {
                lvw.setHeaderText(i + 1, TrimBlanks(plain));
            }
        }
    });
}

void FillComboBox(AppContext& context, DataCombo& cmb, const QString& strSQL, bool blnNoFirst) {
    ClassTrap(context, noName, "FillComboBox", [&] {
        DbRecordset rs;
        rs.Open(strSQL, mainConnection(context), DbRecordset::openStatic, DbRecordset::lockReadOnly);
        const QString boundColumn = rs.Fields().Item(0).Name();
        const QString listField = rs.Fields().Item(1).Name();
        if (rs.RecordCount() < 1) {
            cmb.clearRowSource();
            cmb.setBoundText(QString());
            cmb.setText(QString());
            return;
        }
        cmb.setRowSource(toRowSource(*rs.table()));
        cmb.setBoundColumn(boundColumn);
        cmb.setListField(listField);
        cmb.setBoundText(blnNoFirst ? QString() : ToText(rs.Value(0)));
    });
}

bool EcexProcedure(AppContext& context, const QString& strSQL) {
    ClassTrap(context, noName, "EcexProcedure", [&] {
        DbRecordset rs;
        rs.Open(strSQL, mainConnection(context), DbRecordset::openStatic, DbRecordset::lockReadOnly);
    });
    return true;
}

}  // namespace regalon
