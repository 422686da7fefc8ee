#pragma once

#include "backends/pulse/VolumeScale.hpp"

#include <pulse/def.h>

#include <map>
#include <optional>
#include <string>
#include <tuple>

namespace pulse {

/// An output device as the server describes it. What it doesn't say is empty.
struct Sink {
    std::string name{};
    pa_cvolume volume{};
    Mute mute = Mute::Off;
    /// Of the active port: a pa_device_port_type_t, or a number that a newer server knows.
    int portType = PA_DEVICE_PORT_TYPE_UNKNOWN;
    std::string formFactor{};
    std::string bus{};
    std::string bluetoothProfile{};  ///< As the server spells it, with "_" or "-".
};

/// What the server remembers for the streams of one role.
struct RoleEntry {
    pa_cvolume volume{};
    Mute mute = Mute::Off;
    std::string device{};
};

/// The one thing that a category's slider moves. By name: indexes change whenever a device
/// switches its profile.
struct VolumeObject {
    enum class Kind { Sink, RoleEntry };
    Kind kind = Kind::Sink;
    std::string name{};
    bool operator==(const VolumeObject&) const = default;
    bool operator<(const VolumeObject& other) const {
        return std::tie(kind, name) < std::tie(other.kind, other.name);
    }
};

/// The server's volume and mute of an object.
struct ObjectVolume {
    pa_cvolume volume{};
    Mute mute = Mute::Off;
};

/// A copy of what the server has told. Plain data: it never asks.
struct ServerMirror {
    std::string defaultSinkName;
    std::map<std::string, Sink> sinks;  ///< By name.
    /// By the server's names for them; nullopt when it keeps none.
    std::optional<std::map<std::string, RoleEntry>> roleEntries;

    /// The device that sounds unless a program asks for another. nullptr when there is no real
    /// one, or its description has not come yet.
    const Sink* defaultSink() const;
    /// nullopt when the object is not there. A role that nobody has touched is at 100 %.
    std::optional<ObjectVolume> volumeOf(const VolumeObject& object) const;
    /// The device that a role's streams go to; empty when the server chooses.
    std::string rememberedDevice(const std::string& entryName) const;
};

/// The server's name for what it remembers of a role.
std::string roleEntryName(const std::string& role);

}  // namespace pulse
