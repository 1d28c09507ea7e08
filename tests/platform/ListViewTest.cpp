#include "Failing.h"
#include "platform/ImageList.h"
#include "platform/ListView.h"

#include <QAbstractItemModel>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QPersistentModelIndex>
#include <QPixmap>

#include <gtest/gtest.h>

using namespace regalon;
using regalon::test::failureOf;

namespace {

QStringList texts(const ListView& list, int column = 0) {
    QStringList all;
    for (int i = 1; i <= list.itemCount(); ++i)
        all.append(column == 0 ? list.item(i)->text() : list.item(i)->subItem(column));
    return all;
}

QStringList words(const char* text) {
    return QString::fromUtf8(text).split(u' ');
}

void fill(ListView& list, const char* text) {
    for (const QString& word : words(text))
        list.addItem(word);
}

TEST(ListView, HeadersCountFromOne) {
    ListView list;
    EXPECT_EQ(list.headerCount(), 0);
    EXPECT_EQ(list.addHeader(QStringLiteral("Indeks")), 1);
    EXPECT_EQ(list.addHeader(QStringLiteral("Ilość"), 1000, ListAlignment::Right), 2);
    EXPECT_EQ(list.headerText(2), QStringLiteral("Ilość"));
    EXPECT_EQ(list.headerWidth(1), ListView::DefaultHeaderWidth);
    EXPECT_EQ(list.headerWidth(2), 1000);
    EXPECT_EQ(list.header()->sectionSize(0), 96);
    EXPECT_EQ(list.headerAlignment(2), ListAlignment::Right);
    EXPECT_EQ(failureOf([&] { std::ignore = list.headerText(0); }), RunTime::IndexOutOfBounds);
    EXPECT_EQ(failureOf([&] { list.setHeaderText(3, QString()); }), RunTime::IndexOutOfBounds);
    list.clearHeaders();
    EXPECT_EQ(list.headerCount(), 0);
}

TEST(ListView, AWidthTheUserDraggedReadsInTwips) {
    ListView list;
    list.addHeader(QStringLiteral("a"), 700);
    EXPECT_EQ(list.headerWidth(1), 700);
    list.header()->resizeSection(0, 100);
    EXPECT_EQ(list.headerWidth(1), 1500);
    list.setHeaderWidth(1, 0);
    EXPECT_EQ(list.headerWidth(1), 0);
}

TEST(ListView, TheFirstColumnStaysLeft) {
    ListView list;
    list.addHeader(QStringLiteral("a"), 700, ListAlignment::Right);
    list.addHeader(QStringLiteral("b"));
    list.setHeaderAlignment(1, ListAlignment::Centre);
    list.setHeaderAlignment(2, ListAlignment::Centre);
    EXPECT_EQ(list.headerAlignment(1), ListAlignment::Left);
    EXPECT_EQ(list.headerAlignment(2), ListAlignment::Centre);
    list.addItem(QStringLiteral("x"));
    list.item(1)->setSubItem(1, QStringLiteral("y"));
    const QAbstractItemModel* model = list.model();
    EXPECT_EQ(model->index(0, 1).data(Qt::TextAlignmentRole).toInt(),
              int(Qt::AlignHCenter | Qt::AlignVCenter));
    EXPECT_EQ(model->headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).toInt(),
              int(Qt::AlignHCenter | Qt::AlignVCenter));
    EXPECT_EQ(failureOf([&] { list.setHeaderAlignment(2, static_cast<ListAlignment>(7)); }),
              RunTime::InvalidPropertyValue);
}

TEST(ListView, RowsShowTextsAndSubItems) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    list.addHeader(QStringLiteral("b"));
    ListItem* item = list.addItem(QStringLiteral("x"), QStringLiteral("k1"));
    EXPECT_EQ(item->subItem(1), QString());
    item->setSubItem(1, QStringLiteral("y"));
    list.addItem(QStringLiteral("z"));
    QCoreApplication::processEvents();
    const QAbstractItemModel* model = list.model();
    ASSERT_EQ(model->rowCount(), 2);
    EXPECT_EQ(model->index(0, 1).data().toString(), QStringLiteral("y"));
    EXPECT_EQ(model->index(1, 0).data().toString(), QStringLiteral("z"));
    EXPECT_EQ(list.itemByKey(QStringLiteral("k1")), item);
    EXPECT_EQ(item->index(), 1);
    EXPECT_EQ(failureOf([&] { item->setSubItem(2, QString()); }), RunTime::InvalidPropertyValue);
    EXPECT_EQ(failureOf([&] { item->setSubItem(0, QString()); }), RunTime::InvalidPropertyValue);
    EXPECT_EQ(failureOf([&] { list.addItem(QStringLiteral("w"), QStringLiteral("k1")); }),
              RunTime::KeyNotUnique);
    EXPECT_EQ(failureOf([&] { list.item(3); }), RunTime::IndexOutOfBounds);
    EXPECT_EQ(failureOf([&] { list.item(0); }), RunTime::IndexOutOfBounds);
}

