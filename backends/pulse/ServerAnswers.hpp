#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <pulse/ext-stream-restore.h>
#include <pulse/introspect.h>

namespace pulse {

/// What the mirror keeps of the library's descriptions. Missing texts become empty.
Sink copyOf(const pa_sink_info& info);
RoleEntry copyOf(const pa_ext_stream_restore_info& info);

}  // namespace pulse
