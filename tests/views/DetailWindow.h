#pragma once

#include "map/MapWarehouse.h"
#include "platform/ListView.h"
#include "platform/MsgBox.h"
#include "platform/PictureBox.h"
#include "platform/PlanItems.h"
#include "platform/PlanSurface.h"
#include "platform/TabStrip.h"
#include "platform/ToolBar.h"
#include "views/frmMagWatchDetal.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include <gtest/gtest.h>

#include <memory>

namespace regalon::test {

/// The stand detail on a running demo warehouse, driven by mouse and keys and looked at through its controls'
/// names. The tests put a stand of their own into row 6.
class DetailWindow : public testing::Test {
protected:
    DetailWindow();
    void SetUp() override;

    /// Puts stand 6/1 into the warehouse: one digit a shelf, from the bottom, for its locations. They are of
    /// family LA and 10 percent full.
    void addStand(const QString& locations);
    /// Changes columns of locations of row 6: "Shelf = 1", "LocationIcon = N''".
    void changeLocations(const QString& condition, const QString& columns);
    /// Assigns something to the location 6/1/1/1: columns and their values.
    void assign(const QString& columns, const QString& values);

    /// Makes the window, unless it exists, and shows it, beside other windows.
    void open(qint16 rank = 6, qint16 stand = 1);

    template <typename T>
    T* control(const char* name) const {
        T* found = window->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QString text(const char* label) const { return control<QLabel>(label)->text(); }
    QString note(const char* name) const { return control<QPlainTextEdit>(name)->toPlainText(); }
    QString box(const char* name) const { return control<QLineEdit>(name)->text(); }
    bool visible(const char* name) const { return control<QWidget>(name)->isVisible(); }
    ListView* list() const { return control<ListView>("lstLocationItem"); }
    PlanSurface* surface() const { return control<PlanSurface>("surface"); }
    const Picture& picture() const { return control<PictureBox>("impPictureParam")->picture(); }

    /// A picture or line of the drawing; fails the test and returns null if there is none.
    template <typename T = PictureItem>
    T* item(const char* array, int index = 0) const {
        for (QGraphicsItem* found : surface()->scene()->items()) {
            if (found->data(PlanData::ArrayName).toString() == QLatin1String(array) &&
                found->data(PlanData::Index).toInt() == index)
                return dynamic_cast<T*>(found);
        }
        ADD_FAILURE() << "No " << array << " " << index;
        return nullptr;
    }
    PictureItem* location(int shelf, int position) const {
        return item("imglocation", (4 - shelf) * 3 + position - 1);
    }
    void clickLocation(int shelf, int position);
    void clickStand();
    void clickTab(int number);
    bool press(const char* key);
    /// Numbers of the places of the grid that are drawn.
    QList<int> drawn() const;

    MapWarehouse warehouse{LocalWarehouse::Content::Demo};
    MsgBoxRecorder messages;
    std::unique_ptr<frmMagWatchDetal> window;
};

}  // namespace regalon::test
