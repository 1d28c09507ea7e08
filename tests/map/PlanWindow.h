#pragma once

#include "map/MapCanvas.h"
#include "map/MapWarehouse.h"
#include "map/MapWatchWindow.h"
#include "platform/ListView.h"
#include "platform/MsgBox.h"
#include "platform/ToolBar.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace regalon::test {

/// A window over the plan of a running warehouse, driven by mouse and keys and looked at through its
/// controls' names.
class PlanWindow : public testing::Test {
protected:
    explicit PlanWindow(LocalWarehouse::Content content);

    void SetUp() override;
    /// The window under test.
    virtual MapWatchWindow* planWindow() const = 0;
    /// Shows the window in its size.
    void show();
    /// A stand detail that is recorded in `details`.
    StandDetail recordedDetail();

    QLabel* label(const char* name) const { return control<QLabel>(name); }
    QLineEdit* box(const char* name) const { return control<QLineEdit>(name); }
    QGroupBox* frame(const char* name) const { return control<QGroupBox>(name); }
    ToolBar* toolBar(const char* name) const { return control<ToolBar>(name); }
    MapCanvas* canvas() const { return planWindow()->findChild<MapCanvas*>(); }

    /// The picture of an array whose Tag begins with `tag`; fails the test and returns null if there is none.
    PictureItem* item(const char* array, const QString& tag) const;
    void clickLocation(const QString& address);
    void clickStand(const QString& address);
    /// "rank stand shelf location" of the four text boxes.
    QString address() const;

    template <typename T>
    T* control(const char* name) const {
        T* found = planWindow()->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    QList<StandDetailRequest> details;
};

/// Captions and keys of a toolbar's buttons; a separator's caption is "-".
QStringList captionsOf(const ToolBar* bar);
QStringList keysOf(const ToolBar* bar);

}  // namespace regalon::test
