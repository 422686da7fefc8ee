#pragma once

#include <gdk/gdk.h>

#include <functional>
#include <map>

/// Hands the events of GDK to the windows they are for. For programs without a toolkit above GDK,
/// which would do so itself: at most one at a time. Main thread.
class GdkEvents {
 public:
    GdkEvents();
    ~GdkEvents();
    GdkEvents(const GdkEvents&) = delete;
    GdkEvents& operator=(const GdkEvents&) = delete;

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
