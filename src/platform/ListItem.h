#pragma once

#include <QString>
#include <QVarLengthArray>
#include <QVariant>

namespace regalon {

class ListModel;

/// One row of a ListView, owned by it. A pointer stays good until the row is removed or the list cleared;
/// sorting moves rows but keeps them. Changes show at once and raise no event.
class ListItem {
public:
    ListItem(const ListItem&) = delete;
    ListItem& operator=(const ListItem&) = delete;

    QString text() const { return m_cells.isEmpty() ? QString() : m_cells.first(); }
    void setText(const QString& text) { setCell(0, text); }

    /// Text of the sub-item under header `index` + 1; index from 1. A sub-item never set is empty. Raises 380
    /// for an index below 1 or beyond the last header.
    QString subItem(int index) const;
    void setSubItem(int index, const QString& text);

    bool checked() const { return m_checked; }
    void setChecked(bool checked);

    /// Number of the icon in the list's image list; 0 for none. Setting raises 35613 without an image list
    /// and 35600 for a number that it does not have.
    int smallIcon() const { return m_smallIcon; }
    void setSmallIcon(int number);

    QString key() const { return m_key; }
    QVariant tag() const { return m_tag; }
    void setTag(const QVariant& tag) { m_tag = tag; }

    /// Position in the shown order, from 1.
    int index() const;

private:
    friend class ListModel;
    ListItem(ListModel* model, const QString& key, const QString& text)
        : m_model(model), m_cells{text}, m_key(key) {}
    void setCell(qsizetype column, const QString& text);

    ListModel* m_model;
    // Inside the item: a list of tens of thousands of rows then costs one allocation a row less.
    QVarLengthArray<QString, 4> m_cells;
    QString m_key;
    QVariant m_tag;
    int m_row = 0;
    int m_smallIcon = 0;
    bool m_checked = false;
};

}  // namespace regalon
