#include "tests/wayland/pointer/Protocol.hpp"

#include <array>

namespace pointer {
namespace {

constexpr std::array<const wl_interface*, 5> plain{};
const std::array<const wl_interface*, 2> seatAndPointer = {&wl_seat_interface, &pointerInterface};
// Never sent here, so its arguments' kinds do not matter.
constexpr std::array<const wl_interface*, 3> unused{};

// The library does not write to them.
wl_interface const** kinds(const auto& list) {
    return const_cast<const wl_interface**>(list.data());
}

const std::array<wl_message, 9> pointerRequests = {{
    {"motion", "uff", kinds(plain)},
    {"motion_absolute", "uuuuu", kinds(plain)},
    {"button", "uuu", kinds(plain)},
    {"axis", "uuf", kinds(plain)},
    {"frame", "", kinds(plain)},
    {"axis_source", "u", kinds(plain)},
    {"axis_stop", "uu", kinds(plain)},
    {"axis_discrete", "uufi", kinds(plain)},
    {"destroy", "", kinds(plain)},
}};

const std::array<wl_message, 3> managerRequests = {{
    {"create_virtual_pointer", "?on", kinds(seatAndPointer)},
    {"destroy", "", kinds(plain)},
    {"create_virtual_pointer_with_output", "2?o?on", kinds(unused)},
}};

}  // namespace

const wl_interface pointerInterface = {"zwlr_virtual_pointer_v1", 2, pointerRequests.size(),
                                       pointerRequests.data(),    0, nullptr};
const wl_interface managerInterface = {"zwlr_virtual_pointer_manager_v1",
                                       2,
                                       managerRequests.size(),
                                       managerRequests.data(),
                                       0,
                                       nullptr};

}  // namespace pointer
