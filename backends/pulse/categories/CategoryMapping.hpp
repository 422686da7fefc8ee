#pragma once

#include "backends/pulse/categories/VolumeObject.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"
#include "platform/foundation/NSString.hpp"

#include <optional>
#include <string>
#include <vector>

namespace pulse {

/// What a row shows of its category.
struct CategoryState {
    std::optional<float> volume;  ///< As heard, 0 to 1; nullopt when it cannot be read.
    NSString route;
    Level level{};  ///< Valid only when volume has a value.
    bool operator==(const CategoryState&) const = default;
};

/// The six categories without a scheme, whether or not this machine has such a device.
const std::vector<std::string>& knownCategories();
/// Whether the name is one of these, or has one of the schemes "role:", "sink:", "source:" and
/// "app:" with something behind it.
bool isCategory(const NSString& category);

/// The object whose volume is the category's at the moment; nullopt when there is none. An
/// application or a role is an object even while nothing of it plays; levelOf() tells whether it
/// has a volume.
std::optional<VolumeObject> objectForCategory(const ServerMirror& mirror, const NSString& category);

/// A category with a scheme that names the object; for conferences, their only category.
std::string categoryNaming(const VolumeObject& object);

/// What to announce when a category changes from one state to another.
enum class Consequence {
    None,
    Volume,  ///< The volume notification: it became readable, or its volume or route changed.
    Reread,  ///< No notification can: it became unreadable, or only its route changed.
};
Consequence consequenceOf(const CategoryState& before, const CategoryState& now);
/// The same when the row may show any earlier state.
Consequence consequenceOfAnswering(const CategoryState& now);

}  // namespace pulse
