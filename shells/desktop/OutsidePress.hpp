#pragma once

#include "backends/gdk/EventDispatcher.hpp"
#include "backends/gdk/LayerSurface.hpp"

#include <gdk/gdk.h>

#include <functional>
#include <memory>
#include <vector>

namespace desktop {

/// A press beside a drawer, followed until its release. The drawer keeps the pointer that long,
/// because a window below it, such as a tray, might take a lone release for a click.
class OutsidePress {
 public:
    /// What an event means for the press: nothing, a part of it, or its end.
    enum class Step { None, Part, End };

    /// `isOutside` says where the event is, if it is a press.
    Step step(const GdkEvent& event, bool isOutside);

 private:
    bool isHeld_ = false;
};

/// Detects presses beside a drawer, at their release, with an empty window on each monitor in the
/// layer below the drawer. A compositor reports such presses in no other way, since the drawer
/// keeps the keyboard. No other window receives them. Main thread.
class OutsidePresses {
 public:
    /// Display, events and shell outlive this. `pressed` may end it.
    OutsidePresses(GdkDisplay* display, windowing::EventDispatcher& events,
                   windowing::LayerShell& shell, std::function<void()> pressed);
    ~OutsidePresses();
    OutsidePresses(const OutsidePresses&) = delete;
    OutsidePresses& operator=(const OutsidePresses&) = delete;

 private:
    struct WindowEnd {
        void operator()(GdkWindow* window) const { gdk_window_destroy(window); }
    };
    struct Sheet {
        std::unique_ptr<GdkWindow, WindowEnd> window;
        std::unique_ptr<windowing::LayerSurface> surface;
    };

    Sheet sheetOver(GdkMonitor* monitor, windowing::LayerShell& shell);
    void handleEvent(const GdkEvent& event);

    windowing::EventDispatcher& events_;
    std::function<void()> pressed_;
    OutsidePress press_;
    std::vector<Sheet> sheets_;
};

}  // namespace desktop
