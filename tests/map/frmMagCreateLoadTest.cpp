// What the window reads and shows in which order: at its start, when it is opened again, and at a refresh.
#include "common/DbConnection.h"
#include "map/LayoutEditor.h"
#include "platform/Screen.h"
#include "platform/Twips.h"
#include "support/Events.h"

#include <QAction>
#include <QFile>
#include <QMap>
#include <QPlainTextEdit>
#include <QTimer>

namespace regalon {
namespace {

using test::EmptyHallEditor;

const QString kRanks = QStringLiteral(
    "select '0' as Rank,'wybierz' RankName UNION ALL select Rank,RankName from kolv_mag_Rank(nolock) order "
    "by Rank");
const QString kStandsOfRow = QStringLiteral(
    "select 0 as stand , N'wybierz' as StandName UNION ALL select Stand,StandName from "
    "kolv_mag_Stand(nolock) Where Rank = 0 UNION ALL select -1 as stand , N'Nowy' as StandName");
const QString kShelfCount =
    QStringLiteral("select ShelfCount from kolv_mag_Stand(nolock) where Rank = 0 AND Stand = 0");
const QString kStand = QStringLiteral(
    "select StandIcon,StandLeft,StandTop,StandVisable,StandEnable,StandFrameArround,StandDescription from "
    "kolv_mag_Stand Where Rank = 0 And Stand = 0");
const QString kShelves = QStringLiteral("select 0 as ShelfID ,N'wybierz' as ShelfName");
const QString kMaterials = QStringLiteral("select * from Kolv_vv_mag_Sur_On_Add");
const QString kGroups = QStringLiteral("select * from Kolv_vv_mag_Group_On_Localization");
const QString kParams = QStringLiteral("select * from Kolv_vv_mag_Param_Location");

/// A plan of stand 1/1 with one location, as it is drawn.
const QStringList kPlan = {
    QStringLiteral("select ID,Rank,Stand,StandName,StandIcon,ShelfCount,StandLeft,StandTop,StandVisable,"
                   "StandEnable,StandFrameArround  from kolv_mag_Stand order by Rank,Stand"),
    QStringLiteral("select Shelf,count(*) as LocationCount from kolv_mag_Location where Rank = 1 AND "
                   "Stand = 1 group by Shelf order by Shelf"),
    QStringLiteral("kolv_mag_SaveLocationIDTab: 1_1_1_1_LC_2"),
    QStringLiteral(" select LocationName,LocationIcon,ISNULL(B.StatLocation_cmb,0) as StatusLocation from "
                   "kolv_mag_Location A(nolock)  left join kolv_mag_Location_Item B(nolock) ON A.Rank = "
                   "B.Rank AND A.Stand = B.Stand AND A.Shelf = B.Shelf AND A.Location = B.Location  order "
                   "by A.Rank,A.Stand,A.Shelf,A.Location")};

class FrmMagCreateLoad : public EmptyHallEditor {
protected:
    /// Expects that the server got these, in their order: statements, and calls as "procedure: first value".
    /// What the driver asks about procedures is left out.
    void expectReceived(const QStringList& expected) const {
        QStringList texts;
        for (const auto& entry : warehouse.server.entries()) {
            if (entry.kind == u"BATCH")
                texts.append(entry.text);
            else if (!entry.text.startsWith(QStringLiteral("sp_")))
                texts.append(entry.text + QStringLiteral(": ") +
                             entry.values.value(0).section(QLatin1Char('='), 1));
        }
        EXPECT_EQ(texts.join(u'\n').toStdString(), expected.join(u'\n').toStdString());
    }

