#include "barcode/SymbolDrawing.h"

#include "platform/FormControl.h"
#include "platform/PictureBox.h"

namespace regalon {

SymbolDrawing::SymbolDrawing(const QWidget* form, double beginX, double beginY, double height,
                             double moduleWidth)
    : m_box(controlOf<PictureBox>(form, QStringLiteral("picBarCode"))),
      m_beginX(beginX),
      m_beginY(beginY),
      m_height(height),
      m_moduleWidth(moduleWidth),
      m_x(beginX) {}

void SymbolDrawing::module(bool bar, double extension) {
    if (m_moduleWidth != 1 && m_moduleWidth != 2)
        return;
    if (bar) {
        for (int line = 0; line < m_moduleWidth; ++line)
            m_box.drawVertical(m_x + line, m_beginY, m_beginY + m_height + extension);
    }
    m_x += m_moduleWidth;
}

void SymbolDrawing::print(const QString& text, const DigitSpread& spread, int fontSize, Weight weight) {
    for (qsizetype k = 1; k <= text.size(); ++k) {
        m_box.setForeColor(Qt::black);
        m_box.setFontSize(fontSize);
        if (weight == Weight::Normal)
            m_box.setFontBold(false);
        m_box.moveTo(m_beginX + spread.Offset + spread.Step * static_cast<double>(k), m_beginY + m_height);
        m_box.print(text[k - 1]);
    }
}

void SymbolDrawing::resizeBox(double twipsOfEnd, double twipsOfHeight) {
    m_box.setWidthTwips(m_x * twipsOfEnd);
    m_box.setHeightTwips(m_height * twipsOfHeight);
}

}  // namespace regalon
