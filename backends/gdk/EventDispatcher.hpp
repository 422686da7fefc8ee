#pragma once

#include <gdk/gdk.h>

#include <functional>
#include <map>

namespace windowing {

/// Dispatches GDK's events to the handlers of the windows they are for:
///
///     events.setHandler(window, [&](const GdkEvent& event) { host.handleEvent(event); });
///
/// For programs without a toolkit above GDK, which would do so itself. At most one exists at a
/// time. Main thread.
class EventDispatcher {
 public:
    EventDispatcher();
    ~EventDispatcher();
    EventDispatcher(const EventDispatcher&) = delete;
    EventDispatcher& operator=(const EventDispatcher&) = delete;

    using Handler = std::function<void(const GdkEvent&)>;
    /// From now on; an empty handler ends it. The window is kept alive while its handler runs.
    void setHandler(GdkWindow* window, Handler handler);
    /// Everything that is for no window, or for one without a handler.
    void setOtherHandler(Handler handler) { other_ = std::move(handler); }

 private:
    void dispatch(const GdkEvent& event);

    std::map<const GdkWindow*, Handler> handlers_;
    Handler other_;
};

}  // namespace windowing
