#include "shells/phosh/PluginSetting.hpp"

#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UILabel.hpp"
#include "shells/common/Backends.hpp"
#include "shells/common/BundleLocation.hpp"
#include "shells/sound/SoundServer.hpp"

#include <dlfcn.h>
#include <glib.h>

#include <filesystem>

namespace {

/// The folder that the programs lie in, beside which everything else is found.
std::string programFolder() {
    Dl_info self = {};
    if (dladdr(reinterpret_cast<const void*>(&pluginSetting), &self) == 0) return "";
    std::error_code error;
    const std::filesystem::path plugin = std::filesystem::canonical(self.dli_fname, error);
    if (error) return "";
    return (plugin.parent_path() / TARNWICK_PROGRAMS_FROM_PLUGIN).lexically_normal().string();
}

std::string variable(const char* name) {
    const char* value = g_getenv(name);
    return value ? value : "";
}

bool prepare() {
    shell::installBackends();
    UILabel::setDefaultTextColor(UIColor::whiteColor());
    // Who runs this lock screen and does not say what it is, is a phone.
    if (machineModel().empty()) setMachineModel("iPhone");
    const std::string preferences = variable("TARNWICK_PREFERENCES");
    if (!preferences.empty()) setPreferencesDirectory(preferences);
    return true;
}

}  // namespace

PluginSetting pluginSetting() {
    const std::string programs = programFolder();
    const std::string bundle = variable("TARNWICK_BUNDLE");
    std::vector<std::string> chosen;
    if (!bundle.empty()) chosen.push_back(bundle);
    return {shell::bundlePaths(chosen, programs), shell::modulePath(soundServerModule, programs)};
}

void preparePlatform() {
    [[maybe_unused]] static const bool done = prepare();
}
