#pragma once

#include "platform/Picture.h"

#include <QWidget>

namespace regalon {

/// An image control on a form. Its size is its own: a larger picture is scaled down to fit, with its
/// proportions kept, and a smaller one stands in the middle as it is.
class PictureBox : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr);

    const Picture& picture() const { return m_picture; }
    void setPicture(const Picture& picture);

    /// Where the picture is drawn, in logical pixels; empty for the empty picture.
    QRect pictureRect() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Picture m_picture;
};

}  // namespace regalon
