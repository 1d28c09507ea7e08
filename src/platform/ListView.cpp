#include "platform/ListView.h"

#include "platform/ListModel.h"
#include "platform/RunTimeError.h"
#include "platform/Twips.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace regalon {
namespace {

int columnOf(const ListModel& list, int number) {
    if (number < 1 || number > list.headers().size())
        throw RunTimeError(RunTime::IndexOutOfBounds);
    return number - 1;
}

int rowOf(const ListModel& list, int number) {
    if (number < 1 || number > list.itemCount())
        throw RunTimeError(RunTime::IndexOutOfBounds);
    return number - 1;
}

/// All rows have the height of the first one, and that has room for an icon wherever the list has icons.
class RowDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        const auto* list = qobject_cast<const ListView*>(option.widget);
        if (list != nullptr && list->smallIcons() != nullptr)
            size.setHeight(std::max(size.height(), option.decorationSize.height() + kAroundIcon));
        return size;
    }

private:
    static constexpr int kAroundIcon = 2;
};

ListItem* itemOf(const QModelIndex& index) {
    return static_cast<ListItem*>(index.internalPointer());
}

}  // namespace

ListView::ListView(QWidget* parent) : QTreeView(parent), m_list(new ListModel(this)) {
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    // Rows are of one height: without this a hundred thousand rows would be measured one by one.
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setAllColumnsShowFocus(true);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(true);
    header()->setMinimumSectionSize(0);
    setModel(m_list);
    setItemDelegate(new RowDelegate(this));

    connect(m_list, &ListModel::userChecked, this, [this](ListItem* item) {
        m_checkedByClick = true;
        Q_EMIT itemCheck(item);
    });
    connect(this, &QTreeView::clicked, this, &ListView::onClicked);
    connect(this, &QTreeView::doubleClicked, this,
            [this](const QModelIndex& index) { Q_EMIT itemDoubleClick(itemOf(index)); });
    connect(header(), &QHeaderView::sectionClicked, this,
            [this](int column) { Q_EMIT columnClick(column + 1); });
}

ListView::~ListView() = default;

int ListView::headerCount() const {
    return static_cast<int>(m_list->headers().size());
}

int ListView::addHeader(const QString& text, int widthTwips, ListAlignment alignment) {
    const int number = headerCount() + 1;
    const ListAlignment used = number == 1 ? ListAlignment::Left : alignment;
    m_list->addHeader({text, used});
    setHeaderWidth(number, widthTwips);
    return number;
}

void ListView::clearHeaders() {
    m_list->clearHeaders();
}

QString ListView::headerText(int number) const {
    return m_list->headers()[columnOf(*m_list, number)].text;
}

void ListView::setHeaderText(int number, const QString& text) {
    const int column = columnOf(*m_list, number);
    ListModel::Header changed = m_list->headers()[column];
    changed.text = text;
    m_list->setHeader(column, changed);
}

int ListView::headerWidth(int number) const {
    const int column = columnOf(*m_list, number);
    const int set = m_list->headers()[column].width;
    const int pixels = header()->sectionSize(column);
    return pixels == toPixels(set) ? set : toTwips(pixels);
}

void ListView::setHeaderWidth(int number, int twips) {
    const int column = columnOf(*m_list, number);
    if (twips < 0)
        throw RunTimeError(RunTime::InvalidPropertyValue);
    ListModel::Header changed = m_list->headers()[column];
    changed.width = twips;
    m_list->setHeader(column, changed);
    header()->resizeSection(column, toPixels(twips));
}

ListAlignment ListView::headerAlignment(int number) const {
    return m_list->headers()[columnOf(*m_list, number)].alignment;
}

void ListView::setHeaderAlignment(int number, ListAlignment alignment) {
    const int column = columnOf(*m_list, number);
    const int code = static_cast<int>(alignment);
    if (code < 0 || code > static_cast<int>(ListAlignment::Centre))
        throw RunTimeError(RunTime::InvalidPropertyValue);
    if (column == 0)
        return;
    ListModel::Header changed = m_list->headers()[column];
    changed.alignment = alignment;
    m_list->setHeader(column, changed);
}

void ListView::setHeaderIcons(const ImageList* icons) {
    m_list->setHeaderIcons(icons);
}

const ImageList* ListView::headerIcons() const {
    return m_list->headerIcons();
}

int ListView::headerIcon(int number) const {
    return m_list->headers()[columnOf(*m_list, number)].icon;
}

void ListView::setHeaderIcon(int number, int icon) {
    const int column = columnOf(*m_list, number);
    ListModel::checkIcon(headerIcons(), icon);
    ListModel::Header changed = m_list->headers()[column];
    changed.icon = icon;
    m_list->setHeader(column, changed);
}

int ListView::itemCount() const {
    return m_list->itemCount();
}

ListItem* ListView::item(int number) const {
    m_list->flush();
    return m_list->itemAt(rowOf(*m_list, number));
}

ListItem* ListView::itemByKey(const QString& key) const {
    return m_list->itemByKey(key);
}

ListItem* ListView::addItem(const QString& text, const QString& key) {
    return m_list->addItem(key, text);
}

void ListView::removeItem(int number) {
    m_list->removeItem(rowOf(*m_list, number));
}

void ListView::clearItems() {
    m_list->clearItems();
}

bool ListView::sorted() const {
    return m_list->sorted();
}

void ListView::setSorted(bool sorted) {
    m_list->setSort(sorted, sortKey(), sortOrder());
}

int ListView::sortKey() const {
    return m_list->sortKey();
}

void ListView::setSortKey(int column) {
    if (column < 0)
        throw RunTimeError(RunTime::InvalidPropertyValue);
    m_list->setSort(sorted(), column, sortOrder());
}

ListSortOrder ListView::sortOrder() const {
    return m_list->sortOrder();
}

void ListView::setSortOrder(ListSortOrder order) {
    m_list->setSort(sorted(), sortKey(), order);
}

bool ListView::checkBoxes() const {
    return m_list->checkBoxes();
}

void ListView::setCheckBoxes(bool on) {
    m_list->setCheckBoxes(on);
}

void ListView::setSmallIcons(const ImageList* icons) {
    m_list->setSmallIcons(icons);
}

const ImageList* ListView::smallIcons() const {
    return m_list->smallIcons();
}

ListItem* ListView::selectedItem() const {
    m_list->flush();
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? nullptr : itemOf(rows.first());
}

void ListView::setSelectedItem(ListItem* item) {
    if (item == nullptr)
        selectionModel()->clear();
    else
        setCurrentIndex(m_list->index(m_list->rowOf(*item), 0));
}

void ListView::keyPressEvent(QKeyEvent* event) {
    const QModelIndex row = currentIndex().siblingAtColumn(0);
    if (event->key() != Qt::Key_Space || !checkBoxes() || !row.isValid()) {
        QTreeView::keyPressEvent(event);
        return;
    }
    const bool checked = itemOf(row)->checked();
    m_list->setData(row, checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void ListView::mousePressEvent(QMouseEvent* event) {
    m_checkedByClick = false;
    QTreeView::mousePressEvent(event);
}

void ListView::onClicked(const QModelIndex& index) {
    if (!std::exchange(m_checkedByClick, false))
        Q_EMIT itemClick(itemOf(index));
}

}  // namespace regalon
