#pragma once

#include "map/PlanWindow.h"
#include "stock/frmMagWatchShiftLoc.h"

#include <memory>

namespace regalon::test {

/// The shift window on a small warehouse. Stand 1/1 has three locations: FARBA belongs on the first, where
/// three packages of it lie and a stranger, one package of KLEJ; nothing lies on the others. Stand 1/2 has
/// two locations without anything, and stand 5/1 at the left wall one with a package of KLEJ, which belongs
/// there.
class ShiftWindow : public PlanWindow {
protected:
    ShiftWindow() : PlanWindow(LocalWarehouse::Content::Empty) {}

    void SetUp() override;
    MapWatchWindow* planWindow() const override { return window.get(); }
    /// Makes and shows the window. The detail is recorded in `details`.
    void open();

    void run(const QString& statement);
    /// A package of 100 by 100 by 100 mm; the place as it stands in a statement, "1,1,1,1".
    void addPackage(const char* barCode, const char* itemCode, double quantity, const char* place);
    /// "rank stand shelf location" where a package lies.
    QString placeOf(const char* barCode);
    /// Number of staged rows of everybody, or of those that fulfil a condition.
    int staged(const QString& condition = QStringLiteral("1 = 1"));

    ListView* items() const { return control<ListView>("lstLocationItem"); }
    ListView* barCodes() const { return control<ListView>("lstLocationBarCode"); }
    ListView* proposals() const { return control<ListView>("lstSurPropLocation"); }
    QGroupBox* shiftFrame() const { return frame("frmWathLocationShift"); }
    QAction* acceptLocationButton() const;

    // What the user does.
    void press(const char* toolBarName, const char* key);
    void acceptLocation() { press("tlbAkceptLocation", "key_AkceptLoc"); }
    void acceptItem() { press("tlbAkceptItem", "key_AkceptItem"); }
    void cancelItem() { press("tlbAkceptItem", "key_Cancel"); }
    void acceptShift() { press("tlbAkceptShiftItem", "key_AkceptShiftItem"); }
    void cancelShift() { press("tlbAkceptShiftItem", "key_Cancel"); }
    void tick(ListView* list, int row);
    /// The first location of stand 1/1, confirmed, and its packages.
    void pickSource();
    void pickPackages();
    /// Ticks a package, and then the first row of a target of it.
    void tickPackage(const char* barCode);
    void tickTarget(const char* barCode, const QString& place);

    // What the lists show.
    /// Texts of a column counted from the end, row by row.
    static QStringList column(const ListView* list, int fromEnd);
    /// Numbers of the ticked rows, and the small icons of all of them.
    static QList<int> ticked(const ListView* list);
    static QList<int> icons(const ListView* list);
    static int selected(const ListView* list);

    /// The four states of the window as the controls tell them.
    void expectBrowsing() const;
    void expectLocationPicked() const;
    void expectChoosingItem() const;
    void expectChoosingBarCode() const;

    /// Calls and statements of the trace, each call with its values, without what asks for parameters.
    QStringList traced() const;

    std::unique_ptr<frmMagWatchShiftLoc> window;
};

/// Puts a procedure into the place of a real one.
QStringList replaceProcedure(const QString& name, const QString& parametersAndBody);

}  // namespace regalon::test
