#pragma once

#include "platform/ControlArray.h"
#include "platform/PlanItems.h"
#include "platform/PlanSurface.h"

#include <array>
#include <memory>

namespace regalon {

/// The surface of a map window: the plan's pictures and lines over the hall. Element 0 of each array is a
/// hidden template that takes no part in the plan.
class MapCanvas : public PlanSurface {
    Q_OBJECT

public:
    /// The surface has a fixed size, in twips.
    MapCanvas(int widthTwips, int heightTwips, QWidget* parent = nullptr);
    ~MapCanvas() override;

    // The plan.
    ControlArray<PictureItem>& imgBookStand() { return m_stands; }
    ControlArray<PictureItem>& imglocation() { return m_locations; }
    ControlArray<LineItem>& lnnFrameBookStand() { return m_frames; }

    // The preview of one stand while it is edited; only the layout editor fills these.
    ControlArray<PictureItem>& imgBookStandWath() { return m_previewStands; }
    ControlArray<PictureItem>& imglocationWath() { return m_previewLocations; }
    ControlArray<LineItem>& lnnFrameBookStandWath() { return m_previewFrames; }

    /// Keeps the removed elements of the plan for the next build while it lives, and drops what is left of
    /// them then. A build that stops for a message shows none of them: they are hidden as soon as the message
    /// lets the program go on with its events.
    class Redraw {
    public:
        explicit Redraw(MapCanvas& canvas);
        ~Redraw() { m_canvas.setReuse(false); }
        Redraw(const Redraw&) = delete;
        Redraw& operator=(const Redraw&) = delete;

    private:
        MapCanvas& m_canvas;
    };

Q_SIGNALS:
    /// The user clicked element `index` of `imgBookStand` or `imglocation`.
    void standClicked(int index);
    void locationClicked(int index);

private:
    void setReuse(bool reuse);
    void retireWaiting();
    void addTemplates();
    void addWalls();

    ControlArray<PictureItem> m_stands;
    ControlArray<PictureItem> m_locations;
    ControlArray<LineItem> m_frames;
    ControlArray<PictureItem> m_previewStands;
    ControlArray<PictureItem> m_previewLocations;
    ControlArray<LineItem> m_previewFrames;
    std::array<std::unique_ptr<LineItem>, 6> m_walls;
};

}  // namespace regalon
