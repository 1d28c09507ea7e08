#pragma once

#include "platform/ListItem.h"

#include <QString>
#include <QTreeView>

namespace regalon {

class ImageList;
class ListModel;

enum class ListAlignment { Left = 0, Right = 1, Centre = 2 };
enum class ListSortOrder { Ascending = 0, Descending = 1 };

/// A list in report form: headers and rows, both counted from 1, over a model that holds a hundred thousand
/// rows. Only what the user does raises signals; changes from code raise none.
class ListView : public QTreeView {
    Q_OBJECT

public:
    /// Width in twips of a header that was given none.
    static constexpr int DefaultHeaderWidth = 1440;

    explicit ListView(QWidget* parent = nullptr);
    ~ListView() override;

    // Headers. A number outside 1 to headerCount() raises 35600.
    int headerCount() const;
    /// Adds a header at the right end and returns its number.
    int addHeader(const QString& text, int widthTwips = DefaultHeaderWidth,
                  ListAlignment alignment = ListAlignment::Left);
    void clearHeaders();
    QString headerText(int number) const;
    void setHeaderText(int number, const QString& text);
    /// Twips. A width that the user dragged comes in whole pixels.
    int headerWidth(int number) const;
    void setHeaderWidth(int number, int twips);
    ListAlignment headerAlignment(int number) const;
    /// Header 1 stays left whatever is set: a list cannot align its first column.
    void setHeaderAlignment(int number, ListAlignment alignment);

    /// Icons for the headers; not owned, must live as long as the list shows them. nullptr for none.
    void setHeaderIcons(const ImageList* icons);
    const ImageList* headerIcons() const;
    /// Number of the header's icon in that list; 0 for none. Setting raises 35613 without an image list and
    /// 35600 for a number that it does not have.
    int headerIcon(int number) const;
    void setHeaderIcon(int number, int icon);

    // Rows. A number outside 1 to itemCount() raises 35600.
    int itemCount() const;
    /// Row at a position of the shown order.
    ListItem* item(int number) const;
    /// Row of a key; nullptr if there is none.
    ListItem* itemByKey(const QString& key) const;
    /// Adds a row at the end or, in a sorted list, at its place. Raises 35602 if the key is taken; an empty
    /// key is never taken. In a sorted list the place is found by the texts that the row has when the list is
    /// next looked at.
    ListItem* addItem(const QString& text, const QString& key = QString());
    void removeItem(int number);
    void clearItems();

    // Sorting by text without regard to case: numbers sort as text. Turning it on, or changing key or order
    // while it is on, sorts at once; turning it off leaves the order as it is.
    bool sorted() const;
    void setSorted(bool sorted);
    /// Column of the sort from 0: 0 is the text, n the sub-item n.
    int sortKey() const;
    void setSortKey(int column);
    ListSortOrder sortOrder() const;
    void setSortOrder(ListSortOrder order);

    bool checkBoxes() const;
    void setCheckBoxes(bool on);

    /// Icons for the rows; not owned, must live as long as the list shows them. nullptr for none.
    void setSmallIcons(const ImageList* icons);
    const ImageList* smallIcons() const;

    /// The row the user is on; nullptr if none.
    ListItem* selectedItem() const;
    void setSelectedItem(ListItem* item);

Q_SIGNALS:
    /// The user clicked a row elsewhere than on its check box.
    void itemClick(regalon::ListItem* item);
    void itemDoubleClick(regalon::ListItem* item);
    /// The user ticked or cleared a check box (mouse or space key); checked() is the new state.
    void itemCheck(regalon::ListItem* item);
    void columnClick(int header);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void onClicked(const QModelIndex& index);

    ListModel* m_list;
    bool m_checkedByClick = false;
};

}  // namespace regalon
