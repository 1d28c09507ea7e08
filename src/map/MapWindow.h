#pragma once

#include "platform/ImageList.h"

#include <QString>
#include <QWidget>

class QScrollArea;

namespace regalon {

struct AppContext;
class CoolBar;
class MapCanvas;
class ToolBar;

/// A window with the plan of the warehouse: its surface with the hall, and the life of a window of the main
/// window. It is loaded when it is first shown, and again when it is shown after it was closed.
class MapWindow : public QWidget {
    Q_OBJECT

public:
    ~MapWindow() override;

    /// Closes the window, with its frame inside the main window.
    void unload();

    QSize sizeHint() const override;

    /// Twips. The surface fits a child window of the main window's fixed size without scroll bars.
    static constexpr int SurfaceWidth = 15210;
    static constexpr int SurfaceHeight = 9720;
    static constexpr int ToolStripHeight = 570;

protected:
    /// `name` is the window's design name and the first part of the names under which it reports. The context
    /// must outlive the window.
    MapWindow(AppContext& context, const QString& name, const QString& caption, QWidget* parent);

    // Event routines.
    virtual void Form_Load() = 0;
    virtual void Form_Unload() = 0;
    virtual void Form_KeyDown(int keyCode, int shift) = 0;
    virtual void imgBookStand_Click(int index) = 0;
    virtual void imglocation_Click(int index) = 0;

    /// What the keys of every map window do.
    void handleKey(int keyCode, int shift);

    /// A strip along the top of the surface.
    CoolBar* addCoolBar();
    /// The toolbar `tlbCmd`, empty, and the button with which every one of them begins.
    ToolBar* addCommands(CoolBar* clbData);
    static void addExit(ToolBar* tlbCmd, const QString& toolTip = QString());

    QString reportName(const char* routine) const;
    AppContext& context() const { return m_context; }
    QWidget* surface() const { return m_surface; }
    MapCanvas& canvas() const { return *m_canvas; }
    /// Pictures of rows and headers by their numbers. The lists look at it, not into copies.
    ImageList& imgSmall() { return m_imgSmall; }

    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void createPlan();

    AppContext& m_context;
    ImageList m_imgSmall;
    bool m_loaded = false;

    // Controls, owned by their parents.
    QScrollArea* m_scroll = nullptr;
    QWidget* m_surface = nullptr;
    MapCanvas* m_canvas = nullptr;
};

}  // namespace regalon
