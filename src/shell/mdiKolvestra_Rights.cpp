// The rights of the user and the menus that follow them.
#include "common/AppContext.h"
#include "platform/RunTimeError.h"
#include "shell/Rights.h"
#include "shell/mdiKolvestra.h"

#include <QAction>
#include <QMenu>

namespace regalon {

namespace {

/// Whether the user holds a right of the window whose rights string was read last. A right that the window
/// does not have is held by nobody.
bool holds(const Rights& rights, const QString& strRights, qint16 number) {
    const qint32 position = rights.positionOf(number);
    return position > 0 && HasRight(strRights, position);
}

}  // namespace

/// Silent: a right that cannot be read ends it, and the menus stay as far as they were set.
void mdiKolvestra::applyRights() {
    try {
        setMenusByRights();
    } catch (const std::exception&) {
        // Which of them it was is the site's to find out in its tables.
    }
}

void mdiKolvestra::setMenusByRights() {
    Rights rights(m_context);
    const qint16 user = m_context.UserSign;
    // No window has this name: its rows say that the tables know the user. To one whom they do not know
    // nothing is closed.
    if (rights.GetRights(QStringLiteral("frmSlownikGrupa"), user).isEmpty()) {
        return;
    }
    QString held = rights.GetRights(QStringLiteral("frmMagCreate"), user);
    m_magCreate.item->setEnabled(holds(rights, held, 1));
    held = rights.GetRights(QStringLiteral("frmMagWatch"), user);
    m_magWatch.item->setEnabled(holds(rights, held, 1));
    // What these say goes before what the two windows' own rows said.
    held = rights.GetRights(QStringLiteral("MagSur"), user);
    m_magWatch.item->setEnabled(holds(rights, held, 1));
    m_magCreate.item->setEnabled(holds(rights, held, 2));
    m_magWatchShiftLoc.item->setEnabled(holds(rights, held, 5));
    m_magWatchBarCodeLoc.item->setEnabled(holds(rights, held, 7));
    // The first user is the administrator, whatever the tables say.
    const bool administrator = user == 1;
    mnuKonfPlikuPol->setEnabled(administrator);
    mnuUUstawienia->menuAction()->setEnabled(administrator);
}

}  // namespace regalon
