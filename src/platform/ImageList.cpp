#include "platform/ImageList.h"

#include "platform/RunTimeError.h"

namespace regalon {

int ImageList::add(const QIcon& icon) {
    m_icons.append(icon);
    return count();
}

void ImageList::set(int number, const QIcon& icon) {
    if (number < 1)
        throw RunTimeError(RunTime::IndexOutOfBounds);
    if (number > count())
        m_icons.resize(number);
    m_icons[number - 1] = icon;
}

QIcon ImageList::icon(int number) const {
    if (number < 1 || number > count())
        throw RunTimeError(RunTime::IndexOutOfBounds);
    return m_icons[number - 1];
}

}  // namespace regalon