    /// An icon folder in which the icon of a stand can be broken, and a stand with it.
    void addStandWithOwnIcon() {
        ASSERT_TRUE(warehouse.useOwnIcons());
        addStand(1, 1, QStringLiteral("1"));
        ASSERT_TRUE(QFile::copy(warehouse.ownIcon(QStringLiteral("Reg.ico")), standIcon()));
    }
    QString standIcon() const { return warehouse.ownIcon(QStringLiteral("R1_S_01.ico")); }
    QAction* labelButton() const { return toolBar("tlbCmd")->button(3); }
    QAction* saveButton() const { return toolBar("tlbSaveParamLocalization")->button(1); }
    int stands() const { return canvas()->imgBookStand().Count() - 1; }
};

// ---------------------------------------------------------------- the start

TEST_F(FrmMagCreateLoad, ReadsRowsMaterialsGroupsAndParametersAndDrawsThePlanBehindThem) {
    addStand(1, 1, QStringLiteral("1"));
    window = std::make_unique<frmMagCreate>(warehouse.context);
    test::showAndWait(window.get());
    // Each list tells of its first row, so that stands and shelves follow the rows, and shelves the stands.
    expectReceived(QStringList({kRanks, kStandsOfRow, kShelfCount, kStand, kShelves, kShelfCount, kShelfCount,
                                kShelves, kShelfCount, kMaterials, kGroups, kParams}) +
                   kPlan);
    EXPECT_EQ(messages.count(), 0);
}

/// What the window shows while a message of its load is open.
TEST_F(FrmMagCreateLoad, HidesAndPlacesTheFramesBeforeItReadsAndTheLastOnesBehindIt) {
    addStandWithOwnIcon();
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", QStringLiteral("Status lokalizacji"));
    const qint64 imageOfSave = saveButton()->icon().cacheKey();
    clickButton("tlbSaveParamLocalization", "key_Save");
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", QStringLiteral("Status lokalizacji"));
    choose("dtcParamLocation", QStringLiteral("Zdjęcie"));
    clickButton("tlbDefineGroupOnLocation", "key_Define");
    test::click(check("chkFramePozytion"));
    ASSERT_TRUE(labelButton()->isEnabled());
    const qint64 imageOfSaved = saveButton()->icon().cacheKey();
    ASSERT_NE(imageOfSaved, imageOfSave);
    const auto lastOnes = [this] {
        return QStringList(
                   {frame("frmDefGroupLocation")->isHidden() ? QStringLiteral("-") : QStringLiteral("groups"),
                    frame("frmWathSurPicture")->isHidden() ? QStringLiteral("-") : QStringLiteral("picture"),
                    combo("cmbStatusLocation")->isHidden() ? QStringLiteral("-") : QStringLiteral("status"),
                    labelButton()->isEnabled() ? QStringLiteral("label") : QStringLiteral("-")})
            .join(u' ')
            .toStdString();
    };
    ASSERT_EQ(lastOnes(), "groups picture status label");
    window->unload();

    for (const QString& view :
         {QStringLiteral("Kolv_vv_mag_Sur_On_Add"), QStringLiteral("Kolv_vv_mag_Param_Location")})
        ASSERT_TRUE(warehouse.run({QStringLiteral("drop view ") + view})) << qPrintable(warehouse.why());
    ASSERT_TRUE(QFile::remove(standIcon()));
    messages.clear();
    messages.onMessage([&](const MsgBoxRecorder::Message&) {
        for (const char* name : {"frmShelf_1", "frmShelf_2", "frmShelf_3", "frmShelf_4",
                                 "frmAddSurOnLocalization", "frmDetailsStand"})
            EXPECT_TRUE(frame(name)->isHidden()) << name;
        EXPECT_NEAR(toTwips(frame("frmCreate")->y()), 7000, TwipsPerPixel);
        EXPECT_EQ(combo("cmbShelf_1")->count(), 5);
        EXPECT_EQ(rows("dtcRank").size(), 3);
        const bool materials = messages.count() == 1;
        const bool params = messages.count() == 2;
        EXPECT_EQ(rows("dtcGroupOnLocalization").size(), materials ? 0 : 1);
        EXPECT_EQ(saveButton()->icon().cacheKey(), materials || params ? imageOfSaved : imageOfSave);
        EXPECT_EQ(lastOnes(), materials || params ? "groups picture status label" : "- - status label");
    });
    window->show();
    messages.onMessage({});
    expectTitles({QStringLiteral("Error -  [FillComboBox]"), QStringLiteral("Error -  [FillComboBox]"),
                  QStringLiteral("frmMagWatch - GenerateBookstand")});
    EXPECT_EQ(lastOnes(), "- - - -");
    EXPECT_EQ(saveButton()->text(), QStringLiteral("&Zapisz parametr"));
}

// ---------------------------------------------------------------- opened again

/// What the user sees of a window, by the names of its controls.
using Looks = QMap<QString, QString>;

QString lookOf(const QWidget* widget) {
    if (const auto* box = qobject_cast<const QLineEdit*>(widget))
        return box->text();
    if (const auto* box = qobject_cast<const QPlainTextEdit*>(widget))
        return box->toPlainText();
    if (const auto* flag = qobject_cast<const QCheckBox*>(widget))
        return flag->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    if (const auto* image = qobject_cast<const PictureBox*>(widget))
        return image->picture().isEmpty() ? QString() : QStringLiteral("picture");
    if (const auto* list = qobject_cast<const ListView*>(widget))
        return QStringLiteral("%1 columns, %2 rows").arg(list->headerCount()).arg(list->itemCount());
    if (const auto* text = qobject_cast<const QLabel*>(widget))
        return text->text();
    if (const auto* frame = qobject_cast<const QGroupBox*>(widget))
        return QStringLiteral("%1 %2")
            .arg(frame->y())
            .arg(frame->isHidden() ? QStringLiteral("hidden") : QStringLiteral("shown"));
    if (const auto* list = qobject_cast<const DataCombo*>(widget))
        return list->boundText() + u'/' + list->text() + u'/' + QString::number(list->count());
    if (const auto* list = qobject_cast<const QComboBox*>(widget))
        return list->currentText() + u'/' + QString::number(list->count());
    if (const auto* bar = qobject_cast<const ToolBar*>(widget)) {
        QStringList buttons;
        for (int number = 1; number <= bar->buttonCount(); ++number)
            buttons.append(bar->button(number)->text() +
                           (bar->button(number)->isEnabled() ? QString() : QStringLiteral(" (off)")));
        return buttons.join(u'|');
    }
    return {};
}

Looks looksOf(const frmMagCreate& window) {
    Looks looks;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->objectName().isEmpty() && !widget->objectName().startsWith(QStringLiteral("qt_")))
            looks.insert(widget->objectName(), lookOf(widget));
    }
    MapCanvas* canvas = window.findChild<MapCanvas*>();
    looks.insert(QStringLiteral("plan"),
                 QString::number(canvas->imgBookStand().Count() + canvas->imglocation().Count() +
                                 canvas->lnnFrameBookStand().Count()));
    looks.insert(QStringLiteral("preview"),
                 QString::number(canvas->imgBookStandWath().Count() + canvas->imglocationWath().Count() +
                                 canvas->lnnFrameBookStandWath().Count()));
    return looks;
}

