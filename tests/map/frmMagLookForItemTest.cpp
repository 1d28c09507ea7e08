// The item search dialog, opened modally on the demo warehouse and worked with mouse and keys.

#include "map/MapWarehouse.h"
#include "map/frmMagLookForItem.h"
#include "platform/ListView.h"
#include "platform/MsgBox.h"
#include "platform/RunTimeError.h"
#include "platform/ToolBar.h"
#include "support/Events.h"

#include <QAction>
#include <QApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::MapWarehouse;

class ItemSearchDialog : public testing::Test {
protected:
    ItemSearchDialog() : warehouse(LocalWarehouse::Content::Demo) {}

    void SetUp() override {
        ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
        make();
    }

    void make() {
        dialog = std::make_unique<frmMagLookForItem>(warehouse.context);
        dialog->setForm([this](const QString& itemCode) { written.append(itemCode); });
        dialog->setItemCodeForm(QStringLiteral("STARY"));
    }

    /// Opens the dialog modally and lets `act` work it. Whatever `act` leaves open is closed, so that a test
    /// that fails does not hang.
    void open(const std::function<void()>& act) {
        bool acted = false;
        stayedOpen = false;
        test::whenModal([&](QWidget* modal) {
            EXPECT_EQ(modal, dialog.get());
            acted = true;
            EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
            act();
            stayedOpen = dialog->isVisible();
            dialog->done(QDialog::Rejected);
        });
        dialog->exec();
        EXPECT_TRUE(acted);
    }

    template <typename T>
    T* control(const char* name) const {
        T* found = dialog->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QLineEdit* box() const { return control<QLineEdit>("txtItemCode"); }
    ListView* list() const { return control<ListView>("lstSurOnMag"); }
    QRadioButton* option(const char* name) const { return control<QRadioButton>(name); }

    void type(const char* text) const { test::type(box(), QString::fromUtf8(text)); }
    void press(const char* key) const {
        EXPECT_TRUE(test::clickToolButton(control<ToolBar>("tlbLookFor"), QString::fromLatin1(key)));
    }
    void clickRow(int row) const { test::clickCell(list(), list()->model()->index(row - 1, 0)); }
    void doubleClickAt(const QPoint& at) const {
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, at);
    }
    QPoint rowMiddle(int row) const {
        return list()->visualRect(list()->model()->index(row - 1, 0)).center();
    }
    QPoint belowTheRows() const { return {20, list()->viewport()->height() - 5}; }
    void clickHeader(int number) const {
        QHeaderView* header = list()->header();
        test::clickAt(header->viewport(),
                      {header->sectionViewportPosition(number - 1) + 30, header->height() / 2});
    }
    QStringList codes() const {
        QStringList found;
        for (int row = 1; row <= list()->itemCount(); ++row)
            found.append(list()->item(row)->text());
        return found;
    }
    QList<int> headerIcons() const {
        QList<int> icons;
        for (int number = 1; number <= list()->headerCount(); ++number)
            icons.append(list()->headerIcon(number));
        return icons;
    }
    /// Both steps as the server receives them.
    static QStringList steps(const char* procedure, const char* pattern, const char* column) {
        const QString call =
            QString::fromUtf8("exec %1 '%2' , '%3',")
                .arg(QString::fromLatin1(procedure), QString::fromUtf8(pattern), QString::fromLatin1(column));
        return {call + u'0', call + u'1'};
    }
    QStringList titles() const {
        QStringList found;
        for (const MsgBoxRecorder::Message& message : messages.messages())
            found.append(message.Title);
        return found;
    }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    QStringList written;
    bool stayedOpen = false;
    std::unique_ptr<frmMagLookForItem> dialog;
};

// ------------------------------------------------------------------------------------------------ the design

