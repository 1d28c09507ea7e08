#include "GatewayFixture.h"
#include "common/modListBox.h"
#include "platform/DataCombo.h"
#include "platform/ListView.h"

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

class modListBoxTest : public GatewayTest {
protected:
    void fill(const QString& text, bool lp = false, const QString& sort = QString()) {
        FilleListView(context, list, text, sort, true, true, true, lp, 700);
    }

    QStringList headers() const {
        QStringList texts;
        for (int i = 1; i <= list.headerCount(); ++i) {
            texts.append(list.headerText(i));
        }
        return texts;
    }

    /// Rows in the shown order, cells joined by "|".
    QStringList rows() const {
        QStringList lines;
        for (int i = 1; i <= list.itemCount(); ++i) {
            QStringList cells{list.item(i)->text()};
            for (int k = 1; k < list.headerCount(); ++k) {
                cells.append(list.item(i)->subItem(k));
            }
            lines.append(cells.join(u'|'));
        }
        return lines;
    }

    ListView list;
};

using ListFill = modListBoxTest;
using ListSort = modListBoxTest;
using ComboFill = modListBoxTest;

TEST_F(ListFill, StyledNameGivesCaptionWidthAndAlignment) {
    fill(u"select id as [Nr:500;2], weight as [Ilość:1000;1] from t_rows where id = 1"_s);
    EXPECT_EQ(headers(), (QStringList{u"Nr"_s, u"Ilość"_s}));
    EXPECT_EQ(list.headerWidth(1), 500);
    EXPECT_EQ(list.headerWidth(2), 1000);
    EXPECT_EQ(list.headerAlignment(2), ListAlignment::Right);
    EXPECT_EQ(rows(), QStringList{u"1|2,5"_s});
    EXPECT_EQ(boxes.count(), 0);
}

TEST_F(ListFill, FirstColumnKeepsItsAlignment) {
    fill(u"select id as [Ilość:1000;1], name as [Nazwa:2000;2] from t_rows"_s);
    EXPECT_EQ(headers().first(), u"Ilość"_s);
    EXPECT_EQ(list.headerWidth(1), 1000);
    EXPECT_EQ(list.headerAlignment(1), ListAlignment::Left);
    EXPECT_EQ(list.headerAlignment(2), ListAlignment::Centre);
}

TEST_F(ListFill, WithLpTheFirstResultColumnKeepsItsAlignmentToo) {
    fill(u"select id as [Nr:1000;1], name as [Nazwa:2000;1] from t_rows"_s, true);
    EXPECT_EQ(list.headerWidth(1), 700);
    EXPECT_EQ(list.headerWidth(2), 1000);
    EXPECT_EQ(list.headerAlignment(2), ListAlignment::Left);
    EXPECT_EQ(list.headerAlignment(3), ListAlignment::Right);
}

TEST_F(ListFill, LpWidthOfNoughtMeansSixHundred) {
    FilleListView(context, list, u"select id from t_rows"_s, QString(), true, true, true, true, 0);
    EXPECT_EQ(list.headerWidth(1), 600);
}

TEST_F(ListFill, HiddenColumnMakesNoHeaderAndNoCell) {
    fill(u"select id as Nr, name as Nazwa, 17 as xxx_DocEntry from t_rows order by id"_s);
    EXPECT_EQ(headers(), (QStringList{u"Nr"_s, u"Nazwa"_s}));
    EXPECT_EQ(rows(), (QStringList{u"1|Cukier"_s, u"2|"_s, u"3|mąka"_s}));
}

TEST_F(ListFill, HiddenMarkCountsAnywhereInItsExactCase) {
    fill(u"select id as Nr, 1 as [a_xxx_b], 2 as [Xxx_c] from t_rows where id = 1"_s);
    EXPECT_EQ(headers(), (QStringList{u"Nr"_s, u"Xxx_c"_s}));
    EXPECT_EQ(rows(), QStringList{u"1|2"_s});
}

