#pragma once

class QWidget;

namespace regalon {

/// Puts the fixed marks of the hall on the surface of a map window: the row letters `Label4` to `Label8`, the
/// door names `Label1` and `Label2` and the door pictures `Image1` and `Image2`. They belong to `surface`,
/// lie in its twips and let the mouse through to the plan below.
void addMapBackdrop(QWidget* surface);

}  // namespace regalon
