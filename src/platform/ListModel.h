#pragma once

#include "platform/ListView.h"

#include <QAbstractItemModel>
#include <QCollator>
#include <QHash>
#include <QList>
#include <QString>

#include <memory>
#include <vector>

namespace regalon {

/// Rows and headers of a ListView. New rows wait, unknown to the view, until flush(): filling a hundred
/// thousand rows then costs one notice and one sort. Whoever needs a row's position flushes first.
class ListModel : public QAbstractItemModel {
    Q_OBJECT

public:
    struct Header {
        QString text;
        ListAlignment alignment = ListAlignment::Left;
        int width = 0;
        int icon = 0;

        bool operator==(const Header&) const = default;
    };

    explicit ListModel(QObject* parent = nullptr);
    ~ListModel() override;

    // Headers by column from 0.
    void addHeader(const Header& header);
    void clearHeaders();
    const QList<Header>& headers() const { return m_headers; }
    void setHeader(int column, const Header& header);

    /// Announces waiting rows to the view, at their places in a sorted list.
    void flush();
    int itemCount() const { return static_cast<int>(m_items.size()); }
    /// Row at a position from 0; only after flush().
    ListItem* itemAt(int row) const { return m_items[static_cast<std::size_t>(row)].get(); }
    ListItem* itemByKey(const QString& key) const { return m_keys.value(key); }
    ListItem* addItem(const QString& key, const QString& text);
    void removeItem(int row);
    void clearItems();
    int rowOf(const ListItem& item);

    bool sorted() const { return m_sorted; }
    int sortKey() const { return m_sortKey; }
    ListSortOrder sortOrder() const { return m_sortOrder; }
    void setSort(bool sorted, int key, ListSortOrder order);

    bool checkBoxes() const { return m_checkBoxes; }
    void setCheckBoxes(bool on);
    const ImageList* smallIcons() const { return m_icons; }
    void setSmallIcons(const ImageList* icons);
    const ImageList* headerIcons() const { return m_headerIcons; }
    void setHeaderIcons(const ImageList* icons);

    /// Raises 35613 for an icon without an image list, 35600 for a number that the list does not have. 0 is
    /// always good: no icon.
    static void checkIcon(const ImageList* icons, int number);

    /// Tells the view that a row looks different; a waiting row has no look yet.
    void changed(ListItem& item);

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

Q_SIGNALS:
    /// The user ticked or cleared a row's check box.
    void userChecked(regalon::ListItem* item);

private:
    using Items = std::vector<std::unique_ptr<ListItem>>;

    void announce();
    void sortAll();
    void insertSorted(int firstNew);
    void renumber(int from);
    QString sortText(const ListItem& item) const { return item.m_cells.value(m_sortKey); }
    static QVariant decoration(const ImageList* icons, int number);

    QList<Header> m_headers;
    Items m_items;
    QHash<QString, ListItem*> m_keys;
    QCollator m_collator;
    const ImageList* m_icons = nullptr;
    const ImageList* m_headerIcons = nullptr;
    int m_shown = 0;
    int m_sortKey = 0;
    ListSortOrder m_sortOrder = ListSortOrder::Ascending;
    bool m_sorted = false;
    bool m_checkBoxes = false;
    bool m_flushAsked = false;
};

}  // namespace regalon