TEST_F(ListFill, LpCountsDown) {
    fill(u"select name as Nazwa from t_rows order by id"_s, true);
    EXPECT_EQ(headers(), (QStringList{u"Lp"_s, u"Nazwa"_s}));
    EXPECT_EQ(rows(), (QStringList{u"3|Cukier"_s, u"2|"_s, u"1|mąka"_s}));
}

TEST_F(ListFill, NullInTheFirstColumnShowsNoughtAndInALaterOneNothing) {
    fill(u"select null as Nr, null as Nazwa"_s);
    EXPECT_EQ(rows(), QStringList{u"0|"_s});
    list.clearHeaders();
    fill(u"select name as Nazwa, weight as Waga from t_rows where id = 2"_s);
    EXPECT_EQ(rows(), QStringList{u"0|"_s});
}

TEST_F(ListFill, HeadersOfAnEarlierFillStay) {
    fill(u"select id as Nr, name as Nazwa from t_rows"_s);
    fill(u"select 5 as Inny, 6 as Drugi, 7 as Trzeci"_s);
    EXPECT_EQ(headers(), (QStringList{u"Nr"_s, u"Nazwa"_s}));
    EXPECT_EQ(rows(), QStringList{u"5|6"_s});
}

TEST_F(ListFill, EmptyResultMakesHeadersAndNoRows) {
    fill(u"select id as Nr, name as Nazwa from t_rows where id = 99"_s);
    EXPECT_EQ(headers(), (QStringList{u"Nr"_s, u"Nazwa"_s}));
    EXPECT_EQ(list.itemCount(), 0);
}

TEST_F(ListFill, WithoutTheHeaderFlagHiddenColumnsGetHeadersButNoCells) {
    FilleListView(context, list, u"select id as Nr, 9 as xxx_Doc, name as Nazwa from t_rows where id = 1"_s,
                  QString(), false, true, false, false, 0);
    EXPECT_EQ(headers(), (QStringList{u"Nr"_s, u"xxx_Doc"_s, u"Nazwa"_s}));
    EXPECT_EQ(rows(), QStringList{u"1|Cukier|"_s});
}

TEST_F(ListFill, FractionInTheFirstColumnIsRoundedToEven) {
    fill(u"select cast(2.5 as float) as Nr"_s);
    EXPECT_EQ(rows(), QStringList{u"2"_s});
    fill(u"select cast(3.5 as decimal(9,2)) as Nr"_s);
    EXPECT_EQ(rows(), QStringList{u"4"_s});
}

TEST_F(ListFill, NationalTextInTheFirstColumnStaysText) {
    fill(u"select N'007' as Kod"_s);
    EXPECT_EQ(rows(), QStringList{u"007"_s});
}

TEST_F(ListFill, NumericPlainTextInTheFirstColumnConverts) {
    fill(u"select cast('007' as varchar(5)) as Kod"_s);
    EXPECT_EQ(rows(), QStringList{u"7"_s});
}

TEST_F(ListFill, OtherPlainTextInTheFirstColumnFails) {
    fill(u"select cast('abc' as varchar(5)) as Kod"_s);
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"Error - modListBox [FilleListView]"_s);
    EXPECT_EQ(context.ErrorService->LastErrorNumber(), 13);
    EXPECT_EQ(rows(), QStringList{u"abc"_s});
}

TEST_F(ListFill, WithLpAnyTextMayStandFirst) {
    fill(u"select cast('abc' as varchar(5)) as Kod"_s, true);
    EXPECT_EQ(rows(), QStringList{u"1|abc"_s});
    EXPECT_EQ(boxes.count(), 0);
}

TEST_F(ListFill, WidthWithoutSemicolonEndsTheStylingInTheHandler) {
    fill(u"select id as [Nr:400;0], name as [Nazwa:900], weight as [Waga:800;1] from t_rows"_s);
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"Error - modListBox [SetWidthColumnOnGrid]"_s);
    EXPECT_EQ(context.ErrorService->LastErrorNumber(), 5);
    EXPECT_EQ(list.headerWidth(1), 400);
    EXPECT_EQ(list.headerWidth(3), int{ListView::DefaultHeaderWidth});
    EXPECT_EQ(list.itemCount(), 3);
}

