#include "config/DeviceKind.hpp"

#include "platform/foundation/MachineModel.hpp"

#include <string>

DeviceKind currentDeviceKind() {
    const std::string model = machineModel();
    if (model.starts_with("iPad")) return {.isIpad = true};
    return {.isIpod = model.starts_with("iPod")};
}
