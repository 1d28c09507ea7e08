#include "map/MapWindow.h"

#include "map/MapBackdrop.h"
#include "map/MapCanvas.h"
#include "platform/DesignControls.h"
#include "platform/KeyPreview.h"
#include "platform/Screen.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"

#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QScrollArea>
#include <QShowEvent>
#include <QVBoxLayout>

#include <utility>

namespace regalon {

namespace {

constexpr int kKeyD = 68;
constexpr int kKeyW = 87;

}  // namespace

MapWindow::MapWindow(AppContext& context, const QString& name, const QString& caption, QWidget* parent)
    : QWidget(parent), m_context(context) {
    setObjectName(name);
    setWindowTitle(caption);
    setFocusPolicy(Qt::StrongFocus);
    createPlan();
    auto* keys = new KeyPreview(this, [this](int keyCode, int shift) { Form_KeyDown(keyCode, shift); });
    keys->claim('W', ShiftMask::Alt);
}

/// The controls go before the images: a list that is hidden lays itself out once more with its icons.
MapWindow::~MapWindow() {
    delete m_scroll;
}

void MapWindow::createPlan() {
    m_surface = new QWidget;
    m_surface->setObjectName(QStringLiteral("surface"));
    m_surface->setFixedSize(toPixels(SurfaceWidth), toPixels(SurfaceHeight));
    m_canvas = new MapCanvas(SurfaceWidth, SurfaceHeight, m_surface);
    addMapBackdrop(m_surface);
    connect(m_canvas, &MapCanvas::standClicked, this, [this](int index) { imgBookStand_Click(index); });
    connect(m_canvas, &MapCanvas::locationClicked, this, [this](int index) { imglocation_Click(index); });

    m_scroll = new QScrollArea(this);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setWidget(m_surface);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_scroll);
}

CoolBar* MapWindow::addCoolBar() {
    auto* clbData = new CoolBar(m_surface);
    clbData->setObjectName(QStringLiteral("clbData"));
    clbData->setAutoFillBackground(true);
    place(clbData, 0, 0, SurfaceWidth, ToolStripHeight);
    return clbData;
}

ToolBar* MapWindow::addCommands(CoolBar* clbData) {
    auto* tlbCmd = new ToolBar;
    tlbCmd->setObjectName(QStringLiteral("tlbCmd"));
    clbData->addBand(tlbCmd);
    return tlbCmd;
}

void MapWindow::addExit(ToolBar* tlbCmd, const QString& toolTip) {
    tlbCmd->addButton(QStringLiteral("key_Exit"), QStringLiteral("&Wyjście"), toolTip,
                      programIcon(QStringLiteral("exit.ico")));
    tlbCmd->addSeparator(QStringLiteral("keySeparator"));
}

QSize MapWindow::sizeHint() const {
    return m_surface->size();
}

QString MapWindow::reportName(const char* routine) const {
    return objectName() + QStringLiteral(" - ") + QString::fromLatin1(routine);
}

void MapWindow::unload() {
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()))
        frame->close();
    else
        close();
}

void MapWindow::showEvent(QShowEvent* event) {
    if (!m_loaded && !event->spontaneous()) {
        m_loaded = true;
        Form_Load();
    }
    QWidget::showEvent(event);
}

void MapWindow::closeEvent(QCloseEvent* event) {
    // Unloaded already while a message of the unload is open.
    if (std::exchange(m_loaded, false))
        Form_Unload();
    event->accept();
}

void MapWindow::handleKey(int keyCode, int shift) {
    if (shift == ShiftMask::Alt && keyCode == kKeyW)
        unload();
    else if (shift == ShiftMask::Alt && keyCode == kKeyD) {
        // Reserved: the letter is looked at, but nothing is bound to it.
    }
    Screen::setMousePointer(MousePointer::Default);
}

}  // namespace regalon
