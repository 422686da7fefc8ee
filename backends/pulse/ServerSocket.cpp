#include "backends/pulse/ServerSocket.hpp"

#include <cstdlib>
#include <sstream>
#include <string>

namespace pulse {
namespace {

NSString environment(const char* name) {
    const char* value = std::getenv(name);
    return value && *value ? NSString(value) : std::nullopt;
}

// "{machine}unix:/path" or "/path"; the rest lead to other machines.
std::optional<std::filesystem::path> socketIn(std::string address) {
    if (address.starts_with('{')) address.erase(0, address.find('}') + 1);
    static const std::string scheme = "unix:";
    if (address.starts_with(scheme)) address.erase(0, scheme.size());
    if (!address.starts_with('/')) return std::nullopt;
    return address;
}

std::optional<std::filesystem::path> sessionSocket() {
    if (const NSString folder = environment("PULSE_RUNTIME_PATH"))
        return std::filesystem::path(*folder) / "native";
    if (const NSString folder = environment("XDG_RUNTIME_DIR"))
        return std::filesystem::path(*folder) / "pulse" / "native";
    return std::nullopt;
}

}  // namespace

std::optional<std::filesystem::path> serverSocket(const NSString& server) {
    const NSString addresses = server ? server : environment("PULSE_SERVER");
    if (!addresses) return sessionSocket();
    std::istringstream words(*addresses);
    for (std::string address; words >> address;)
        if (auto socket = socketIn(address)) return socket;
    return std::nullopt;
}

}  // namespace pulse
