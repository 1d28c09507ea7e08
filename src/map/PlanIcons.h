#pragma once

#include "platform/Picture.h"

#include <QHash>
#include <QString>

#include <optional>

namespace regalon {

class PictureItem;

/// The icon folder of a plan. All names are file names in the folder; a file that is no icon raises the
/// errors of Picture::load().
class PlanIcons {
public:
    /// The folder in the system's form, without a separator at the end.
    void setFolder(const QString& folder) { m_folder = folder; }
    const QString& folder() const { return m_folder; }

    /// An empty name is shown like any other: its path is the folder, which is no picture.
    void show(PictureItem& item, const QString& file);

    /// A pass over a whole plan: while it lives each file is looked at once, and none is kept beyond it. Most
    /// locations show one of a few pictures, and a look at the file for each of them would cost more than all
    /// the rest of the drawing. Passes do not nest.
    class Pass {
    public:
        explicit Pass(PlanIcons& icons) : m_icons(icons) { m_icons.m_pass.emplace(m_icons.m_folder); }
        ~Pass() { m_icons.m_pass.reset(); }
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;

    private:
        PlanIcons& m_icons;
    };

private:
    struct Icon {
        Picture picture;
        QString path;
    };
    struct Seen {
        explicit Seen(const QString& path) : folder(path) {}

        PictureFolder folder;
        QHash<QString, Icon> icons;
    };

    QString m_folder;
    std::optional<Seen> m_pass;
};

}  // namespace regalon
