#include "platform/ListModel.h"

#include "platform/Convert.h"
#include "platform/ImageList.h"
#include "platform/RunTimeError.h"

#include <QIcon>
#include <QLocale>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace regalon {
namespace {

/// Up to this share of new rows each is put at its place; more are sorted with the rest in one go.
constexpr int SingleInsertShare = 64;

}  // namespace

ListModel::ListModel(QObject* parent)
    : QAbstractItemModel(parent), m_collator(QLocale(regionalFormat().Locale)) {
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    m_collator.setNumericMode(false);
    m_collator.setIgnorePunctuation(false);
}

ListModel::~ListModel() = default;

void ListModel::addHeader(const Header& header) {
    const int column = static_cast<int>(m_headers.size());
    beginInsertColumns({}, column, column);
    m_headers.append(header);
    endInsertColumns();
}

void ListModel::clearHeaders() {
    if (m_headers.isEmpty())
        return;
    beginRemoveColumns({}, 0, static_cast<int>(m_headers.size()) - 1);
    m_headers.clear();
    endRemoveColumns();
}

void ListModel::setHeader(int column, const Header& header) {
    // A refilled list sets the widths that it has: headers are then not drawn anew.
    if (m_headers[column] == header)
        return;
    const bool realigned = m_headers[column].alignment != header.alignment;
    m_headers[column] = header;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
    if (realigned && m_shown > 0)
        Q_EMIT dataChanged(index(0, column), index(m_shown - 1, column), {Qt::TextAlignmentRole});
}

ListItem* ListModel::addItem(const QString& key, const QString& text) {
    if (!key.isEmpty() && m_keys.contains(key))
        throw RunTimeError(RunTime::KeyNotUnique);
    m_items.push_back(std::unique_ptr<ListItem>(new ListItem(this, key, text)));
    ListItem* item = m_items.back().get();
    item->m_row = itemCount() - 1;
    if (!key.isEmpty())
        m_keys.insert(key, item);
    if (!m_flushAsked) {
        m_flushAsked = true;
        QMetaObject::invokeMethod(this, &ListModel::flush, Qt::QueuedConnection);
    }
    return item;
}

void ListModel::flush() {
    m_flushAsked = false;
    const int firstNew = m_shown;
    if (firstNew == itemCount())
        return;
    if (!m_sorted) {
        announce();
    } else if ((itemCount() - firstNew) > 1 + firstNew / SingleInsertShare) {
        announce();
        sortAll();
    } else {
        insertSorted(firstNew);
    }
}

void ListModel::announce() {
    beginInsertRows({}, m_shown, itemCount() - 1);
    m_shown = itemCount();
    endInsertRows();
}

void ListModel::insertSorted(int firstNew) {
    Items waiting(std::make_move_iterator(m_items.begin() + firstNew),
                  std::make_move_iterator(m_items.end()));
    m_items.resize(static_cast<std::size_t>(firstNew));
    const int direction = m_sortOrder == ListSortOrder::Ascending ? 1 : -1;
    for (std::unique_ptr<ListItem>& item : waiting) {
        const auto place = std::upper_bound(
            m_items.begin(), m_items.end(), item,
            [this, direction](const std::unique_ptr<ListItem>& a, const std::unique_ptr<ListItem>& b) {
                return m_collator.compare(sortText(*a), sortText(*b)) * direction < 0;
            });
        const int row = static_cast<int>(place - m_items.begin());
        beginInsertRows({}, row, row);
        m_items.insert(place, std::move(item));
        ++m_shown;
        renumber(row);
        endInsertRows();
    }
}

