#pragma once

#include "platform/celestial/AVSystemController.hpp"

#include <pulse/def.h>
#include <pulse/volume.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace pulse {

using Mute = AVSystemController::Mute;
using Level = AVSystemController::Level;

/// The server's volume for a fraction, which is clamped to 0 to 1; NaN counts as 0. The scale is
/// linear, as in the percentages of every desktop mixer.
pa_volume_t rawFromFraction(float fraction);
/// The fraction for the server's volume; 1 for anything above 100 %.
float fractionFromRaw(pa_volume_t raw);

/// The level of a device or a stream, taken from its loudest channel.
Level levelFrom(const pa_cvolume& volume, Mute mute);

/// Whether two fractions are the same volume of a role: PipeWire stores six decimals of a role's
/// linear loudness, which is the cube of the volume.
bool isSameForRole(float one, float other);

/// A sink or a source as the server describes it. Members that the server does not provide are
/// empty. Indexes connect the parts of one mirror and must not be kept beyond it.
struct Device {
    std::string name{};
    std::string description{};  ///< The name for people.
    std::string iconName{};
    pa_cvolume volume{};
    Mute mute = Mute::Off;
    /// The type of the active port: a pa_device_port_type_t, or a number of a newer server.
    int portType = PA_DEVICE_PORT_TYPE_UNKNOWN;
    std::string formFactor{};
    std::string bus{};
    std::string bluetoothProfile{};  ///< As the server spells it, with "_" or "-".
    std::vector<std::string> intendedRoles{};
    std::string masterDevice{};  ///< Of a virtual device: the name of the one behind it.
    std::string linkGroup{};     ///< Shared with the stream through which it plays.
    bool isSuspended = false;
    bool isOfCard = true;      ///< False for a device that exists only in software.
    bool isOurOutput = false;  ///< A sink for a role that this project made.
    bool isMonitor = false;    ///< A source that records what a sink plays.
    std::uint32_t ownerModule = PA_INVALID_INDEX;  ///< The module that made it.
    std::uint32_t index = PA_INVALID_INDEX;
};

/// The property that marks the sinks for roles that this project makes.
inline constexpr const char* ourOutputProperty = "tarnwick.output";

/// The application name by which the server knows every program of this project that sets volumes.
inline constexpr const char* ourApplicationName = "Tarnwick";
/// The one of a connection that only reads the inventory, and so is no mixer.
inline constexpr const char* inventoryApplicationName = "Tarnwick Settings";

/// A program that is connected to the server, directly or through another sound library.
struct Client {
    std::string processId{};
    std::string binary{};
    std::string name{};
    std::string version{};  ///< The program's own.
};

/// A stream that plays.
struct SinkInput {
    std::uint32_t index = PA_INVALID_INDEX;
    std::uint32_t sinkIndex = PA_INVALID_INDEX;
    pa_cvolume volume{};
    Mute mute = Mute::Off;
    bool hasVolume = true;  ///< False if the server allows no change.
    std::string role{};
    std::string applicationName{};
    std::string applicationId{};
    std::string binary{};
    std::string iconName{};
    std::string processId{};
    std::string nodeName{};
    std::string linkGroup{};
    std::uint32_t clientIndex = PA_INVALID_INDEX;
    std::uint32_t ownerModule = PA_INVALID_INDEX;  ///< The module that made it.
};

/// A stream that records.
struct SourceOutput {
    std::string processId{};
    std::uint32_t clientIndex = PA_INVALID_INDEX;
};

/// The server's stored settings for the next stream of a role or an application (an entry of
/// module-stream-restore).
struct RestoreEntry {
    pa_cvolume volume{};
    Mute mute = Mute::Off;
    std::string device{};
};

/// The target of one request: a sink, a source, a stream or an entry. A VolumeObject consists of
/// any number of targets.
struct Target {
    enum class Kind { Sink, Source, RestoreEntry, SinkInput };
    Kind kind = Kind::Sink;
    std::string name{};                ///< A device's or an entry's name.
    std::uint32_t sinkInputIndex = 0;  ///< A stream's index; it has no name.
    bool operator==(const Target&) const = default;
    bool operator<(const Target& other) const {
        return std::tie(kind, name, sinkInputIndex) <
               std::tie(other.kind, other.name, other.sinkInputIndex);
    }
};

