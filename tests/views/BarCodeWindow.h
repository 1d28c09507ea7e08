#pragma once

#include "map/PlanWindow.h"
#include "support/Events.h"
#include "views/frmMagWatchBarCodeLoc.h"

#include <QAction>
#include <QCheckBox>

namespace regalon::test {

/// The barcode window over three stands of one shelf of three locations. FARBA belongs on 1/1/1/1, 1/2/1/1
/// and 2/1/1/2; 1/2/1/2 is full. Packages lie on 1/1/1/1 (1001, 1003, and 1002 given out), on 2/1/1/2 (2001)
/// and in a row that the plan does not have (7001).
class BarCodeWindow : public PlanWindow {
protected:
    BarCodeWindow() : PlanWindow(LocalWarehouse::Content::Empty) {}

    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(PlanWindow::SetUp());
        addStand(1, 1, 2000);
        addStand(1, 2, 4000);
        addStand(2, 1, 6000);
        run(QStringLiteral(
            "insert into OITM (ItemCode,ItemName,InvntryUom) values (N'FARBA',N'Farba: żółta',N'l'),"
            "(N'KLEJ',N'Klej',N'kg')"));
        run(QStringLiteral(
            "update kolv_mag_Location set LocationIcon = N'LA_P_30.ico', LocationPercent = 30"));
        run(
            QStringLiteral("update kolv_mag_Location set LocationPercent = 100 where Rank = 1 and Stand = 2 "
                           "and Location = 2"));
        run(
            QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,ItemName) "
                           "values (1,1,1,1,N'FARBA',N'Farba: żółta'),(1,2,1,1,N'FARBA',N'Farba: żółta'),"
                           "(2,1,1,2,N'FARBA',N'Farba: żółta')"));
        run(
            QStringLiteral("insert into Kolv_Mag_BarCode_Sur "
                           "(BarCode,ItemCode,Quantity,LinePercent,DocNum,LineNum,NumberCode,Rank,Stand,"
                           "Shelf,Location,Active) values "
                           "(N'1001',N'FARBA',12.5,20,501,1,11,1,1,1,1,N'Y'),"
                           "(N'1002',N'FARBA',7,10,501,1,12,1,1,1,1,N'N'),"
                           "(N'1003',N'KLEJ',30,10.5,502,2,13,1,1,1,1,N'Y'),"
                           "(N'2001',N'FARBA',5,5,503,3,70000,2,1,1,2,N'Y'),"
                           "(N'7001',N'FARBA',5,5,503,3,14,7,1,1,1,N'Y')"));
    }

    void addStand(int rank, int stand, int left) {
        ASSERT_TRUE(warehouse.addStand(rank, stand, 1, QStringLiteral("3"), left, 4000,
                                       QStringLiteral("R%1_S_0%2.ico").arg(rank).arg(stand)))
            << qPrintable(warehouse.why());
    }
    void run(const QString& statement) {
        ASSERT_TRUE(warehouse.run({statement})) << qPrintable(warehouse.why());
    }
    /// Puts a procedure that answers this in the place of another one.
    void answer(const QString& procedure, const QString& parameters, const QString& body) {
        run(QStringLiteral("drop procedure ") + procedure);
        run(QStringLiteral("create procedure %1 %2 as begin %3 end").arg(procedure, parameters, body));
    }

    MapWatchWindow* planWindow() const override { return window.get(); }
    void open() {
        window = std::make_unique<frmMagWatchBarCodeLoc>(warehouse.context, recordedDetail());
        show();
        warehouse.server.clearTrace();
    }
    void press(const char* bar, const char* key) {
        ASSERT_TRUE(clickToolButton(toolBar(bar), QString::fromLatin1(key))) << bar << ' ' << key;
    }
    /// Opens the content of a location as the user does.
    void openContent(const QString& address = QStringLiteral("1_1_1_1")) {
        clickLocation(address);
        press("tlbAkceptLocation", "key_AkceptLoc");
    }
    void openLookup() { press("tlbCmd", "key_LokkForBarCode"); }
    /// Types a code in place of the old one and presses the button.
    void lookFor(const QString& code) {
        box("txtBarCodeLookFor")->clear();
        type(box("txtBarCodeLookFor"), code);
        warehouse.server.clearTrace();
        press("tlbLookForBarCode", "key_Akcept");
    }

    ListView* list() const { return control<ListView>("lstBarCodeLocation"); }
    QCheckBox* active() const { return control<QCheckBox>("chkActiveBarCode"); }
    QStringList codes() const {
        QStringList found;
        for (int number = 1; number <= list()->itemCount(); ++number)
            found.append(list()->item(number)->subItem(1));
        return found;
    }
    QString text(const char* name) const { return label(name)->text(); }
    bool enabled(const char* bar, int button) const { return toolBar(bar)->button(button)->isEnabled(); }

    static QString pictures(ControlArray<PictureItem>& array) {
        QStringList names;
        for (int index = 1; index < array.Count(); ++index)
            names.append(array[index].picturePath().section(QLatin1Char('\\'), -1).section(u'.', 0, 0));
        return names.join(u' ');
    }
    QString locations() const { return pictures(canvas()->imglocation()); }
    QString stands() const { return pictures(canvas()->imgBookStand()); }

    /// Which panels show, and how wide the panel of the status and where its button is, in pixels.
    void expectState(const QStringList& visible, int width, int acceptLeft) const {
        QStringList shown;
        for (const char* name : {"frmWatchData", "frmWathLocationShift", "frmPodglad", "frmLookForSur",
                                 "frmLookForSurBarCode"}) {
            if (frame(name)->isVisible())
                shown.append(QString::fromLatin1(name));
        }
        EXPECT_EQ(shown, visible);
        EXPECT_EQ(frame("frmWatchData")->width(), width);
        EXPECT_EQ(toolBar("tlbAkceptLocation")->x(), acceptLeft);
    }
    void expectMap() const { expectState({QStringLiteral("frmWatchData")}, 15015 / 15, 12000 / 15); }
    void expectContent() const {
        expectState({QStringLiteral("frmWatchData"), QStringLiteral("frmWathLocationShift"),
                     QStringLiteral("frmPodglad")},
                    12975 / 15, 10080 / 15);
    }
    void expectSearch() const { expectState({QStringLiteral("frmLookForSur")}, 15015 / 15, 12000 / 15); }
    void expectLookup() const {
        expectState({QStringLiteral("frmLookForSurBarCode")}, 15015 / 15, 12000 / 15);
    }

    std::unique_ptr<frmMagWatchBarCodeLoc> window;
};

}  // namespace regalon::test
