#include "backends/gdk/EventDispatcher.hpp"

namespace windowing {

EventDispatcher::EventDispatcher() {
    const auto handler = +[](GdkEvent* event, gpointer events) {
        static_cast<EventDispatcher*>(events)->dispatch(*event);
    };
    gdk_event_handler_set(handler, this, nullptr);
}

EventDispatcher::~EventDispatcher() {
    gdk_event_handler_set([](GdkEvent*, gpointer) {}, nullptr, nullptr);
}

void EventDispatcher::setHandler(GdkWindow* window, Handler handler) {
    if (handler)
        handlers_[window] = std::move(handler);
    else
        handlers_.erase(window);
}

void EventDispatcher::dispatch(const GdkEvent& event) {
    const auto found = handlers_.find(event.any.window);
    // A copy: the handler may end itself, as when its window closes.
    const Handler handler = found == handlers_.end() ? other_ : found->second;
    if (handler) handler(event);
}

}  // namespace windowing
