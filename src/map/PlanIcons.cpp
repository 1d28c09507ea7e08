#include "map/PlanIcons.h"

#include "platform/PlanItems.h"

namespace regalon {

QString PlanIcons::path(const QString& file) const {
    return m_folder + QLatin1Char('\\') + file;
}

void PlanIcons::show(PictureItem& item, const QString& file) {
    if (!m_seen) {
        item.loadPicture(path(file));
        return;
    }
    auto known = m_seen->constFind(file);
    if (known == m_seen->cend()) {
        const QString whole = path(file);
        known = m_seen->insert(file, {Picture::load(whole), whole});
    }
    item.setLoadedPicture(known->picture, known->path);
}

}  // namespace regalon
