#pragma once

#include "backends/pulse/PulseContext.hpp"
#include "backends/pulse/ServerMirror.hpp"

#include <functional>
#include <optional>
#include <vector>

namespace pulse {

/// What one thing of the server is to become. What is not said stays as it is.
struct TargetWrite {
    Target target;
    std::optional<pa_cvolume> volume{};
    std::optional<Mute> mute{};
    // Of a role's entry, which is replaced as a whole:
    std::string rememberedDevice{};
    /// What those of the role's streams that play take over at once, described to us or not.
    enum class ToStreams { Nothing, MuteAlone, Everything };
    ToStreams toStreams = ToStreams::Nothing;
};

/// Sends them all. `written` comes when the server has answered the last one, with PA_OK or the
/// library's code for the first refusal; from inside when there is nothing to send. A stream that
/// has ended meanwhile counts as done.
void writeTargets(PulseContext& context, const std::vector<TargetWrite>& writes,
                  const std::function<void(int error)>& written);

}  // namespace pulse
