#include "map/PlanIcons.h"

#include "platform/PlanItems.h"

namespace regalon {

void PlanIcons::show(PictureItem& item, const QString& file) {
    if (!m_pass) {
        item.loadPicture(m_folder + QLatin1Char('\\') + file);
        return;
    }
    auto known = m_pass->icons.constFind(file);
    if (known == m_pass->icons.cend())
        known = m_pass->icons.insert(file, {m_pass->folder.load(file), m_pass->folder.path(file)});
    item.setLoadedPicture(known->picture, known->path);
}

}  // namespace regalon
