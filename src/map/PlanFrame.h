#pragma once

class QGroupBox;
class QString;
class QWidget;

namespace regalon {

/// A frame that lies on the plan, with an edge all around, since the lines of the plan would run into it. The
/// place is in twips of the surface; the size stays, the position may change.
QGroupBox* addPlanFrame(QWidget* surface, const char* name, const QString& caption, int left, int top,
                        int width, int height);

}  // namespace regalon
