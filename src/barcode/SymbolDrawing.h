#pragma once

#include "barcode/DigitSpread.h"

#include <QString>

class QWidget;

namespace regalon {

class PictureBox;

/// One symbol being drawn on the picture box `picBarCode` of a form. All values are in the box's scale units.
class SymbolDrawing {
public:
    enum class Weight {
        Normal,  ///< the digits are not bold
        OfBox    ///< they are as bold as the box has it
    };

    /// Raises as controlOf() does.
    SymbolDrawing(const QWidget* form, double beginX, double beginY, double height, double moduleWidth);

    /// The next module of the symbol. A bar is drawn line by line, `extension` longer than the symbol is
    /// high. Module widths other than 1 and 2 draw nothing and stay where they are.
    void module(bool bar, double extension = 0);
    /// Prints the characters one by one below the bars.
    void print(const QString& text, const DigitSpread& spread, int fontSize, Weight weight);
    /// Gives the box its size: the twips for each unit of the symbol's end and of its height.
    void resizeBox(double twipsOfEnd, double twipsOfHeight);

private:
    PictureBox& m_box;
    const double m_beginX;
    const double m_beginY;
    const double m_height;
    const double m_moduleWidth;
    double m_x;
};

}  // namespace regalon
