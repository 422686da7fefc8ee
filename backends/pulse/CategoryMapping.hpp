#pragma once

#include "backends/pulse/ServerMirror.hpp"
#include "platform/foundation/NSString.hpp"

#include <optional>
#include <string>
#include <vector>

namespace pulse {

/// What a category's row shows.
struct CategoryState {
    std::optional<float> volume;  ///< What is heard, 0 to 1; nullopt when it cannot be read.
    NSString route;
    Level level{};  ///< Of what can be read.
    bool operator==(const CategoryState&) const = default;
};

/// Every category of the volume service that needs no scheme, whether or not a machine has what
/// it stands for.
const std::vector<std::string>& knownCategories();
/// Whether it is one of them, or a scheme with something behind it: "role:", "sink:", "source:"
/// or "app:".
bool isCategory(const NSString& category);

/// What the category's volume belongs to now; nullopt when that is not there. An object may be
/// answered that turns out to have no volume.
std::optional<VolumeObject> objectForCategory(const ServerMirror& mirror, const NSString& category);

/// A category that the object belongs to, by its scheme; of conferences their only one.
std::string categoryNaming(const VolumeObject& object);

/// What a row has to be told after its category went from one state to the other.
enum class Consequence {
    None,
    Volume,  ///< The volume notification: it became readable, or its volume or route changed.
    Reread,  ///< No notification says it: it can't be read any more, or its route alone changed.
};
Consequence consequenceOf(const CategoryState& before, const CategoryState& now);
/// The same where it may show anything now.
Consequence consequenceOfAnswering(const CategoryState& now);

}  // namespace pulse
