#include "map/PlanFrame.h"

#include "platform/DesignControls.h"
#include "platform/Twips.h"

#include <QFrame>
#include <QGroupBox>

namespace regalon {

QGroupBox* addPlanFrame(QWidget* surface, const char* name, const QString& caption, int left, int top,
                        int width, int height) {
    QGroupBox* frame = addFrame(surface, name, caption);
    place(frame, left, top, width, height);
    auto* edge = new QFrame(frame);
    edge->setFrameStyle(QFrame::Box | QFrame::Plain);
    edge->setAttribute(Qt::WA_TransparentForMouseEvents);
    place(edge, 0, 0, width, height);
    return frame;
}

}  // namespace regalon
