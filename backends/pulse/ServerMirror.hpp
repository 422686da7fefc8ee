#pragma once

#include "backends/pulse/VolumeObject.hpp"
#include "backends/pulse/VolumeScale.hpp"

#include <pulse/def.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace pulse {

/// An output or input device as the server describes it. What it doesn't say is empty. Indexes
/// connect the parts of the mirror and are never kept beyond it.
struct Device {
    std::string name{};
    pa_cvolume volume{};
    Mute mute = Mute::Off;
    /// Of the active port: a pa_device_port_type_t, or a number that a newer server knows.
    int portType = PA_DEVICE_PORT_TYPE_UNKNOWN;
    std::string formFactor{};
    std::string bus{};
    std::string bluetoothProfile{};  ///< As the server spells it, with "_" or "-".
    std::vector<std::string> intendedRoles{};
    std::string masterDevice{};  ///< For a virtual one, the name of the device behind it.
    std::string linkGroup{};     ///< Shared with the stream that a virtual one plays by.
    bool isSuspended = false;
    bool isOfCard = true;  ///< And not made by software alone.
    std::uint32_t index = PA_INVALID_INDEX;
};

/// The name by which the server knows each program of this project.
inline constexpr const char* ourApplicationName = "Tarnwick";

/// A program that is connected to the server, or one that another sound library brings.
struct Client {
    std::string processId{};
    std::string binary{};
    std::string name{};
    std::string version{};  ///< The program's own.
};

/// Something that plays.
struct Stream {
    std::uint32_t index = PA_INVALID_INDEX;
    std::uint32_t sinkIndex = PA_INVALID_INDEX;
    pa_cvolume volume{};
    Mute mute = Mute::Off;
    bool hasVolume = true;  ///< False where the server lets nobody move it.
    std::string role{};
    std::string applicationName{};
    std::string applicationId{};
    std::string binary{};
    std::string processId{};
    std::string nodeName{};
    std::string linkGroup{};
    std::uint32_t clientIndex = PA_INVALID_INDEX;
};

/// Something that records.
struct Recording {
    std::string processId{};
    std::uint32_t clientIndex = PA_INVALID_INDEX;
};

/// What the server remembers for the streams of one role.
struct RoleEntry {
    pa_cvolume volume{};
    Mute mute = Mute::Off;
    std::string device{};
};

/// The server's volume and mute of one of its things.
struct ObjectVolume {
    pa_cvolume volume{};
    Mute mute = Mute::Off;
};

struct Version {
    int major = 0;
    int minor = 0;
    int micro = 0;
    bool operator==(const Version&) const = default;
    bool operator<(const Version& other) const {
        return std::tie(major, minor, micro) < std::tie(other.major, other.minor, other.micro);
    }
};

struct ServerInfo {
    std::string defaultSinkName{};
    std::string defaultSourceName{};
    std::optional<Version> pipeWire{};  ///< nullopt for PulseAudio itself.
};

using DeviceMap = std::map<std::string, Device>;    ///< By name.
using ClientMap = std::map<std::uint32_t, Client>;  ///< By index.
using StreamList = std::vector<Stream>;
using RecordingList = std::vector<Recording>;
using RoleEntryMap = std::map<std::string, RoleEntry>;  ///< By the server's names for them.

/// A copy of what the server has told. Plain data: it never asks.
struct ServerMirror {
    ServerInfo server;
    DeviceMap sinks;
    DeviceMap sources;
    ClientMap clients;
    StreamList streams;
    RecordingList recordings;
    std::optional<RoleEntryMap> roleEntries;  ///< nullopt when the server keeps none.

    /// The device that sounds unless a program asks for another. nullptr when there is no real
    /// one, or its description has not come yet.
    const Device* defaultSink() const;
    /// nullptr when there is none of that name.
    const Device* sinkNamed(const std::string& name) const;
    const Device* sourceNamed(const std::string& name) const;
    /// nullptr when it is not described (yet).
    const Device* sinkOf(const Stream& stream) const;
    const Stream* streamAt(std::uint32_t index) const;
    /// The process of a stream or a recording, told by itself or by its client; empty if neither
    /// says so.
    template <class Described>
    const std::string& processOf(const Described& described) const {
        return described.processId.empty() ? clientAt(described.clientIndex).processId
                                           : described.processId;
    }
    /// Whether something that doesn't name its process has a client that is not described.
    bool lacksClients() const;
    const std::string& binaryOf(const Stream& stream) const {
        return stream.binary.empty() ? clientAt(stream.clientIndex).binary : stream.binary;
    }

    /// nullopt when the target is not there. A role that nobody has touched is at 100 %, and
    /// every role is stereo.
    std::optional<ObjectVolume> volumeOf(const Target& target) const;
    /// The device that a role's streams go to; empty when the server chooses.
    std::string rememberedDevice(const std::string& entryName) const;
    /// Whether the role's next stream gets what the server keeps for the role. Since 0.5 PipeWire's
    /// session manager does that for event sounds alone, and goes on keeping the others.
    bool givesEntryToStreams(const std::string& role) const;
    /// Whether a mixer of this project is connected that lasts, unlike the command-line tool.
    bool hasAnotherMixer() const;

 private:
    /// One that says nothing of itself when there is none.
    const Client& clientAt(std::uint32_t index) const;
};

/// The server's name for what it remembers of a role.
std::string roleEntryName(const std::string& role);
/// The role that an entry is for; nullopt for another thing's entry.
std::optional<std::string> roleOfEntry(const std::string& entryName);

/// The version in a server's name like "PulseAudio (on PipeWire 0.3.65)"; nullopt for another.
std::optional<Version> pipeWireVersion(const std::string& serverName);

}  // namespace pulse
