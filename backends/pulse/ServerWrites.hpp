#pragma once

#include "backends/pulse/PulseContext.hpp"
#include "backends/pulse/ServerMirror.hpp"

#include <functional>
#include <vector>

namespace pulse {

/// A volume for one thing of the server.
struct TargetWrite {
    Target target;
    pa_cvolume volume{};
    Mute muteBefore = Mute::Off;
    std::string rememberedDevice{};  ///< Of a role's entry, which is replaced as a whole.
};

/// Sends them all and unmutes what was muted. `written` comes when the server has answered the
/// last one, whatever it said; from inside when there is none.
void writeVolumes(PulseContext& context, const std::vector<TargetWrite>& writes,
                  const std::function<void()>& written);

}  // namespace pulse
