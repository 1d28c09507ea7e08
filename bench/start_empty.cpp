// The yardstick of a start: an empty window with the client's libraries, and the client's statements sent
// bare. bench-start-empty CONNECTION_STRING TRACE

#include "BareOdbc.h"
#include "StartReport.h"
#include "platform/Twips.h"

#include <QApplication>
#include <QMainWindow>
#include <QStyle>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

class EmptyWindow : public QMainWindow {
public:
    bool painted = false;

protected:
    void paintEvent(QPaintEvent* event) override {
        QMainWindow::paintEvent(event);
        painted = true;
    }
};

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 3)
        return 2;
    QApplication application(argc, argv);
    try {
        bench::BareOdbc bare(argv[1]);
        bare.run(bench::readTrace(argv[2]));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-start-empty: %s\n", error.what());
        return 1;
    }
    // The same libraries: the first picture that a toolbar asks its style for maps the toolkit's picture
    // plugins.
    (void)QApplication::style()->standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton);
    EmptyWindow window;
    window.setFixedSize(15450 / regalon::TwipsPerPixel, 11400 / regalon::TwipsPerPixel);
    window.show();
    while (!window.painted)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QApplication::processEvents();
    bench::printStartReport();
    std::_Exit(0);
}
