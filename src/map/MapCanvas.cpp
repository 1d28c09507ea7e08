#include "map/MapCanvas.h"

#include "map/MapConstants.h"

namespace regalon {

namespace {

struct Wall {
    int x1, y1, x2, y2;
};

/// `Line1` to `Line6`: the left, right and top wall and the three pieces of the bottom wall between the
/// doors.
constexpr std::array<Wall, 6> kWalls = {{{600, 840, 600, 8280},
                                         {14760, 840, 14760, 8280},
                                         {600, 840, 14760, 840},
                                         {600, 8280, 1560, 8280},
                                         {2760, 8280, 12480, 8280},
                                         {13920, 8280, 14760, 8280}}};

constexpr int kWallWidth = 2;
constexpr QColor kFloor(252, 251, 247);

}  // namespace

MapCanvas::MapCanvas(int widthTwips, int heightTwips, QWidget* parent)
    : PlanSurface(widthTwips, heightTwips, parent),
      m_stands(QStringLiteral("imgBookStand")),
      m_locations(QStringLiteral("imglocation")),
      m_frames(QStringLiteral("lnnFrameBookStand")),
      m_previewStands(QStringLiteral("imgBookStandWath")),
      m_previewLocations(QStringLiteral("imglocationWath")),
      m_previewFrames(QStringLiteral("lnnFrameBookStandWath")) {
    setObjectName(QStringLiteral("MapCanvas"));
    setBackgroundBrush(kFloor);
    addTemplates();
    addWalls();
}

MapCanvas::~MapCanvas() = default;

void MapCanvas::setReuse(bool reuse) {
    m_stands.setReuse(reuse);
    m_locations.setReuse(reuse);
    m_frames.setReuse(reuse);
}

void MapCanvas::retireWaiting() {
    m_stands.retireWaiting();
    m_locations.retireWaiting();
    m_frames.retireWaiting();
}

// Posted before whatever a message box may post, and so done before it is seen.
MapCanvas::Redraw::Redraw(MapCanvas& canvas) : m_canvas(canvas) {
    m_canvas.setReuse(true);
    QMetaObject::invokeMethod(&m_canvas, &MapCanvas::retireWaiting, Qt::QueuedConnection);
}

void MapCanvas::addTemplates() {
    for (ControlArray<PictureItem>* pictures :
         {&m_stands, &m_locations, &m_previewStands, &m_previewLocations}) {
        PictureItem& design = (*pictures)[0];
        design.setVisible(false);
        add(design);
    }
    for (ControlArray<LineItem>* lines : {&m_frames, &m_previewFrames}) {
        LineItem& design = (*lines)[0];
        design.setEnds(kTemplateLineX, kTemplateLineY1, kTemplateLineX, kTemplateLineY2);
        design.setVisible(false);
        add(design);
    }
    m_stands[0].setClickHandler([this](PictureItem& item) { Q_EMIT standClicked(item.index()); });
    m_locations[0].setClickHandler([this](PictureItem& item) { Q_EMIT locationClicked(item.index()); });
}

void MapCanvas::addWalls() {
    for (std::size_t wall = 0; wall < m_walls.size(); ++wall) {
        auto line = std::make_unique<LineItem>(QStringLiteral("Line%1").arg(wall + 1));
        line->setEnds(kWalls[wall].x1, kWalls[wall].y1, kWalls[wall].x2, kWalls[wall].y2);
        line->setBorderWidth(kWallWidth);
        add(*line);
        m_walls[wall] = std::move(line);
    }
}

}  // namespace regalon