TEST_F(ItemSearchDialog, HasTheControlsAndCaptionsOfItsDesign) {
    open([this] {
        EXPECT_EQ(dialog->objectName(), QStringLiteral("frmMagLookForItem"));
        const auto* choice = control<QGroupBox>("frmLookForChose");
        for (const char* name :
             {"Label3", "Label2", "optItemCode", "optItemName", "txtItemCode", "tlbLookRun"})
            EXPECT_NE(choice->findChild<QWidget*>(QString::fromLatin1(name)), nullptr) << name;
        EXPECT_EQ(control<QLabel>("Label3")->text(), QStringLiteral("Wyszukiwanie po:"));
        EXPECT_EQ(control<QLabel>("Label2")->text(), QStringLiteral("Szukaj:"));
        EXPECT_EQ(option("optItemCode")->text(), QStringLiteral("Indeks"));
        EXPECT_EQ(option("optItemName")->text(), QStringLiteral("Nazwa"));
        EXPECT_EQ(control<ToolBar>("tlbLookRun")->button(QStringLiteral("key_Akcept"))->text(),
                  QStringLiteral("&Szukaj"));
        const auto* found = control<QGroupBox>("frmLookForWath");
        EXPECT_EQ(found->findChild<ListView*>(QStringLiteral("lstSurOnMag")), list());
        EXPECT_EQ(list()->font().family(), QStringLiteral("Arial"));
        const auto* take = control<ToolBar>("tlbLookFor");
        EXPECT_EQ(take->button(1)->objectName(), QStringLiteral("key_Cancel"));
        EXPECT_EQ(take->button(1)->text(), QStringLiteral("&Anuluj"));
        EXPECT_EQ(take->button(2)->objectName(), QStringLiteral("key_Akcept"));
        EXPECT_EQ(take->button(2)->text(), QStringLiteral("&Wybierz"));
    });
}

