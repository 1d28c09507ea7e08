#pragma once

#include "platform/Picture.h"

#include <QColor>
#include <QGraphicsItem>
#include <QString>

#include <functional>

namespace regalon {

/// Keys of QGraphicsItem::data() on pictures and lines, by which the running program can be driven from
/// outside.
namespace PlanData {
inline constexpr int ArrayName = 0;
inline constexpr int Index = 1;
inline constexpr int Tag = 2;
}  // namespace PlanData

/// What pictures and lines of a scene have alike: their place in an array and their Tag, which are told to
/// outside drivers as well.
class PlanItem : public QGraphicsItem {
public:
    int index() const { return m_index; }

    QString tag() const { return m_tag; }
    void setTag(const QString& tag);

    /// Takes the element off the plan without destroying it: hidden, and outside drivers find it under no
    /// name any more.
    void retire();
    /// Puts a retired element back under its name and index; it stays hidden. One that is not retired stays
    /// as it is.
    void revive();

protected:
    PlanItem(const QString& arrayName, int index);

private:
    QString m_arrayName;
    QString m_tag;
    int m_index;
    bool m_retired = false;
};

/// An image control on a scene whose unit is one logical pixel; its own properties are in twips. Without
/// Stretch the size follows the picture. A new item is visible.
class PictureItem : public PlanItem {
public:
    enum { Type = UserType + 1 };
    using ClickHandler = std::function<void(PictureItem& item)>;

    explicit PictureItem(const QString& arrayName = QString(), int index = 0);

    int type() const override { return Type; }

    int left() const { return m_left; }
    void setLeft(int twips) { setPosition(twips, m_top); }
    int top() const { return m_top; }
    void setTop(int twips) { setPosition(m_left, twips); }
    /// Left and Top in one step: a scene takes note of each.
    void setPosition(int left, int top);
    int width() const { return m_width; }
    /// Without Stretch the width of a picture wins; the same for the height.
    void setWidth(int twips);
    int height() const { return m_height; }
    void setHeight(int twips);

    const Picture& picture() const { return m_picture; }
    void setPicture(const Picture& picture);
    /// Path of the picture as last given to loadPicture().
    QString picturePath() const { return m_picturePath; }
    /// Picture::load() and setPicture(); on failure the old picture stays.
    void loadPicture(const QString& path);
    /// The same with the picture of the path already at hand.
    void setLoadedPicture(const Picture& picture, const QString& path);

    bool stretch() const { return m_stretch; }
    void setStretch(bool stretch);

    /// Called when the left button is released over the item on which it was pressed.
    void setClickHandler(const ClickHandler& handler) { m_click = handler; }

    /// Takes over the properties of the template of a control array, apart from name, index, tag and
    /// visibility; the element is in the scene of the template then.
    void copyDesign(const PictureItem& design);

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;

private:
    void fitToPicture();

    Picture m_picture;
    QString m_picturePath;
    ClickHandler m_click;
    int m_left = 0;
    int m_top = 0;
    int m_width = 0;
    int m_height = 0;
    bool m_stretch = false;
};

/// A line control; ends in twips. Default look: black, one pixel at every zoom. A new item is visible. It
/// takes no mouse buttons.
class LineItem : public PlanItem {
public:
    enum { Type = UserType + 2 };

    explicit LineItem(const QString& arrayName = QString(), int index = 0);

    int type() const override { return Type; }

    int x1() const { return m_x1; }
    void setX1(int twips);
    int x2() const { return m_x2; }
    void setX2(int twips);
    int y1() const { return m_y1; }
    void setY1(int twips);
    int y2() const { return m_y2; }
    void setY2(int twips);
    void setEnds(int x1, int y1, int x2, int y2);

    QColor borderColor() const { return m_color; }
    void setBorderColor(const QColor& color);
    /// Logical pixels, at least 1.
    int borderWidth() const { return m_borderWidth; }
    void setBorderWidth(int pixels);

    /// As that of a picture.
    void copyDesign(const LineItem& design);

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    QColor m_color = Qt::black;
    int m_x1 = 0;
    int m_y1 = 0;
    int m_x2 = 0;
    int m_y2 = 0;
    int m_borderWidth = 1;
};

}  // namespace regalon
