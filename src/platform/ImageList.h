#pragma once

#include <QIcon>
#include <QList>
#include <QString>

namespace regalon {

/// Icons by number, from 1. Windows name their pictures by these numbers.
class ImageList {
public:
    /// Gives the icon the next number and returns that number.
    int add(const QIcon& icon);
    /// Sets the icon of a number of at least 1; numbers in between become empty icons.
    void set(int number, const QIcon& icon);
    int count() const { return static_cast<int>(m_icons.size()); }
    /// Raises 35600 for a number outside 1 to count().
    QIcon icon(int number) const;

private:
    QList<QIcon> m_icons;
};

}  // namespace regalon
