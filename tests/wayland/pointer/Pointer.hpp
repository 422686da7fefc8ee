#pragma once

#include "tests/wayland/pointer/Protocol.hpp"

#include <memory>

namespace pointer {

/// A pointer of a compositor's that no hand moves. Everything is done when a call returns.
class Pointer {
 public:
    /// Throws std::runtime_error where there is no compositor, or one without such pointers.
    Pointer();
    ~Pointer();
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;

    /// To a place on a screen of that size, in the same units.
    void move(unsigned x, unsigned y, unsigned width, unsigned height);
    void press() { send(Button::Down); }
    void release() { send(Button::Up); }
    /// Two fingers on a touchpad: `steps` movements of dx or dy points each, one a screen's frame,
    /// then the fingers are lifted. One of both must be 0.
    void swipe(double dx, double dy, int steps);

 private:
    enum class Button : std::uint32_t { Up = 0, Down = 1 };
    struct Disconnect {
        void operator()(wl_display* display) const { wl_display_disconnect(display); }
    };

    void send(Button state);
    template <class... Arguments>
    void request(PointerRequest what, Arguments... arguments);
    void finish();

    std::unique_ptr<wl_display, Disconnect> display_;
    wl_proxy* manager_ = nullptr;
    wl_proxy* pointer_ = nullptr;
};

}  // namespace pointer
