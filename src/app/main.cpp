// regalon -<connection file> -<user number>
#include "common/AppContext.h"
#include "common/DbConnection.h"
#include "map/MapWatchWindow.h"
#include "map/frmMagCreate.h"
#include "platform/CommandLine.h"
#include "platform/MsgBox.h"
#include "platform/Settings.h"
#include "shell/mdiKolvestra.h"
#include "stock/clsMagSurInputBarCode.h"
#include "stock/frmMagWatchShiftLoc.h"
#include "views/frmMagWatch.h"
#include "views/frmMagWatchBarCodeLoc.h"
#include "views/frmMagWatchDetal.h"

#include <QApplication>

namespace {

using namespace regalon;

/// Everything on the command line belongs to the system. The toolkit would take arguments of its own out of
/// it.
QString commandLine(int argc, char** argv) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return CommandLine::join(arguments);
}

void useSettings() {
    const Settings settings = Settings::load();
    settings.apply();
    useDatabaseSettings(settings);
    if (!settings.Problems.isEmpty()) {
        MsgBox(settings.Problems.join(QStringLiteral("\r\n")), MsgFlag::Exclamation, Settings::defaultFile());
    }
}

/// The stand detail opens beside the stand, counted from where the main window stands.
void tellPlace(QWidget* window, qint32 top, qint32 left) {
    auto* plan = static_cast<MapWatchWindow*>(window);
    plan->setTopStand(top);
    plan->setLeftStand(left);
}

ChildWindows childWindows(AppContext& context) {
    ChildWindows windows;
    const StandDetail detail = standDetail(context);
    windows.MagWatch.create = [&context, detail] { return new frmMagWatch(context, detail); };
    windows.MagWatch.beforeShow = tellPlace;
    windows.MagCreate.create = [&context] { return new frmMagCreate(context); };
    windows.MagWatchShiftLoc.create = [&context, detail] { return new frmMagWatchShiftLoc(context, detail); };
    windows.MagWatchShiftLoc.beforeShow = tellPlace;
    windows.MagWatchBarCodeLoc.create = [&context, detail] {
        auto* window = new frmMagWatchBarCodeLoc(context, detail);
        window->setPrintRaportParam([&context](const QWidget* Form, const QString& Sql) {
            clsMagSurInputBarCode(context).SetPrintRaportParam(Form, Sql);
        });
        return window;
    };
    windows.MagWatchBarCodeLoc.beforeShow = tellPlace;
    return windows;
}

}  // namespace

int main(int argc, char** argv) {
    const QString arguments = commandLine(argc, argv);
    int programOnly = 1;
    QApplication application(programOnly, argv);
    QApplication::setApplicationName(QStringLiteral("Regalon"));
    QApplication::setApplicationVersion(QStringLiteral(REGALON_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("regalon"));
    useSettings();

    AppContext context;
    mdiKolvestra window(context, childWindows(context));
    window.MDIForm_Load(arguments);
    window.show();
    return QApplication::exec();
}
