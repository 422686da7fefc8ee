#include "platform/foundation/MachineModel.hpp"

#include "platform/foundation/FileContents.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string_view>

namespace {

/// The kind of screen, as derived from the machine's chassis.
enum class ChassisKind { Handset, PortablePlayer, LargerScreen };

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

/// From the names that the host-name service and device trees use ("handset", "convertible");
/// nullopt for any other.
std::optional<ChassisKind> chassisOfName(std::string_view name) {
    constexpr std::array<std::string_view, 11> largerScreens = {
        "desktop", "all-in-one", "laptop", "convertible", "tablet",  "television",
        "server",  "spectacles", "vm",     "container",   "embedded"};
    if (name == "handset") return ChassisKind::Handset;
    if (name == "watch") return ChassisKind::PortablePlayer;
    const bool isLarger = std::ranges::find(largerScreens, name) != largerScreens.end();
    return isLarger ? std::optional(ChassisKind::LargerScreen) : std::nullopt;
}

/// From the number that the firmware's DMI table holds, as decimal text; nullopt for one that says
/// "other" or "unknown", or that no table defines.
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

/// From the lines of /etc/machine-info, NAME=VALUE with or without quotes. The last line of a name
/// counts.
std::optional<ChassisKind> chassisOfMachineInfo(std::string_view contents) {
    const auto kind = chassisOfName(valueInMachineInfo(contents, "CHASSIS"));
    const bool isPlayer =
        valueInMachineInfo(contents, "ICON_NAME").starts_with("multimedia-player");
    if (kind == ChassisKind::Handset && isPlayer) return ChassisKind::PortablePlayer;
    return kind;
}

/// Larger than any of the files, all of which hold a line or a few.
constexpr std::size_t maximumFileBytes = 65536;

std::string contentsBelow(const std::string& root, const char* path) {
    return contentsOfFile(root + "/" + path, maximumFileBytes).value_or("");
}

/// The text as it can stand in one line: device-tree texts end with a zero byte, DMI ones with a
/// line break, and firmware pads with blanks.
std::string tidied(std::string text) {
    std::erase_if(text, [](unsigned char c) { return c < 0x20 || c == 0x7F; });
    const auto start = text.find_first_not_of(' ');
    if (start == std::string::npos) return "";
    return text.substr(start, text.find_last_not_of(' ') - start + 1);
}

std::optional<ChassisKind> chassisBelow(const std::string& root) {
    const std::string info = contentsBelow(root, "etc/machine-info");
    const std::string dmi = tidied(contentsBelow(root, "sys/class/dmi/id/chassis_type"));
    const std::string tree = tidied(contentsBelow(root, "proc/device-tree/chassis-type"));
    std::optional<ChassisKind> kind = chassisOfMachineInfo(info);
    if (!kind) kind = chassisOfDmiType(dmi);
    if (!kind) kind = chassisOfName(tree);
    if (!kind && !dmi.empty()) kind = ChassisKind::LargerScreen;
    return kind;
}

std::string ownModelBelow(const std::string& root) {
    const std::string product = tidied(contentsBelow(root, "sys/class/dmi/id/product_name"));
    return product.empty() ? tidied(contentsBelow(root, "proc/device-tree/model")) : product;
}

const char* wordFor(ChassisKind kind) {
    switch (kind) {
        case ChassisKind::Handset:
            return "iPhone";
        case ChassisKind::PortablePlayer:
            return "iPod";
        case ChassisKind::LargerScreen:
            break;
    }
    return "iPad";
}

std::string& chosenModel() {
    static std::string model;
    return model;
}

}  // namespace

std::string machineModel() {
    static const std::string own = machineModelBelow("");
    return chosenModel().empty() ? own : chosenModel();
}

void setMachineModel(const std::string& model) {
    chosenModel() = model;
}

std::string machineModelBelow(const std::string& root) {
    const std::optional<ChassisKind> kind = chassisBelow(root);
    const std::string model = ownModelBelow(root);
    if (!kind && model.empty()) return "";
    const std::string word = wordFor(kind.value_or(ChassisKind::LargerScreen));
    return model.empty() ? word : word + "," + model;
}