QStringList differences(const Looks& looks, const Looks& expected) {
    QStringList names;
    for (auto look = expected.cbegin(); look != expected.cend(); ++look) {
        if (looks.value(look.key()) != look.value())
            names.append(look.key() + QStringLiteral(": ") + looks.value(look.key()) +
                         QStringLiteral(" instead of ") + look.value());
    }
    return names;
}

TEST_F(FrmMagCreateLoad, OpenedAgainWithoutAServerItShowsNothingOfWhatItShowedBefore) {
    addStand(1, 1, QStringLiteral("2"));
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("insert into OITM (ItemCode,ItemName) values (N'AA-1',N'Śruba')"),
         QStringLiteral("insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values "
                        "(1,N'Złącza',N'Y')"),
         QStringLiteral("insert into kolv_mag_Group_Item (GroupSur,ItemCode) values (1,N'AA-1')"),
         QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,ItemName,"
                        "GroupSur) values (1,1,1,1,N'AA-1',N'Śruba',1)")}))
        << qPrintable(warehouse.why());
    open();
    clickStand(QStringLiteral("1_1"));
    test::click(check("chkStandEnable"));
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", QStringLiteral("Zdjęcie"));
    files.answer(QStringLiteral("C:\\Regalon\\Ikony\\R1_S_01.ico"));
    clickButton("tlbPictureSur", "key_Path");
    clickButton("tlbSaveParamLocalization", "key_Save");
    clickButton("tlbDefineGroupOnLocation", "key_Define");
    choose("dtcGroupSur", QStringLiteral("nowa"));
    enter(box("txtNewGroupName"), QStringLiteral("Kleje"));
    choose("dtcGroupSur", QStringLiteral("Złącza"));
    clickButton("tlbSaveStand", "key_Wath");
    test::click(check("chkFramePozytion"));
    ASSERT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    const Looks used = looksOf(*window);

    window->unload();
    warehouse.server.kill();
    // Of the lists' own reads, which would hide what is left, none succeeds.
    window->show();
    expectTitles({QStringLiteral("Error -  [FillComboBox]"), QStringLiteral("Error -  [FillComboBox]"),
                  QStringLiteral("Error -  [FillComboBox]"), QStringLiteral("Error -  [FillComboBox]"),
                  QStringLiteral("frmMagWatch - WathStore")});
    const Looks again = looksOf(*window);
    window = std::make_unique<frmMagCreate>(warehouse.context);
    window->resize(window->sizeHint());
    test::showAndWait(window.get());
    Looks first = looksOf(*window);

    const QString changed = differences(used, first).join(u'\n');
    for (const char* name : {"chkFramePozytion",
                             "frmCreate",
                             "frmAddSurOnLocalization",
                             "frmDetailsStand",
                             "frmShelf_1",
                             "frmDefGroupLocation",
                             "frmWathSurPicture",
                             "txtImageName",
                             "txtLeft",
                             "txtTop",
                             "txtFrmRank",
                             "txtFrmStand",
                             "txtFrmShelf",
                             "txtFrmLocation",
                             "txtParamValueLocalization",
                             "txtFrmPicture",
                             "txtNewGroupName",
                             "txtDescStand",
                             "chkStandVisable",
                             "chkStandEnable",
                             "chkStandFrameArround",
                             "imgWathFindIcon",
                             "impPictureSur",
                             "lstSurOnMag",
                             "lstSurOnGroup",
                             "lblSurOnLOcationData",
                             "tlbSaveParamLocalization",
                             "tlbCmd",
                             "dtcRank",
                             "dtcStand",
                             "dtcShelfCount",
                             "dtcSurOnLOcalization",
                             "dtcGroupOnLocalization",
                             "dtcParamLocation",
                             "dtcGroupSur",
                             "cmbShelf_1",
                             "plan",
                             "preview"})
        EXPECT_TRUE(changed.contains(QLatin1String(name) + QStringLiteral(": "))) << name << " was not used";
    // The frame of the groups gets its place and its buttons whenever it opens.
    EXPECT_TRUE(again.value(QStringLiteral("frmDefGroupLocation")).endsWith(QStringLiteral("hidden")));
    for (const char* name : {"frmDefGroupLocation", "tlbSaveGroupLocation"})
        first.remove(QString::fromLatin1(name));
    EXPECT_EQ(differences(again, first).join(u'\n').toStdString(), "");
}

