#pragma once

#include <wayland-client.h>

#include <cstdint>

/// The compositors' protocol for pointers without a device, as far as it is used here. No package
/// brings its description, so it is told by hand: names, signatures and order count.
namespace pointer {

extern const wl_interface managerInterface;
extern const wl_interface pointerInterface;

enum ManagerRequest : std::uint32_t { createPointer = 0 };

enum PointerRequest : std::uint32_t {
    motionAbsolute = 1,
    button = 2,
    axis = 3,
    frame = 4,
    axisSource = 5,
    axisStop = 6,
};

}  // namespace pointer