TEST_F(ItemSearchDialog, OpensOnTheCodesWithTheCursorInTheSearchBox) {
    open([this] {
        EXPECT_TRUE(dialog->isModal());
        EXPECT_TRUE(option("optItemCode")->isChecked());
        EXPECT_TRUE(box()->hasFocus());
        EXPECT_EQ(list()->selectedItem(), nullptr);
        EXPECT_EQ(headerIcons(), QList<int>(list()->headerCount(), 0));
        QTest::keyClick(box(), Qt::Key_Tab);
        EXPECT_TRUE(list()->hasFocus());
    });
    EXPECT_TRUE(written.isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ItemSearchDialog, TheSearchButtonDoesNothing) {
    open([this] {
        type("OL");
        const QStringList before = codes();
        warehouse.server.clearTrace();
        EXPECT_TRUE(test::clickToolButton(control<ToolBar>("tlbLookRun"), QStringLiteral("key_Akcept")));
        EXPECT_TRUE(warehouse.batches().isEmpty());
        EXPECT_EQ(codes(), before);
    });
    EXPECT_TRUE(stayedOpen);
    EXPECT_TRUE(written.isEmpty());
}

// ------------------------------------------------------------------------------------------------ the list

TEST_F(ItemSearchDialog, OpensWithBothStepsOfTheFullList) {
    open([this] {
        EXPECT_EQ(warehouse.batches(), steps("Kolv_mag_LookFor_Item", "%", "ItemCode"));
        EXPECT_EQ(list()->itemCount(), 46);
        EXPECT_EQ(list()->item(1)->text(), QStringLiteral("BA-MB-010"));
        EXPECT_EQ(list()->headerText(1), QStringLiteral("Indeks"));
        EXPECT_EQ(list()->headerText(2), QStringLiteral("Nazwa"));
        EXPECT_FALSE(list()->sorted());
    });
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(ItemSearchDialog, SearchesOnlyTheMaterialsOfTheWarehouseWhenAskedTo) {
    ASSERT_TRUE(
        warehouse.run({QStringLiteral("insert into OITM (ItemCode,ItemName) values (N'OL-X',N'Nigdzie')")}));
    dialog->setOnlyExistsMag(true);
    dialog->setOnlyExistsMagSQL(QStringLiteral("and 1 = 0"));
    open([this] {
        EXPECT_EQ(warehouse.batches(), steps("Kolv_mag_LookFor_Item_2", "%", "ItemCode"));
        warehouse.server.clearTrace();
        type("OL-X");
        EXPECT_EQ(warehouse.batches().mid(6), steps("Kolv_mag_LookFor_Item_2", "OL-X%", "ItemCode"));
        EXPECT_EQ(list()->itemCount(), 0);
    });
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ItemSearchDialog, OperationEForcesTheFullListOnTheFirstFillOnly) {
    dialog->setOnlyExistsMag(true);
    dialog->setOperation(QStringLiteral("E"));
    open([this] {
        type("O");
        EXPECT_EQ(warehouse.batches(), steps("Kolv_mag_LookFor_Item", "%", "ItemCode") +
                                           steps("Kolv_mag_LookFor_Item_2", "O%", "ItemCode"));
    });
}

TEST_F(ItemSearchDialog, EachKeyStrokeRunsBothStepsWithTheTrimmedText) {
    open([this] {
        warehouse.server.clearTrace();
        type(" Ol-H ");
        QTest::keyClick(box(), Qt::Key_Backspace);
        QTest::keyClick(box(), Qt::Key_Backspace);
        QStringList expected;
        for (const char* pattern : {"%", "O%", "Ol%", "Ol-%", "Ol-H%", "Ol-H%", "Ol-H%", "Ol-%"})
            expected += steps("Kolv_mag_LookFor_Item", pattern, "ItemCode");
        EXPECT_EQ(warehouse.batches(), expected);
        EXPECT_EQ(codes(), QStringList({QStringLiteral("OL-HY-046"), QStringLiteral("OL-PR-068")}));
    });
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ItemSearchDialog, ATextOfOnlyBlanksBehavesAsAnEmptyText) {
    open([this] {
        const QStringList all = codes();
        type("x");
        EXPECT_EQ(list()->itemCount(), 0);
        box()->selectAll();
        warehouse.server.clearTrace();
        type("  ");
        EXPECT_EQ(warehouse.batches(), steps("Kolv_mag_LookFor_Item", "%", "ItemCode") +
                                           steps("Kolv_mag_LookFor_Item", "%", "ItemCode"));
        EXPECT_EQ(codes(), all);
    });
}

TEST_F(ItemSearchDialog, SearchesByNameFromTheNextKeyStrokeOn) {
    open([this] {
        type("f");
        EXPECT_EQ(list()->itemCount(), 5);
        warehouse.server.clearTrace();
        test::click(option("optItemName"));
        EXPECT_TRUE(warehouse.batches().isEmpty());
        type("arba");
        EXPECT_EQ(warehouse.batches().mid(6), steps("Kolv_mag_LookFor_Item", "farba%", "ItemName"));
        EXPECT_EQ(list()->itemCount(), 3);
        test::click(option("optItemCode"));
        type("x");
        EXPECT_EQ(warehouse.batches().mid(8), steps("Kolv_mag_LookFor_Item", "farbax%", "ItemCode"));
    });
}

TEST_F(ItemSearchDialog, PolishLettersAndWildcardsReachTheServerAsTyped) {
    open([this] {
        test::click(option("optItemName"));
        warehouse.server.clearTrace();
        box()->setText(QStringLiteral("_m%chłodząca[,]"));
        EXPECT_EQ(warehouse.batches(), steps("Kolv_mag_LookFor_Item", "_m%chłodząca[,]%", "ItemName"));
        EXPECT_EQ(codes(), QStringList(QStringLiteral("CH-EM-020")));
    });
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ItemSearchDialog, AQuoteEndsInTheStandardHandlerAndTheListStaysAsItWas) {
    open([this] {
        type("OL");
        clickRow(2);
        const QStringList before = codes();
        warehouse.server.clearTrace();
        type("'");
        EXPECT_EQ(warehouse.batches(), steps("Kolv_mag_LookFor_Item", "OL'%", "ItemCode"));
        EXPECT_EQ(codes(), before);
        EXPECT_NE(list()->selectedItem(), nullptr);
        EXPECT_EQ(messages.count(), 2);
        QTest::keyClick(box(), Qt::Key_Backspace);
        type("-P");
        EXPECT_EQ(codes(), QStringList(QStringLiteral("OL-PR-068")));
    });
    EXPECT_TRUE(stayedOpen);
    EXPECT_TRUE(written.isEmpty());
    // The first step runs in a routine that reports without a name.
    EXPECT_EQ(titles(), QStringList({QStringLiteral("Error -  [EcexProcedure]"),
                                     QStringLiteral("Error - modListBox [FilleListView]")}));
}

// ----------------------------------------------------------------------------------------- taking a result

TEST_F(ItemSearchDialog, ADoubleClickTakesTheRow) {
    open([this] {
        clickRow(3);
        doubleClickAt(rowMiddle(3));
        EXPECT_FALSE(dialog->isVisible());
    });
    EXPECT_EQ(written, QStringList(QStringLiteral("BL-AL-020")));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ItemSearchDialog, ADoubleClickOnAnEmptyListDoesNothing) {
    open([this] {
        type("nie ma takiego");
        ASSERT_EQ(list()->itemCount(), 0);
        doubleClickAt({20, 20});
    });
    EXPECT_TRUE(stayedOpen);
    EXPECT_TRUE(written.isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ItemSearchDialog, ADoubleClickBelowTheRowsTakesTheMarkedRow) {
    open([this] {
        type("OL");
        clickRow(2);
        doubleClickAt(belowTheRows());
    });
    EXPECT_EQ(written, QStringList(QStringLiteral("OL-PR-068")));
}

TEST_F(ItemSearchDialog, EnterInTheListTakesTheMarkedRow) {
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        make();
        open([this, enter] {
            clickRow(1);
            QTest::keyClick(list(), Qt::Key_Down);
            QTest::keyClick(list(), enter);
        });
        EXPECT_FALSE(stayedOpen);
    }
    EXPECT_EQ(written, QStringList({QStringLiteral("BA-MB-020"), QStringLiteral("BA-MB-020")}));
}

TEST_F(ItemSearchDialog, EnterInTheSearchBoxTakesTheMarkedRow) {
    open([this] {
        type("OL");
        clickRow(2);
        QTest::keyClick(box(), Qt::Key_Return);
    });
    EXPECT_FALSE(stayedOpen);
    EXPECT_EQ(written, QStringList(QStringLiteral("OL-PR-068")));
}

TEST_F(ItemSearchDialog, TheSelectButtonTakesTheMarkedRow) {
    open([this] {
        clickRow(2);
        press("key_Akcept");
    });
    EXPECT_FALSE(stayedOpen);
    EXPECT_EQ(written, QStringList(QStringLiteral("BA-MB-020")));
}

TEST_F(ItemSearchDialog, CancelGivesBackTheOldCodeAlsoWhenThatIsZero) {
    for (const char* old : {"STARY", "0", ""}) {
        make();
        dialog->setItemCodeForm(QString::fromLatin1(old));
        open([this] { press("key_Cancel"); });
        EXPECT_FALSE(stayedOpen);
    }
    EXPECT_EQ(written, QStringList({QStringLiteral("STARY"), QStringLiteral("0"), QString()}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ItemSearchDialog, CancelledAtEveryStageItGivesBackTheOldCode) {
    const QList<std::function<void()>> stages = {
        [] {},
        [this] { type("OL"); },
        [this] { type("nie ma takiego"); },
        [this] { type("'"); },
        [this] { clickRow(2); },
        [this] { clickHeader(2); },
        [this] { QTest::keyClick(box(), Qt::Key_Return); },
    };
    for (const auto& stage : stages) {
        make();
        open([this, &stage] {
            stage();
            EXPECT_TRUE(dialog->isVisible());
            press("key_Cancel");
        });
        EXPECT_FALSE(stayedOpen);
    }
    EXPECT_EQ(written, QStringList(stages.size(), QStringLiteral("STARY")));
}

TEST_F(ItemSearchDialog, EscapeIsTheKeyOfCancel) {
    open([this] { QTest::keyClick(box(), Qt::Key_Escape); });
    EXPECT_FALSE(stayedOpen);
    make();
    open([this] {
        clickRow(1);
        QTest::keyClick(list(), Qt::Key_Escape);
    });
    EXPECT_FALSE(stayedOpen);
    EXPECT_EQ(written, QStringList({QStringLiteral("STARY"), QStringLiteral("STARY")}));
}

TEST_F(ItemSearchDialog, TheCloseBoxWritesNothing) {
    open([this] {
        clickRow(1);
        dialog->close();
    });
    EXPECT_FALSE(stayedOpen);
    EXPECT_TRUE(written.isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ItemSearchDialog, TakingWithoutAMarkedRowIsReportedAndTheDialogStaysOpen) {
    open([this] {
        QTest::keyClick(box(), Qt::Key_Return);
        QTest::keyClick(list(), Qt::Key_Return);
        press("key_Akcept");
        type("OL");
        doubleClickAt(belowTheRows());
    });
    EXPECT_TRUE(stayedOpen);
    EXPECT_TRUE(written.isEmpty());
    EXPECT_EQ(titles(), QStringList({QStringLiteral("frmMagLookForItem - txtItemCode_KeyDown"),
                                     QStringLiteral("frmMagLookForItem - lstSurOnMag_KeyDown"),
                                     QStringLiteral("frmMagLookForItem - tlbLookFor_ButtonClick"),
                                     QStringLiteral("frmMagLookForItem - lstSurOnMag_DblClick")}));
    for (const MsgBoxRecorder::Message& message : messages.messages()) {
        EXPECT_EQ(message.Text, test::windowMessage(RunTime::ObjectNotSet));
        EXPECT_EQ(message.Flags, 4112);
    }
}

TEST_F(ItemSearchDialog, ANewListHasNoMarkedRow) {
    open([this] {
        clickRow(1);
        type("OL");
        press("key_Akcept");
    });
    EXPECT_TRUE(stayedOpen);
    EXPECT_EQ(messages.count(), 1);
}

TEST_F(ItemSearchDialog, AFailingCallerIsReportedAndTheDialogStaysOpen) {
    dialog->setForm([](const QString&) { throw RunTimeError(RunTime::Overflow); });
    open([this] { press("key_Cancel"); });
    EXPECT_TRUE(stayedOpen);
    make();
    dialog->setForm({});
    open([this] { press("key_Cancel"); });
    EXPECT_TRUE(stayedOpen);
    ASSERT_EQ(messages.count(), 2);
    EXPECT_EQ(messages.messages()[0].Text, test::windowMessage(RunTime::Overflow));
    EXPECT_EQ(messages.messages()[1].Text, test::windowMessage(RunTime::ObjectNotSet));
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagLookForItem - tlbLookFor_ButtonClick"));
}

TEST_F(ItemSearchDialog, TheDownKeyGoesFromTheSearchBoxToTheFirstRow) {
    open([this] {
        type("OL");
        QTest::keyClick(box(), Qt::Key_Down);
        EXPECT_TRUE(list()->hasFocus());
        QTest::keyClick(list(), Qt::Key_Return);
    });
    EXPECT_EQ(written, QStringList(QStringLiteral("OL-HY-046")));
    make();
    open([this] {
        type("nie ma");
        QTest::keyClick(box(), Qt::Key_Down);
        EXPECT_TRUE(box()->hasFocus());
        box()->clear();
        clickRow(2);
        QTest::keyClick(box(), Qt::Key_Down);
        EXPECT_EQ(list()->selectedItem(), list()->item(2));
    });
    EXPECT_EQ(messages.count(), 0);
}

// ------------------------------------------------------------------------------------------- column clicks

TEST_F(ItemSearchDialog, AColumnClickChoosesTheColumnOfTheNextKeyStroke) {
    open([this] {
        const QStringList before = codes();
        warehouse.server.clearTrace();
        clickHeader(2);
        EXPECT_TRUE(option("optItemName")->isChecked());
        EXPECT_EQ(headerIcons(), QList<int>({0, 39, 0}));
        clickHeader(3);
        EXPECT_TRUE(option("optItemName")->isChecked());
        EXPECT_EQ(headerIcons(), QList<int>({0, 0, 39}));
        EXPECT_TRUE(warehouse.batches().isEmpty());
        EXPECT_EQ(codes(), before);
        EXPECT_FALSE(list()->sorted());
        type("O");
        EXPECT_EQ(warehouse.batches(), steps("Kolv_mag_LookFor_Item", "O%", "ItemName"));
        EXPECT_EQ(headerIcons(), QList<int>({0, 0, 39}));
        clickHeader(1);
        EXPECT_TRUE(option("optItemCode")->isChecked());
        EXPECT_EQ(headerIcons(), QList<int>({39, 0, 0}));
        type("L");
        EXPECT_EQ(warehouse.batches().mid(2), steps("Kolv_mag_LookFor_Item", "OL%", "ItemCode"));
    });
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ItemSearchDialog, TheKeyStrokeAfterAColumnClickSearches) {
    // Keys go where the focus is, as a person's do.
    const auto typeOn = [](const QString& text) { test::type(QApplication::focusWidget(), text); };
    open([&] {
        typeOn(QStringLiteral("O"));
        clickRow(1);
        clickHeader(2);
        EXPECT_TRUE(box()->hasFocus());
        warehouse.server.clearTrace();
        typeOn(QStringLiteral("l"));
        EXPECT_EQ(warehouse.batches(), steps("Kolv_mag_LookFor_Item", "Ol%", "ItemName"));
        clickHeader(1);
        warehouse.server.clearTrace();
        typeOn(QStringLiteral("-"));
        EXPECT_EQ(warehouse.batches(), steps("Kolv_mag_LookFor_Item", "Ol-%", "ItemCode"));
    });
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ItemSearchDialog, CanBeDestroyedWhileItShowsAHeaderIcon) {
    test::showAndWait(dialog.get());
    clickHeader(2);
    EXPECT_EQ(headerIcons(), QList<int>({0, 39, 0}));
    dialog.reset();
    EXPECT_TRUE(written.isEmpty());
}

// -------------------------------------------------------------------------------------------- the database

TEST_F(ItemSearchDialog, WithoutAServerItOpensEmptyAndCanBeCancelled) {
    ASSERT_TRUE(warehouse.server.stop());
    open([this] {
        EXPECT_EQ(messages.count(), 2);
        EXPECT_EQ(list()->itemCount(), 0);
        type("O");
        EXPECT_EQ(messages.count(), 4);
        doubleClickAt({20, 20});
        clickHeader(1);
        press("key_Cancel");
    });
    EXPECT_FALSE(stayedOpen);
    EXPECT_EQ(written, QStringList(QStringLiteral("STARY")));
}

TEST_F(ItemSearchDialog, WithoutALoginEachRoutineReportsUnderItsName) {
    warehouse.context.ConnMain.reset();
    warehouse.context.ErrorService.reset();
    open([this] { type("O"); });
    EXPECT_EQ(titles(), QStringList({QStringLiteral("frmMagLookForItem - FillComboSur"),
                                     QStringLiteral("frmMagLookForItem - txtItemCode_Change")}));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::ObjectNotSet));
}

}  // namespace
}  // namespace regalon