void ListModel::sortAll() {
    struct Keyed {
        QCollatorSortKey key;
        int row;
    };
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::vector<Keyed> order;
    order.reserve(m_items.size());
    for (const std::unique_ptr<ListItem>& item : m_items)
        order.push_back({m_collator.sortKey(sortText(*item)), static_cast<int>(order.size())});
    const int direction = m_sortOrder == ListSortOrder::Ascending ? 1 : -1;
    std::stable_sort(order.begin(), order.end(), [direction](const Keyed& a, const Keyed& b) {
        return a.key.compare(b.key) * direction < 0;
    });

    Items arranged;
    arranged.reserve(m_items.size());
    for (const Keyed& keyed : order)
        arranged.push_back(std::move(m_items[static_cast<std::size_t>(keyed.row)]));
    m_items = std::move(arranged);
    renumber(0);

    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& one : before)
        after.append(index(static_cast<ListItem*>(one.internalPointer())->m_row, one.column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void ListModel::renumber(int from) {
    for (int row = from; row < itemCount(); ++row)
        itemAt(row)->m_row = row;
}

void ListModel::removeItem(int row) {
    flush();
    beginRemoveRows({}, row, row);
    const auto place = m_items.begin() + row;
    m_keys.remove((*place)->m_key);
    m_items.erase(place);
    --m_shown;
    renumber(row);
    endRemoveRows();
}

void ListModel::clearItems() {
    if (m_shown > 0)
        beginRemoveRows({}, 0, m_shown - 1);
    const bool announced = std::exchange(m_shown, 0) > 0;
    m_keys.clear();
    m_items.clear();
    if (announced)
        endRemoveRows();
}

int ListModel::rowOf(const ListItem& item) {
    flush();
    return item.m_row;
}

void ListModel::setSort(bool sorted, int key, ListSortOrder order) {
    flush();
    const bool same = sorted == m_sorted && key == m_sortKey && order == m_sortOrder;
    m_sorted = sorted;
    m_sortKey = key;
    m_sortOrder = order;
    if (sorted && !same)
        sortAll();
}

void ListModel::setCheckBoxes(bool on) {
    m_checkBoxes = on;
    if (m_shown > 0 && !m_headers.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(m_shown - 1, 0));
}

void ListModel::setSmallIcons(const ImageList* icons) {
    m_icons = icons;
    if (m_shown > 0 && !m_headers.isEmpty())
        Q_EMIT dataChanged(index(0, 0), index(m_shown - 1, 0), {Qt::DecorationRole});
}

void ListModel::setHeaderIcons(const ImageList* icons) {
    m_headerIcons = icons;
    if (!m_headers.isEmpty())
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, static_cast<int>(m_headers.size()) - 1);
}

void ListModel::changed(ListItem& item) {
    if (item.m_row < m_shown && !m_headers.isEmpty())
        Q_EMIT dataChanged(index(item.m_row, 0), index(item.m_row, static_cast<int>(m_headers.size()) - 1));
}

QModelIndex ListModel::index(int row, int column, const QModelIndex& parent) const {
    if (parent.isValid() || row < 0 || row >= m_shown || column < 0 || column >= m_headers.size())
        return {};
    return createIndex(row, column, itemAt(row));
}

QModelIndex ListModel::parent(const QModelIndex&) const {
    return {};
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_shown;
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_headers.size());
}

QVariant ListModel::decoration(const ImageList* icons, int number) {
    const bool hasIcon = icons != nullptr && number > 0 && number <= icons->count();
    return hasIcon ? QVariant(icons->icon(number)) : QVariant();
}

void ListModel::checkIcon(const ImageList* icons, int number) {
    if (number != 0 && icons == nullptr)
        throw RunTimeError(RunTime::ImageListNotSet);
    if (number < 0 || (icons != nullptr && number > icons->count()))
        throw RunTimeError(RunTime::IndexOutOfBounds);
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto* item = static_cast<const ListItem*>(index.internalPointer());
    switch (role) {
        case Qt::DisplayRole:
            return item->m_cells.value(index.column());
        case Qt::TextAlignmentRole:
            return headerData(index.column(), Qt::Horizontal, role);
        case Qt::DecorationRole:
            return index.column() == 0 ? decoration(m_icons, item->m_smallIcon) : QVariant();
        case Qt::CheckStateRole:
            if (index.column() != 0 || !m_checkBoxes)
                return {};
            return item->m_checked ? Qt::Checked : Qt::Unchecked;
        default:
            return {};
    }
}

bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::CheckStateRole || index.column() != 0 || !m_checkBoxes)
        return false;
    auto* item = static_cast<ListItem*>(index.internalPointer());
    item->setChecked(value.toInt() == Qt::Checked);
    Q_EMIT userChecked(item);
    return true;
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= m_headers.size())
        return {};
    const Header& header = m_headers[section];
    if (role == Qt::DisplayRole)
        return header.text;
    if (role == Qt::DecorationRole)
        return decoration(m_headerIcons, header.icon);
    if (role != Qt::TextAlignmentRole)
        return {};
    switch (header.alignment) {
        case ListAlignment::Right:
            return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
        case ListAlignment::Centre:
            return QVariant::fromValue(Qt::Alignment(Qt::AlignHCenter | Qt::AlignVCenter));
        default:
            return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    }
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags plain = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return m_checkBoxes && index.column() == 0 ? plain | Qt::ItemIsUserCheckable : plain;
}

QString ListItem::subItem(int index) const {
    if (index < 1 || index >= m_model->headers().size())
        throw RunTimeError(RunTime::InvalidPropertyValue);
    return m_cells.value(index);
}

void ListItem::setSubItem(int index, const QString& text) {
    if (index < 1 || index >= m_model->headers().size())
        throw RunTimeError(RunTime::InvalidPropertyValue);
    setCell(index, text);
}

void ListItem::setCell(qsizetype column, const QString& text) {
    while (m_cells.size() <= column)
        m_cells.append(QString());
    m_cells[column] = text;
    m_model->changed(*this);
}

void ListItem::setChecked(bool checked) {
    m_checked = checked;
    m_model->changed(*this);
}

void ListItem::setSmallIcon(int number) {
    ListModel::checkIcon(m_model->smallIcons(), number);
    m_smallIcon = number;
    m_model->changed(*this);
}

int ListItem::index() const {
    return m_model->rowOf(*this) + 1;
}

}  // namespace regalon
