#include "platform/foundation/MachineModel.hpp"

#include "platform/foundation/Chassis.hpp"
#include "platform/foundation/FileContents.hpp"

#include <algorithm>
#include <optional>
#include <string_view>

namespace {

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
