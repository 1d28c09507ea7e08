// The client from its first instruction to a drawn plan: bench-start-client CONNECTION_FILE

#include "StartReport.h"
#include "common/AppContext.h"
#include "common/DbConnection.h"
#include "map/MapCanvas.h"
#include "platform/Settings.h"
#include "shell/mdiKolvestra.h"
#include "views/frmMagWatch.h"

#include <QAction>
#include <QApplication>

#include <cstdlib>

namespace {

/// Waits for the first painting of the plan.
class PaintWatch : public QObject {
public:
    using QObject::QObject;
    bool painted = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        painted = painted || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }
};

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 2)
        return 2;
    const QString arguments = QStringLiteral("-") + QString::fromLocal8Bit(argv[1]) + QStringLiteral(" -1");
    QApplication application(argc, argv);
    const regalon::Settings settings = regalon::Settings::load();
    settings.apply();
    regalon::useDatabaseSettings(settings);

    regalon::AppContext context;
    regalon::ChildWindows windows;
    windows.MagWatch.create = [&context] { return new regalon::frmMagWatch(context); };
    regalon::mdiKolvestra window(context, windows);
    window.MDIForm_Load(arguments);
    window.show();
    window.findChild<QAction*>(QStringLiteral("mnuMagWatch"))->trigger();
    auto* canvas = window.findChild<regalon::MapCanvas*>();
    if (!canvas || canvas->imglocation().Count() < 2)
        return 1;
    PaintWatch watch;
    canvas->viewport()->installEventFilter(&watch);
    while (!watch.painted)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QApplication::processEvents();
    bench::printStartReport();
    std::_Exit(0);
}
