#include "map/PlanFrame.h"

#include "platform/Twips.h"

#include <QFrame>
#include <QGroupBox>
#include <QStyleOptionGroupBox>
#include <QStylePainter>

namespace regalon {

namespace {

// From the edge to the caption, twips.
constexpr int kBeside = 150;
constexpr int kAbove = 30;

/// A frame without a border of its own, whose caption keeps off the edge.
class PlanFrame : public QGroupBox {
public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent*) override {
        QStyleOptionGroupBox option;
        initStyleOption(&option);
        option.subControls.setFlag(QStyle::SC_GroupBoxFrame, false);
        QStylePainter painter(this);
        painter.translate(toPixels(kBeside), toPixels(kAbove));
        painter.drawComplexControl(QStyle::CC_GroupBox, option);
    }
};

}  // namespace

QGroupBox* addPlanFrame(QWidget* surface, const char* name, const QString& caption, int left, int top,
                        int width, int height) {
    auto* frame = new PlanFrame(caption, surface);
    frame->setObjectName(QString::fromLatin1(name));
    frame->setAutoFillBackground(true);
    place(frame, left, top, width, height);
    auto* edge = new QFrame(frame);
    edge->setFrameStyle(QFrame::Box | QFrame::Plain);
    edge->setAttribute(Qt::WA_TransparentForMouseEvents);
    place(edge, 0, 0, width, height);
    return frame;
}

}  // namespace regalon
