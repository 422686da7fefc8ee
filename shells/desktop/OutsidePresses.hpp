#pragma once

#include "backends/gdk/GdkEvents.hpp"
#include "backends/gdk/GdkLayerSurface.hpp"
#include "shells/desktop/OutsidePress.hpp"

#include <functional>
#include <memory>
#include <vector>

/// Tells of presses beside a drawer once they are let go, by an empty window over each monitor, on
/// the layer below the drawer's. A compositor tells in no other way: the keyboard stays with the
/// drawer. The presses come to nobody else. Main thread.
class OutsidePresses {
 public:
    /// Display, events and shell outlive this. `pressed` may end it.
    OutsidePresses(GdkDisplay* display, GdkEvents& events, GdkLayerShell& shell,
                   std::function<void()> pressed);
    ~OutsidePresses();
    OutsidePresses(const OutsidePresses&) = delete;
    OutsidePresses& operator=(const OutsidePresses&) = delete;

 private:
    struct WindowEnd {
        void operator()(GdkWindow* window) const { gdk_window_destroy(window); }
    };
    struct Sheet {
        std::unique_ptr<GdkWindow, WindowEnd> window;
        std::unique_ptr<GdkLayerSurface> surface;
    };

    Sheet sheetOver(GdkMonitor* monitor, GdkLayerShell& shell);
    void handleEvent(const GdkEvent& event);

    GdkEvents& events_;
    std::function<void()> pressed_;
    OutsidePress press_;
    std::vector<Sheet> sheets_;
};