TEST(ListView, ClearingRowsKeepsHeadersAndFreesKeys) {
    ListView list;
    list.addHeader(QStringLiteral("a"), 700);
    list.addItem(QStringLiteral("x"), QStringLiteral("k"));
    QCoreApplication::processEvents();
    list.addItem(QStringLiteral("waiting"));
    list.clearItems();
    EXPECT_EQ(list.itemCount(), 0);
    EXPECT_EQ(list.model()->rowCount(), 0);
    EXPECT_EQ(list.headerWidth(1), 700);
    list.addItem(QStringLiteral("y"), QStringLiteral("k"));
    EXPECT_EQ(list.item(1)->text(), QStringLiteral("y"));
}

TEST(ListView, RemovingARowClosesTheGap) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    fill(list, "a b c");
    list.removeItem(2);
    EXPECT_EQ(texts(list), words("a c"));
    EXPECT_EQ(list.item(2)->index(), 2);
    EXPECT_EQ(failureOf([&] { list.removeItem(3); }), RunTime::IndexOutOfBounds);
}

TEST(ListView, NumbersSortAsText) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    fill(list, "2 10 1 11");
    list.setSorted(true);
    EXPECT_EQ(texts(list), words("1 10 11 2"));
    list.setSortOrder(ListSortOrder::Descending);
    EXPECT_EQ(texts(list), words("2 11 10 1"));
}

TEST(ListView, TextSortsWithoutCaseAndByThePolishAlphabet) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    fill(list, "mąka Łój lak masa Żur zupa ćma cma");
    list.setSorted(true);
    EXPECT_EQ(texts(list), words("cma ćma lak Łój masa mąka zupa Żur"));
}

TEST(ListView, EqualTextsKeepTheirOrder) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    list.addHeader(QStringLiteral("b"));
    for (const QString& mark : words("1 2 3 4"))
        list.addItem(QStringLiteral("same"))->setSubItem(1, mark);
    list.setSorted(true);
    EXPECT_EQ(texts(list, 1), words("1 2 3 4"));
    list.setSortOrder(ListSortOrder::Descending);
    EXPECT_EQ(texts(list, 1), words("1 2 3 4"));
}

TEST(ListView, TheSortKeyChoosesTheColumn) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    list.addHeader(QStringLiteral("b"));
    list.addItem(QStringLiteral("1"))->setSubItem(1, QStringLiteral("z"));
    list.addItem(QStringLiteral("2"))->setSubItem(1, QStringLiteral("y"));
    list.setSorted(true);
    EXPECT_EQ(texts(list), words("1 2"));
    list.setSortKey(1);
    EXPECT_EQ(texts(list), words("2 1"));
}

TEST(ListView, TurningSortingOffLeavesTheOrder) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    fill(list, "b a");
    list.setSorted(true);
    list.setSorted(false);
    list.addItem(QStringLiteral("0"));
    EXPECT_EQ(texts(list), words("a b 0"));
}

TEST(ListView, RowsAddedToASortedListGoToTheirPlaces) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    list.setSorted(true);
    fill(list, "m c x");
    EXPECT_EQ(texts(list), words("c m x"));
    list.addItem(QStringLiteral("d"));
    EXPECT_EQ(list.item(2)->text(), QStringLiteral("d"));
    fill(list, "z a y b n o p");
    EXPECT_EQ(texts(list), words("a b c d m n o p x y z"));
    for (int i = 1; i <= list.itemCount(); ++i)
        EXPECT_EQ(list.item(i)->index(), i);
    EXPECT_EQ(list.model()->rowCount(), 11);
}

TEST(ListView, ARowAddedDescendingGoesBehindItsEquals) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    list.addHeader(QStringLiteral("b"));
    list.setSorted(true);
    list.setSortOrder(ListSortOrder::Descending);
    for (const QString& text : words("c b a"))
        list.addItem(text)->setSubItem(1, QStringLiteral("old"));
    EXPECT_EQ(texts(list), words("c b a"));
    list.addItem(QStringLiteral("B"))->setSubItem(1, QStringLiteral("new"));
    EXPECT_EQ(texts(list), words("c b B a"));
}

TEST(ListView, TheSelectionStaysOnItsRowThroughASort) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    fill(list, "c a b");
    ListItem* chosen = list.item(1);
    list.setSelectedItem(chosen);
    const QPersistentModelIndex kept(list.model()->index(0, 0));
    list.setSorted(true);
    EXPECT_EQ(list.selectedItem(), chosen);
    EXPECT_EQ(kept.row(), 2);
    EXPECT_EQ(chosen->index(), 3);
    list.setSelectedItem(nullptr);
    EXPECT_EQ(list.selectedItem(), nullptr);
}

