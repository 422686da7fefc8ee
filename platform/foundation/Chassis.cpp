#include "platform/foundation/Chassis.hpp"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr const char* blanks = " \t\r";
    const auto start = text.find_first_not_of(blanks);
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(blanks) - start + 1);
}

std::string_view unquoted(std::string_view text) {
    const bool isQuoted = text.size() >= 2 && text.front() == text.back() &&
                          (text.front() == '"' || text.front() == '\'');
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

/// Empty when no line assigns the name.
std::string_view valueInMachineInfo(std::string_view contents, std::string_view name) {
    std::string_view value;
    while (!contents.empty()) {
        const auto end = contents.find('\n');
        const std::string_view line = trimmed(contents.substr(0, end));
        if (line.starts_with(name) && line.substr(name.size()).starts_with('=')) {
            value = unquoted(trimmed(line.substr(name.size() + 1)));
        }
        contents.remove_prefix(end == std::string_view::npos ? contents.size() : end + 1);
    }
    return value;
}

}  // namespace

std::optional<ChassisKind> chassisOfName(std::string_view name) {
    constexpr std::array<std::string_view, 11> largerScreens = {
        "desktop", "all-in-one", "laptop", "convertible", "tablet",  "television",
        "server",  "spectacles", "vm",     "container",   "embedded"};
    if (name == "handset") return ChassisKind::Handset;
    if (name == "watch") return ChassisKind::PortablePlayer;
    const bool isLarger = std::ranges::find(largerScreens, name) != largerScreens.end();
    return isLarger ? std::optional(ChassisKind::LargerScreen) : std::nullopt;
}

std::optional<ChassisKind> chassisOfDmiType(std::string_view number) {
    constexpr int firstKnown = 3;  // A desktop; 1 is "other", 2 is "unknown".
    constexpr int handHeld = 11;
    constexpr int lastKnown = 36;  // A computer in the form of a stick.
    int type = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), type);
    const bool isNumber = result.ec == std::errc() && result.ptr == number.data() + number.size();
    if (!isNumber || type < firstKnown || type > lastKnown) return std::nullopt;
    return type == handHeld ? ChassisKind::Handset : ChassisKind::LargerScreen;
}

std::optional<ChassisKind> chassisOfMachineInfo(std::string_view contents) {
    const auto kind = chassisOfName(valueInMachineInfo(contents, "CHASSIS"));
    const bool isPlayer =
        valueInMachineInfo(contents, "ICON_NAME").starts_with("multimedia-player");
    if (kind == ChassisKind::Handset && isPlayer) return ChassisKind::PortablePlayer;
    return kind;
}
