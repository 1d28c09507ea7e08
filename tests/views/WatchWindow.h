#pragma once

#include "map/MapCanvas.h"
#include "map/MapWarehouse.h"
#include "platform/ListView.h"
#include "platform/MsgBox.h"
#include "platform/ToolBar.h"
#include "views/frmMagWatch.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace regalon::test {

/// The warehouse view on a running warehouse, driven by mouse and keys and looked at through its controls'
/// names.
class WatchWindow : public testing::Test {
protected:
    explicit WatchWindow(LocalWarehouse::Content content = LocalWarehouse::Content::Demo);

    void SetUp() override;
    /// Makes and shows the window. The detail is recorded in `details`.
    void open();

    QLabel* label(const char* name) const { return control<QLabel>(name); }
    QLineEdit* box(const char* name) const { return control<QLineEdit>(name); }
    QGroupBox* frame(const char* name) const { return control<QGroupBox>(name); }
    ToolBar* toolBar(const char* name) const { return control<ToolBar>(name); }
    ListView* list() const { return control<ListView>("lstLocationItem"); }
    MapCanvas* canvas() const { return window->findChild<MapCanvas*>(); }

    /// The picture of an array whose Tag begins with `tag`; fails the test and returns null if there is none.
    PictureItem* item(const char* array, const QString& tag) const;
    void clickLocation(const QString& address);
    void clickStand(const QString& address);
    /// "rank stand shelf location" of the four text boxes.
    QString address() const;

    template <typename T>
    T* control(const char* name) const {
        T* found = window->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    QList<StandDetailRequest> details;
    std::unique_ptr<frmMagWatch> window;
};

}  // namespace regalon::test