/// A target's current volume and mute.
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
    /// Whether changes of restore entries are announced; PipeWire does so from 1.2 on.
    bool announcesRestoreEntries() const { return !pipeWire || !(*pipeWire < Version{1, 2, 0}); }
};

using DeviceMap = std::map<std::string, Device>;    ///< By name.
using ClientMap = std::map<std::uint32_t, Client>;  ///< By index.
using SinkInputList = std::vector<SinkInput>;
using SourceOutputList = std::vector<SourceOutput>;
using RestoreEntryMap = std::map<std::string, RestoreEntry>;  ///< By the server's names for them.

/// A copy of the server's state: plain data, kept up to date by a MirrorReader. What a category
/// stands for, its route and the writes that it needs are pure functions of a mirror, so tests can
/// fill one by hand:
///
///     ServerMirror mirror;
///     mirror.server.defaultSinkName = "spk";
///     mirror.sinks["spk"] = {.name = "spk", .index = 1};
///     objectForCategory(mirror, "Audio/Video");  // {VolumeObject::Kind::Sink, "spk"}
struct ServerMirror {
    ServerInfo server;
    DeviceMap sinks;
    DeviceMap sources;
    ClientMap clients;
    SinkInputList sinkInputs;
    SourceOutputList sourceOutputs;
    std::optional<RestoreEntryMap> restoreEntries;  ///< nullopt if the server has none.

    /// The default sink; nullptr if it is not a real one, or has not been read yet.
    const Device* defaultSink() const;
    /// nullptr if there is none with that name.
    const Device* sinkNamed(const std::string& name) const;
    const Device* sourceNamed(const std::string& name) const;
    /// nullptr if it has not been read yet.
    const Device* sinkOf(const SinkInput& stream) const;
    const SinkInput* sinkInputAt(std::uint32_t index) const;
    /// The process id of a sink input or source output, by its own properties or its client's;
    /// empty if neither has it.
    template <class Described>
    const std::string& processOf(const Described& described) const {
        return described.processId.empty() ? clientAt(described.clientIndex).processId
                                           : described.processId;
    }
    /// Whether a stream without a process id belongs to a client that has not been read.
    bool lacksClients() const;
    const std::string& binaryOf(const SinkInput& stream) const {
        return stream.binary.empty() ? clientAt(stream.clientIndex).binary : stream.binary;
    }

    /// nullopt if the target does not exist. A role's entry always exists if the server has any: at
    /// 100 % until it is set, and stereo.
    std::optional<ObjectVolume> volumeOf(const Target& target) const;
    /// The device that a role's streams are sent to; empty if the server chooses.
    std::string rememberedDevice(const std::string& entryName) const;
    /// Whether the role's next stream gets the level in the role's entry. From 0.5 on, WirePlumber
    /// does that only for event sounds, although it stores the others.
    bool givesEntryToStreams(const std::string& role) const;
    /// Whether the session manager reads a sink's intended roles as an array; WirePlumber does from
    /// 0.5 on, and wants words separated by blanks before.
    bool readsRolesAsArray() const { return !(sessionManager() < Version{0, 5, 0}); }
    /// Whether a running mixer of this project is connected, not counting the command-line tool.
    bool hasAnotherMixer() const;

 private:
    /// An empty client if there is none.
    const Client& clientAt(std::uint32_t index) const;
    /// WirePlumber's version; 0 without one.
    Version sessionManager() const;
};

/// Whether it is the name of a default sink that a server reports when there is no device: none, a
/// placeholder, or a null sink.
bool isPlaceholder(const std::string& sinkName);

/// The name of a role's restore entry.
std::string roleEntryName(const std::string& role);
/// The role that an entry belongs to; nullopt for other entries.
std::optional<std::string> roleOfEntry(const std::string& entryName);
/// The name of an application's restore entry.
std::string applicationEntryName(const std::string& application);
/// The application's name or id that an entry belongs to; nullopt for other entries.
std::optional<std::string> applicationOfEntry(const std::string& entryName);

/// The version in a server name like "PulseAudio (on PipeWire 0.3.65)"; nullopt for other names.
std::optional<Version> pipeWireVersion(const std::string& serverName);

}  // namespace pulse
