#pragma once

#include <QGraphicsScene>
#include <QGraphicsView>

namespace regalon {

/// A surface of a form for pictures and lines, of a fixed size. It shows all of itself at its natural size
/// and never scrolls; positions on it are twips from its top left corner. Items belong to whoever made them
/// and must go before the surface does.
class PlanSurface : public QGraphicsView {
    Q_OBJECT

public:
    PlanSurface(int widthTwips, int heightTwips, QWidget* parent = nullptr);

    void add(QGraphicsItem& item) { m_scene.addItem(&item); }

private:
    QGraphicsScene m_scene;
};

}  // namespace regalon