TEST(ListView, HeadersShowIconsOfTheirOwnImageList) {
    ListView list;
    list.addHeader(QStringLiteral("a"));
    list.addHeader(QStringLiteral("b"));
    EXPECT_EQ(list.headerIcon(1), 0);
    list.setHeaderIcon(1, 0);
    EXPECT_EQ(failureOf([&] { list.setHeaderIcon(1, 39); }), RunTime::ImageListNotSet);
    ImageList icons;
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    icons.set(39, QIcon(pixmap));
    list.setHeaderIcons(&icons);
    list.setHeaderIcon(2, 39);
    EXPECT_EQ(list.headerIcon(2), 39);
    const auto shown = [&list](int section) {
        return list.model()->headerData(section, Qt::Horizontal, Qt::DecorationRole).value<QIcon>();
    };
    EXPECT_FALSE(shown(1).isNull());
    EXPECT_TRUE(shown(0).isNull());
    EXPECT_EQ(failureOf([&] { list.setHeaderIcon(2, 40); }), RunTime::IndexOutOfBounds);
    EXPECT_EQ(failureOf([&] { list.setHeaderIcon(3, 39); }), RunTime::IndexOutOfBounds);
    list.setHeaderText(2, QStringLiteral("c"));
    EXPECT_EQ(list.headerIcon(2), 39);
    list.setHeaderIcon(2, 0);
    EXPECT_TRUE(shown(1).isNull());
}

TEST(ListView, SmallIconsComeFromTheImageList) {
    ImageList icons;
    QPixmap red(16, 16);
    red.fill(Qt::red);
    icons.set(42, QIcon(red));
    ListView list;
    list.addHeader(QStringLiteral("a"));
    ListItem* item = list.addItem(QStringLiteral("x"));
    EXPECT_EQ(failureOf([&] { item->setSmallIcon(42); }), RunTime::ImageListNotSet);
    list.setSmallIcons(&icons);
    item->setSmallIcon(42);
    EXPECT_EQ(item->smallIcon(), 42);
    QCoreApplication::processEvents();
    EXPECT_FALSE(list.model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_EQ(failureOf([&] { item->setSmallIcon(43); }), RunTime::IndexOutOfBounds);
    EXPECT_EQ(item->smallIcon(), 42);
    item->setSmallIcon(0);
    EXPECT_FALSE(list.model()->index(0, 0).data(Qt::DecorationRole).isValid());
}

TEST(ListView, RowsOfAListWithIconsHaveRoomForThemAlsoBehindARowWithoutOne) {
    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    ImageList icons;
    icons.add(QIcon(picture));
    const auto heightOfRow = [&icons](bool withImages, int iconOfFirstRow) {
        ListView list;
        list.addHeader(QStringLiteral("a"));
        if (withImages)
            list.setSmallIcons(&icons);
        fill(list, "jeden dwa");
        list.item(1)->setSmallIcon(iconOfFirstRow);
        list.show();
        return list.visualRect(list.model()->index(1, 0)).height();
    };
    EXPECT_EQ(heightOfRow(true, 0), heightOfRow(true, 1));
    EXPECT_GE(heightOfRow(true, 0), 16);
    EXPECT_LE(heightOfRow(false, 0), heightOfRow(true, 0));
}

TEST(ListView, AHundredThousandRowsFillSortAndScrollQuickly) {
    ListView list;
    for (const char* caption : {"Lp", "Indeks", "Nazwa"})
        list.addHeader(QString::fromUtf8(caption));
    list.resize(600, 400);
    list.show();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 100000; ++i) {
        ListItem* item = list.addItem(QString::number(100000 - i));
        item->setSubItem(1, QString::number((i * 7919) % 100003));
        item->setSubItem(2, QStringLiteral("Mąka pszenna"));
    }
    QCoreApplication::processEvents();
    const qint64 filled = timer.restart();
    list.setSorted(true);
    const qint64 sorted = timer.restart();
    list.scrollToBottom();
    QCoreApplication::processEvents();
    list.grab();
    const qint64 scrolled = timer.elapsed();
    EXPECT_EQ(list.item(1)->text(), QStringLiteral("1"));
    EXPECT_EQ(list.item(2)->text(), QStringLiteral("10"));
    RecordProperty("filled_ms", static_cast<int>(filled));
    RecordProperty("sorted_ms", static_cast<int>(sorted));
    RecordProperty("scrolled_ms", static_cast<int>(scrolled));
    std::cout << "fill " << filled << " ms, sort " << sorted << " ms, scroll " << scrolled << " ms\n";
    // Ten times the figures of a plain build: sanitizers and busy machines are slow, quadratic work is
    // slower.
    EXPECT_LT(filled + sorted + scrolled, 10000);
}

}  // namespace