TEST_F(ListFill, AlignmentIsReadForANameWithoutAWidth) {
    fill(u"select id as Nr, weight as [Waga;1] from t_rows"_s);
    EXPECT_EQ(list.headerText(2), u"Waga;1"_s);
    EXPECT_EQ(list.headerAlignment(2), ListAlignment::Right);
    EXPECT_EQ(boxes.count(), 0);
}

TEST_F(ListFill, WordsInsteadOfNumbersSetNothing) {
    fill(u"select id as Nr, weight as [Waga:szeroka;prawo] from t_rows"_s);
    EXPECT_EQ(list.headerWidth(2), int{ListView::DefaultHeaderWidth});
    EXPECT_EQ(list.headerAlignment(2), ListAlignment::Left);
    EXPECT_EQ(boxes.count(), 0);
}

TEST_F(ListFill, HiddenColumnWithAWidthAtTheEndFails) {
    fill(u"select id as [Nr:400;0], 1 as [xxx_Doc:500;1] from t_rows"_s);
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"Error - modListBox [SetWidthColumnOnGrid]"_s);
}

TEST_F(ListFill, FailingQueryLeavesTheListAsItWas) {
    fill(u"select id as Nr from t_rows order by id"_s);
    fill(u"select id as Nr from t_missing"_s);
    EXPECT_EQ(boxes.last().Title, u"Error - modListBox [FilleListView]"_s);
    EXPECT_EQ(rows(), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
}

TEST_F(ListFill, TextWithoutAResultFailsOnAClearedList) {
    fill(u"select id as Nr from t_rows"_s);
    fill(u"exec t_nothing"_s);
    EXPECT_EQ(context.ErrorService->LastErrorNumber(), 3704);
    EXPECT_EQ(list.itemCount(), 0);
}

TEST_F(ListSort, FreshCaptionAscendsWithABlankBeforeTheMark) {
    fill(u"select id as Nr, name as Nazwa from t_rows where id <> 2 order by id desc"_s);
    Sorted(context, list, u"Nr"_s, false);
    EXPECT_EQ(headers().first(), u"Nr [v]"_s);
    EXPECT_EQ(rows(), (QStringList{u"1|Cukier"_s, u"3|mąka"_s}));
}

TEST_F(ListSort, MarkedTextFlipsEachTime) {
    fill(u"select id as Nr from t_rows order by id"_s);
    Sorted(context, list, u"Nr"_s, false);
    Sorted(context, list, list.headerText(1), false);
    EXPECT_EQ(list.headerText(1), u"Nr [^]"_s);
    EXPECT_EQ(rows(), (QStringList{u"3"_s, u"2"_s, u"1"_s}));
    Sorted(context, list, list.headerText(1), false);
    EXPECT_EQ(list.headerText(1), u"Nr [v]"_s);
    EXPECT_EQ(rows(), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
}

TEST_F(ListSort, MarkMovesToTheNewColumn) {
    fill(u"select id as Nr, name as Nazwa from t_rows"_s);
    Sorted(context, list, u"Nr"_s, false);
    Sorted(context, list, u"Nazwa"_s, false);
    EXPECT_EQ(headers(), (QStringList{u"Nr"_s, u"Nazwa [v]"_s}));
    EXPECT_EQ(list.sortKey(), 1);
    EXPECT_TRUE(list.sorted());
}

TEST_F(ListSort, NumbersSortAsText) {
    fill(u"select 9 as Nr union all select 10 union all select 1"_s);
    Sorted(context, list, u"Nr"_s, false);
    EXPECT_EQ(rows(), (QStringList{u"1"_s, u"10"_s, u"9"_s}));
}

TEST_F(ListSort, SkipFlagDoesNothing) {
    fill(u"select id as Nr from t_rows order by id desc"_s);
    Sorted(context, list, u"Nr"_s, true);
    EXPECT_EQ(headers(), QStringList{u"Nr"_s});
    EXPECT_FALSE(list.sorted());
}

TEST_F(ListSort, SortArgumentOfTheFillEndsAscending) {
    fill(u"select id as Nr, name as Nazwa from t_rows where id <> 2 order by id desc"_s, false, u"Nazwa"_s);
    EXPECT_EQ(headers(), (QStringList{u"Nr"_s, u"Nazwa[v]"_s}));
    EXPECT_EQ(rows(), (QStringList{u"1|Cukier"_s, u"3|mąka"_s}));
    EXPECT_EQ(list.sortOrder(), ListSortOrder::Ascending);
}

TEST_F(ListSort, DefaultSortTakesTheFirstHeader) {
    FilleListView(context, list, u"select id as Nr from t_rows order by id desc"_s, QString(), true, false,
                  true, false, 0);
    EXPECT_EQ(headers(), QStringList{u"Nr [v]"_s});
    EXPECT_EQ(rows(), (QStringList{u"1"_s, u"2"_s, u"3"_s}));
}

TEST_F(ListSort, WithoutSortingTheServersOrderStays) {
    fill(u"select id as Nr from t_rows order by id desc"_s);
    EXPECT_FALSE(list.sorted());
    EXPECT_EQ(rows(), (QStringList{u"3"_s, u"2"_s, u"1"_s}));
}

TEST_F(ComboFill, FirstRowIsChosenAndTheKeyIsTheFirstColumn) {
    DataCombo combo;
    FillComboBox(
        context, combo,
        u"select '0' as Rank,'wybierz' RankName UNION ALL select id, name from t_rows where id = 3"_s, false);
    EXPECT_EQ(combo.boundColumn(), u"Rank"_s);
    EXPECT_EQ(combo.listField(), u"RankName"_s);
    EXPECT_EQ(combo.boundText(), u"0"_s);
    EXPECT_EQ(combo.text(), u"wybierz"_s);
    combo.setBoundText(u"3"_s);
    EXPECT_EQ(combo.text(), u"mąka"_s);
}

TEST_F(ComboFill, NoFirstLeavesItUnchosen) {
    DataCombo combo;
    FillComboBox(context, combo, u"select id, name from t_rows where id = 1"_s, true);
    EXPECT_EQ(combo.boundText(), QString());
    EXPECT_EQ(combo.text(), QString());
    EXPECT_EQ(combo.rowSource().Rows.size(), 1);
}

TEST_F(ComboFill, QueryWithoutRowsEmptiesTheCombo) {
    DataCombo combo;
    FillComboBox(context, combo, u"select id, name from t_rows where id = 1"_s, false);
    EXPECT_EQ(combo.text(), u"Cukier"_s);
    FillComboBox(context, combo, u"select id, name from t_rows where id = 99"_s, false);
    EXPECT_EQ(combo.text(), QString());
    EXPECT_EQ(combo.boundText(), QString());
    EXPECT_TRUE(combo.rowSource().Rows.isEmpty());
}

TEST_F(ComboFill, SingleColumnFailsOnTheSecondName) {
    DataCombo combo;
    FillComboBox(context, combo, u"select id from t_rows"_s, false);
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"Error -  [FillComboBox]"_s);
    EXPECT_EQ(context.ErrorService->LastErrorNumber(), 3265);
}

TEST_F(ComboFill, RowsStayWhenTheConnectionCloses) {
    DataCombo combo;
    FillComboBox(context, combo, u"select id, name from t_rows where id <> 2"_s, false);
    connection().Close();
    combo.setBoundText(u"3"_s);
    EXPECT_EQ(combo.text(), u"mąka"_s);
}

TEST_F(modListBoxTest, EcexProcedureRunsATextForItsEffect) {
    EXPECT_TRUE(EcexProcedure(context, u"update t_rows set name = N'nowa' where id = 2"_s));
    EXPECT_EQ(scalar(u"select name from t_rows where id = 2"_s), QVariant(u"nowa"_s));
    EXPECT_EQ(boxes.count(), 0);
}

TEST_F(modListBoxTest, FailingEcexProcedureReportsUnderNoNameAndStillAnswersTrue) {
    EXPECT_TRUE(EcexProcedure(context, u"exec t_missing"_s));
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"Error -  [EcexProcedure]"_s);
}

}  // namespace
}  // namespace regalon
