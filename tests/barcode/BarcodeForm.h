#pragma once

#include "platform/PictureBox.h"

#include <QImage>
#include <QLineEdit>
#include <QWidget>

namespace regalon::test {

/// A form as the drawing routines want it: the picture box lies in a frame, hidden as in the window that has
/// it.
struct BarcodeForm {
    BarcodeForm();

    /// A character that was printed below the bars, and where.
    struct Printed {
        QString text;
        QPoint at;
        bool operator==(const Printed&) const = default;
    };
    QList<Printed> printed() const;
    /// All bars in the order of drawing.
    QList<QRect> bars() const;
    /// What the box shows, as a picture of device pixels.
    QImage image() const;

    QWidget form;
    QWidget frame{&form};
    PictureBox picBarCode{&frame};
    QLineEdit txtSumaKontrolana{&form};
};

/// The modules in a row of a picture, from the first black pixel to the last one: 1 is black.
QString modulesInRow(const QImage& image, int y, int pixelsOfModule);

/// The modules of a width string that begins with a bar: "231" is "110001".
QString modulesOf(const QString& widths);

/// Where `count` characters of a text stand when character k is at `first` plus `step` times k.
QList<BarcodeForm::Printed> spread(const QString& text, double first, double step, int y);

}  // namespace regalon::test
