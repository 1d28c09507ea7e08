#pragma once

#include "map/MapCanvas.h"
#include "map/MapWarehouse.h"
#include "map/frmMagCreate.h"
#include "platform/CommonDialog.h"
#include "platform/DataCombo.h"
#include "platform/ListView.h"
#include "platform/MsgBox.h"
#include "platform/PictureBox.h"
#include "platform/ToolBar.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace regalon::test {

/// The layout editor on a running warehouse, driven by mouse and keys and looked at through its controls'
/// names.
class LayoutEditor : public testing::Test {
protected:
    explicit LayoutEditor(LocalWarehouse::Content content = LocalWarehouse::Content::Demo);

    void SetUp() override;
    /// Makes and shows the window, and forgets the trace of its load.
    void open();

    QLabel* label(const char* name) const { return control<QLabel>(name); }
    QLineEdit* box(const char* name) const { return control<QLineEdit>(name); }
    QCheckBox* check(const char* name) const { return control<QCheckBox>(name); }
    QGroupBox* frame(const char* name) const { return control<QGroupBox>(name); }
    ToolBar* toolBar(const char* name) const { return control<ToolBar>(name); }
    DataCombo* choice(const char* name) const { return control<DataCombo>(name); }
    QComboBox* combo(const char* name) const { return control<QComboBox>(name); }
    ListView* list(const char* name) const { return control<ListView>(name); }
    MapCanvas* canvas() const { return window->findChild<MapCanvas*>(); }

    /// The picture of an array whose Tag begins with `tag`; fails the test and returns null if there is none.
    PictureItem* item(const char* array, const QString& tag) const;
    /// Clicks a picture of the plan, which no frame may cover.
    void clickLocation(const QString& address);
    void clickStand(const QString& address);
    /// Clicks a button, which must be there, of a toolbar.
    void clickButton(const char* toolBarName, const char* key);
    /// Picks the row of a list by its text, with the keyboard.
    void choose(const char* comboName, const QString& text);
    /// Types over what is in a box.
    void enter(QWidget* widget, const QString& text);
    /// Picks the row in the open list, as by a click: no row on the way is chosen.
    void pick(const char* comboName, const QString& text);
    /// Shown texts of a list, first to last.
    QStringList rows(const char* comboName) const;
    /// Expects messages with these titles, first to last.
    void expectTitles(const QStringList& titles) const;
    /// Expects this one message, as a notice of the window.
    void expectNotice(const QString& text) const;

    template <typename T>
    T* control(const char* name) const {
        T* found = window->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    FileDialogRecorder files;
    std::unique_ptr<frmMagCreate> window;
};

/// The editor in a hall with rows A and B and no stands but those that a test adds.
class EmptyHallEditor : public LayoutEditor {
protected:
    EmptyHallEditor();
    void SetUp() override;

    /// Adds stand 1 of row A, and more of the row behind it; see MapWarehouse::addStand().
    void addStand(int stand, int shelfCount, const QString& locations);
    /// Chooses "Nowy" in row A and "Nowa", and gives it icon, place and number of locations.
    void defineNewStand(const QString& left = QStringLiteral("5000"),
                        const QString& top = QStringLiteral("4000"),
                        const QString& locations = QStringLiteral("2"));
    /// Everything that the editor writes, as one text.
    QString tables();
};

}  // namespace regalon::test
