#pragma once

#include "backends/pulse/outputs/OutputsJournal.hpp"
#include "backends/pulse/outputs/RoleSinks.hpp"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace pulse {

/// One change of the server or of the journal. Each may be repeated without harm.
namespace step {
struct Remember {
    OutputsJournal journal;
};
struct Load {
    const RoleSink* sink;
    std::string real;
};
struct Wake {
    std::string sink;
};
struct SetVolume {
    Target target;
    pa_cvolume volume;
};
struct SetMute {
    Target target;
    Mute mute;
};
struct WriteEntry {
    std::string role;
    RestoreEntry entry;
};
struct SetDefault {
    std::string sink;
};
struct Move {
    std::uint32_t sinkInputIndex;
    std::string sink;
};
struct Unload {
    std::uint32_t module;
};
/// Asks whether PulseAudio sends streams to outputs by their role.
struct AskForRouting {};
/// Waits until the session manager has linked everything anew after another default.
struct Settle {
    static constexpr double seconds = 0.06;
};
}  // namespace step
using OutputStep = std::variant<step::Remember, step::Load, step::Wake, step::SetVolume,
                                step::SetMute, step::WriteEntry, step::SetDefault, step::Move,
                                step::Unload, step::AskForRouting, step::Settle>;
using OutputSteps = std::vector<OutputStep>;

/// A line for the log.
std::string describe(const OutputStep& step);

}  // namespace pulse
