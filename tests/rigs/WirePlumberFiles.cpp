#include "tests/rigs/WirePlumberFiles.hpp"

#include "tests/processes/RunningProgram.hpp"

namespace rigs {
namespace {

// Everything that the session manager does to devices by default, except for their volumes.
constexpr const char* deviceDefaultsText =
    "device_defaults.enabled = false\n"
    "load_module('default-nodes', device_defaults.properties)\n"
    "load_script('policy-device-profile.lua',"
    " { persistent = device_defaults.persistent_profiles })\n"
    "load_module('default-profile')\n";

std::string readinessScript(const std::string& readyText) {
    return "memory = ObjectManager { Interest { type = 'metadata',"
           " Constraint { 'metadata.name', '=', 'route-settings' } } }\n"
           "memory:connect('object-added', function() Log.warning('" +
           readyText +
           "') end)\n"
           "memory:activate()\n";
}

// It ends without a session bus if one of these wants it.
void writeScripts(const ServerFolder& folder, Bluetooth bluetooth, const std::string& readyText) {
    folder.write("config/wireplumber/main.lua.d/80-rig.lua",
                 "alsa_monitor.enabled = false\n"
                 "v4l2_monitor.enabled = false\n"
                 "if libcamera_monitor then libcamera_monitor.enabled = false end\n"
                 "default_access.properties[\"enable-flatpak-portal\"] = false\n"
                 "load_script('rig.lua')\n");
    folder.write("config/wireplumber/scripts/rig.lua", readinessScript(readyText));
    const bool on = bluetooth == Bluetooth::On;
    if (on) folder.write("config/wireplumber/main.lua.d/81-volumes.lua", deviceDefaultsText);
    folder.write("config/wireplumber/bluetooth.lua.d/80-rig.lua",
                 std::string("bluez_monitor.enabled = ") + (on ? "true" : "false") +
                     "\nbluez_monitor.properties[\"with-logind\"] = false\n"
                     "bluez_midi_monitor = nil\n");
}

// Features that need hardware, a session bus or a seat, and what stands on them.
constexpr const char* absentFeatures =
    "    monitor.alsa = disabled\n"
    "    monitor.alsa.reserve-device = disabled\n"
    "    monitor.alsa-midi = disabled\n"
    "    monitor.bluez-midi = disabled\n"
    "    monitor.bluez.seat-monitoring = disabled\n"
    "    hardware.video-capture = disabled\n"
    "    script.client.access-portal = disabled\n"
    "    support.logind = disabled\n"
    "    support.portal-permissionstore = disabled\n"
    "    support.reserve-device = disabled\n";

void writeProfile(const ServerFolder& folder, Bluetooth bluetooth, const std::string& readyText) {
    const std::string ofBluetooth = bluetooth == Bluetooth::On
                                        ? "    hooks.device.routes.state = disabled\n"
                                        : "    monitor.bluez = disabled\n";
    folder.write("config/wireplumber/wireplumber.conf.d/80-rig.conf",
                 "wireplumber.profiles = {\n  main = {\n" + std::string(absentFeatures) +
                     ofBluetooth +
                     "    rig.ready = required\n  }\n}\n"
                     "wireplumber.components = [\n"
                     "  { name = rig.lua, type = script/lua, provides = rig.ready,"
                     " requires = [ support.lua-scripting ] }\n]\n");
    folder.write("data/wireplumber/scripts/rig.lua", readinessScript(readyText));
}

}  // namespace

bool isWirePlumberScripted() {
    static const bool isScripted =
        test::outputOf({"wireplumber", "--version"}, {}).find("libwireplumber 0.4.") !=
        std::string::npos;
    return isScripted;
}

void writeWirePlumberFiles(const ServerFolder& folder, Bluetooth bluetooth,
                           const std::string& readyText) {
    // Each series refuses to start beside the other one's files.
    (isWirePlumberScripted() ? writeScripts : writeProfile)(folder, bluetooth, readyText);
}

std::string wirePlumberStreamStateFile() {
    return isWirePlumberScripted() ? "state/wireplumber/restore-stream"
                                   : "state/wireplumber/stream-properties";
}

}  // namespace rigs
