#pragma once

#include "backends/pulse/ServerMirror.hpp"
#include "platform/foundation/NSString.hpp"

#include <optional>

namespace pulse {

/// The name of the output that the category plays on: its device's, or that of its first stream,
/// else of the one that it would be sent to. For a source the input. A category other than those
/// of a named device has one always; nil for a named device that isn't there and for what is no
/// category.
NSString routeForCategory(const ServerMirror& mirror, const NSString& category);
/// The same where it is known what objectForCategory() answers for the category.
NSString routeForCategory(const ServerMirror& mirror, const NSString& category,
                          const std::optional<VolumeObject>& object);

}  // namespace pulse
