#pragma once

#include <QtGlobal>

namespace regalon {

/// The measures of the plan in twips, the same in all map windows. Icons carry their own size: the widths and
/// heights here place things and draw frames, they scale nothing.
struct MapConstants {
    qint32 StandWidth = 615;      ///< width of a stand image and inner width of its frame
    qint32 StandHeight = 270;     ///< height of a stand image
    qint32 LocationHeight = 165;  ///< pitch of the shelves
    qint32 LocationWidth = 195;   ///< width of an icon of one slot
    qint16 ShelfBaseGap = 50;     ///< between the stand image's top and the lowest icons
    qint16 LocationGap = 5;       ///< step of the gap between the icons of a shelf
    qint16 ShelfGap = 20;         ///< between shelves
};

/// Distance of a stand's frame from the stand, in twips.
inline constexpr qint16 kFrameMargin = 20;

/// Ends of the template of `lnnFrameBookStand`. It lies below the hall; a frame line that gets no Y of its
/// own stays there.
inline constexpr qint32 kTemplateLineX = 3720;
inline constexpr qint32 kTemplateLineY1 = 10320;
inline constexpr qint32 kTemplateLineY2 = 11070;

}  // namespace regalon
