#pragma once

#include "backends/pulse/mirror/ServerMirror.hpp"

#include <optional>
#include <string>
#include <tuple>

namespace pulse {

/// What a category's slider sets. It is looked up again in each state of the mirror and identified
/// by name, since indexes change whenever a device switches its profile.
struct VolumeObject {
    enum class Kind {
        Sink,         ///< An output device.
        Source,       ///< An input device.
        Role,         ///< The streams of one role, and the server's entry for the next one.
        Application,  ///< The streams of one application.
        Conference,   ///< The streams of programs that play and record at once, except calls.
    };
    Kind kind = Kind::Sink;
    std::string name{};
    bool operator==(const VolumeObject&) const = default;
    bool operator<(const VolumeObject& other) const {
        return std::tie(kind, name) < std::tie(other.kind, other.name);
    }
};

/// A change to an object. A member that is nullopt leaves its value unchanged.
struct Setting {
    std::optional<float> fraction{};
    std::optional<Mute> mute{};
    bool operator==(const Setting&) const = default;
    Level appliedTo(const Level& level) const {
        return {fraction.value_or(level.volume), mute.value_or(level.mute)};
    }
    /// Overwrites the members that the newer setting contains.
    void takeFrom(const Setting& newer) {
        if (newer.fraction) fraction = newer.fraction;
        if (newer.mute) mute = newer.mute;
    }
};

}  // namespace pulse
