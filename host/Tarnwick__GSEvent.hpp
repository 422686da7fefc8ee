#pragma once

#include "platform/foundation/NSObject.hpp"

#include <array>
#include <cstddef>
#include <cstdint>

/// The event record that a touches event is made from. The platform reads it by position, so the
/// order, the types and the width of the fields are fixed, and there is nothing else in it.
// The name is that of an addition to a platform class.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
class Tarnwick__GSEvent : public NSObject {
 public:
    std::string_view className() const override { return "Tarnwick__GSEvent"; }

    std::uint32_t flags = 0;
    std::uint32_t type = 0;
    std::uint32_t ignored1 = 0;
    float x1 = 0;  ///< Points in the window, the same three times.
    float y1 = 0;
    float x2 = 0;
    float y2 = 0;
    std::array<std::uint32_t, 10> ignored2{};
    std::array<std::uint32_t, 7> ignored3{};
    float sizeX = 0;  ///< Of the finger; points.
    float sizeY = 0;
    float x3 = 0;
    float y3 = 0;
    std::array<std::uint32_t, 3> ignored4{};
};

// A class with virtual functions has no layout in the language's own terms; both compilers have
// one: the class pointer, then the members in their order.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
static_assert(offsetof(Tarnwick__GSEvent, flags) == 4);
static_assert(offsetof(Tarnwick__GSEvent, type) == 8);
static_assert(offsetof(Tarnwick__GSEvent, ignored1) == 12);
static_assert(offsetof(Tarnwick__GSEvent, x1) == 16);
static_assert(offsetof(Tarnwick__GSEvent, y1) == 20);
static_assert(offsetof(Tarnwick__GSEvent, x2) == 24);
static_assert(offsetof(Tarnwick__GSEvent, y2) == 28);
static_assert(offsetof(Tarnwick__GSEvent, ignored2) == 32);
static_assert(offsetof(Tarnwick__GSEvent, ignored3) == 72);
static_assert(offsetof(Tarnwick__GSEvent, sizeX) == 100);
static_assert(offsetof(Tarnwick__GSEvent, sizeY) == 104);
static_assert(offsetof(Tarnwick__GSEvent, x3) == 108);
static_assert(offsetof(Tarnwick__GSEvent, y3) == 112);
static_assert(offsetof(Tarnwick__GSEvent, ignored4) == 116);
static_assert(sizeof(Tarnwick__GSEvent) == 128);
#pragma GCC diagnostic pop
