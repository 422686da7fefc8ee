#pragma once

#include "backends/pulse/categories/VolumeObject.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"
#include "platform/foundation/NSString.hpp"

#include <optional>
#include <string>

namespace pulse {

/// The name that captions show for an output. The built-in speaker's begins with "Speaker", which
/// enables the binding of ringer and media; a device without a description counts as the speaker.
std::string routeOfDevice(const Device& sink);
/// The same for an input; one without a description is a "Microphone".
std::string routeOfInput(const Device& source);

bool isBluetooth(const Device& device);

/// The name of the output that the category plays on: its device's, else that of its first stream,
/// else the one that its streams would go to; for a source, the name of the input. nil for a device
/// that does not exist and for an unknown category.
NSString routeForCategory(const ServerMirror& mirror, const NSString& category);
/// The same, given what objectForCategory() returns for the category.
NSString routeForCategory(const ServerMirror& mirror, const NSString& category,
                          const std::optional<VolumeObject>& object);

}  // namespace pulse
