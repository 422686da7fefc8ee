#pragma once

#include "backends/pulse/VolumeScale.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

namespace pulse {

/// What a category's slider moves, found anew in each copy of the server's state. By name:
/// indexes change whenever a device switches its profile.
struct VolumeObject {
    enum class Kind {
        Sink,         ///< An output device.
        Source,       ///< An input device.
        Role,         ///< The streams of one role, and what the server remembers for the next one.
        Application,  ///< The streams of one application.
        Conference,   ///< The streams of whoever plays and records at once, phone calls apart.
    };
    Kind kind = Kind::Sink;
    std::string name{};
    bool operator==(const VolumeObject&) const = default;
    bool operator<(const VolumeObject& other) const {
        return std::tie(kind, name) < std::tie(other.kind, other.name);
    }
};

/// What an object is to become. What is not said stays as it is.
struct Setting {
    std::optional<float> fraction{};
    std::optional<Mute> mute{};
    bool operator==(const Setting&) const = default;
    Level appliedTo(const Level& level) const {
        return {fraction.value_or(level.volume), mute.value_or(level.mute)};
    }
    /// Takes over what the other one says.
    void takeFrom(const Setting& newer) {
        if (newer.fraction) fraction = newer.fraction;
        if (newer.mute) mute = newer.mute;
    }
};

/// One thing with a volume in the server; an object consists of any number of them.
struct Target {
    enum class Kind { Sink, Source, RoleEntry, Stream };
    Kind kind = Kind::Sink;
    std::string name{};             ///< Of a device or a role's entry.
    std::uint32_t streamIndex = 0;  ///< Of a stream, which has no other name in its life.
    bool operator==(const Target&) const = default;
    bool operator<(const Target& other) const {
        return std::tie(kind, name, streamIndex) <
               std::tie(other.kind, other.name, other.streamIndex);
    }
};

}  // namespace pulse