TEST_F(FrmMagCreateLoad, OpenedAgainItReadsTheWarehouseAnew) {
    addStand(1, 1, QStringLiteral("1"));
    open();
    clickStand(QStringLiteral("1_1"));
    ASSERT_EQ(choice("dtcStand")->boundText(), QStringLiteral("1"));
    window->unload();
    addStand(2, 1, QStringLiteral("2"));
    window->show();
    EXPECT_EQ(choice("dtcRank")->boundText(), QStringLiteral("0"));
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("0"));
    EXPECT_EQ(stands(), 2);
    EXPECT_EQ(rows("cmbShelf_1").size(), 5);
    EXPECT_EQ(rows("cmbStatusLocation").size(), 2);
    EXPECT_EQ(messages.count(), 0);
}

// ---------------------------------------------------------------- a refresh

TEST_F(FrmMagCreateLoad, RefreshingTheWarehouseHasTheFillsRecomputedWithNFirst) {
    addStand(1, 1, QStringLiteral("1"));
    open();
    clickButton("tlbCmd", "key_RefreshMag");
    expectReceived(QStringList(QStringLiteral("Kolv_mag_Refresh_Percent_Location: N")) + kPlan);
}

TEST_F(FrmMagCreateLoad, ShowingTheWarehouseDrawsItAnewWithoutRecomputing) {
    open();
    ASSERT_EQ(stands(), 0);
    addStand(1, 1, QStringLiteral("1"));
    clickButton("tlbSaveStand", "key_Wath_Mag");
    expectReceived(kPlan);
    EXPECT_EQ(stands(), 1);
}

TEST_F(FrmMagCreateLoad, TheBusyPointerStandsWhileThePlanIsDrawn) {
    addStandWithOwnIcon();
    open();
    messages.clear();
    ASSERT_TRUE(QFile::remove(standIcon()));
    // The message about the icon comes from the middle of the drawing.
    QList<MousePointer> seen;
    messages.onMessage([&seen](const MsgBoxRecorder::Message&) { seen.append(Screen::mousePointer()); });
    clickButton("tlbSaveStand", "key_Wath_Mag");
    EXPECT_EQ(seen, QList<MousePointer>({MousePointer::Custom}));
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    clickButton("tlbCmd", "key_RefreshMag");
    EXPECT_EQ(seen, QList<MousePointer>({MousePointer::Custom, MousePointer::Custom}));
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    expectTitles({QStringLiteral("frmMagWatch - GenerateBookstand"),
                  QStringLiteral("frmMagWatch - GenerateBookstand")});
    messages.onMessage({});
}

TEST_F(FrmMagCreateLoad, TheButtonOfTheLabelTemplatesDoesNothing) {
    open();
    const Looks before = looksOf(*window);
    ASSERT_TRUE(toolBar("tlbCmd")->button(4)->isEnabled());
    clickButton("tlbCmd", "key_Templete");
    expectReceived({});
    EXPECT_EQ(differences(looksOf(*window), before).join(u'\n').toStdString(), "");
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(messages.count(), 0);
}

}  // namespace
}  // namespace regalon
