#include "platform/PlanSurface.h"

#include "platform/Twips.h"

namespace regalon {

PlanSurface::PlanSurface(int widthTwips, int heightTwips, QWidget* parent) : QGraphicsView(parent) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setFocusPolicy(Qt::NoFocus);
    // A rebuild replaces everything: an index of positions and a list of dirty regions would only cost time.
    m_scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
    m_scene.setSceneRect(0, 0, toPixelsF(widthTwips), toPixelsF(heightTwips));
    setScene(&m_scene);
    setFixedSize(toPixels(widthTwips), toPixels(heightTwips));
}

}  // namespace regalon
