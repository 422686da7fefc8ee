#include "tests/wayland/pointer/Pointer.hpp"

#include <chrono>
#include <cstring>
#include <stdexcept>
#include <thread>

namespace pointer {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t leftButton = 0x110;  // The kernel's number for it.
constexpr std::uint32_t verticalAxis = 0;
constexpr std::uint32_t horizontalAxis = 1;
constexpr std::uint32_t fingers = 1;  // The source of an axis event that is a touchpad.

std::uint32_t milliseconds() {
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now().time_since_epoch())
            .count());
}

/// A compositor that is starting makes its socket an instant before it takes connections.
wl_display* connect() {
    constexpr std::chrono::seconds patience(10);
    constexpr std::chrono::milliseconds pause(5);
    const auto end = Clock::now() + patience;
    wl_display* display = wl_display_connect(nullptr);
    while (!display && Clock::now() < end) {
        std::this_thread::sleep_for(pause);
        display = wl_display_connect(nullptr);
    }
    if (!display) throw std::runtime_error("there is no compositor");
    return display;
}

void bindManager(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                 std::uint32_t /*version*/) {
    if (std::strcmp(interface, managerInterface.name) != 0) return;
    *static_cast<wl_proxy**>(data) =
        static_cast<wl_proxy*>(wl_registry_bind(registry, name, &managerInterface, 1));
}

constexpr wl_registry_listener registryListener = {bindManager,
                                                   [](void*, wl_registry*, std::uint32_t) {}};

}  // namespace

Pointer::Pointer() : display_(connect()) {
    wl_registry* registry = wl_display_get_registry(display_.get());
    wl_registry_add_listener(registry, &registryListener, &manager_);
    wl_display_roundtrip(display_.get());
    wl_registry_destroy(registry);
    if (!manager_) throw std::runtime_error("the compositor takes no pointers without a device");
    pointer_ =
        wl_proxy_marshal_flags(manager_, createPointer, &pointerInterface, 1, 0, nullptr, nullptr);
    finish();
}

Pointer::~Pointer() {
    wl_proxy_destroy(pointer_);
    wl_proxy_destroy(manager_);
}

template <class... Arguments>
void Pointer::request(PointerRequest what, Arguments... arguments) {
    wl_proxy_marshal_flags(pointer_, what, nullptr, 1, 0, arguments...);
}

void Pointer::finish() {
    if (wl_display_roundtrip(display_.get()) < 0)
        throw std::runtime_error("the compositor has gone");
}

void Pointer::move(unsigned x, unsigned y, unsigned width, unsigned height) {
    request(motionAbsolute, milliseconds(), x, y, width, height);
    request(frame);
    finish();
}

void Pointer::send(Button state) {
    request(button, milliseconds(), leftButton, static_cast<std::uint32_t>(state));
    request(frame);
    finish();
}

void Pointer::swipe(double dx, double dy, int steps) {
    // The axis before its source, and one axis a frame: wlroots 0.15 keeps the source with the axis
    // that came last, and ends itself when there was none.
    constexpr std::chrono::milliseconds oneFrame(16);
    const std::uint32_t which = dx != 0 ? horizontalAxis : verticalAxis;
    const wl_fixed_t way = wl_fixed_from_double(dx != 0 ? dx : dy);
    for (int i = 0; i < steps; ++i) {
        request(axis, milliseconds(), which, way);
        request(axisSource, fingers);
        request(frame);
        finish();
        std::this_thread::sleep_for(oneFrame);
    }
    request(axisStop, milliseconds(), which);
    request(axisSource, fingers);
    request(frame);
    finish();
}

}  // namespace pointer
