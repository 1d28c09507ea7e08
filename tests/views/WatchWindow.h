#pragma once

#include "map/PlanWindow.h"
#include "views/frmMagWatch.h"

namespace regalon::test {

/// The warehouse view.
class WatchWindow : public PlanWindow {
protected:
    explicit WatchWindow(LocalWarehouse::Content content = LocalWarehouse::Content::Demo)
        : PlanWindow(content) {}

    MapWatchWindow* planWindow() const override { return window.get(); }
    /// Makes and shows the window. The detail is recorded in `details`.
    void open() {
        window = std::make_unique<frmMagWatch>(warehouse.context, recordedDetail());
        show();
    }
    ListView* list() const { return control<ListView>("lstLocationItem"); }

    std::unique_ptr<frmMagWatch> window;
};

}  // namespace regalon::test
