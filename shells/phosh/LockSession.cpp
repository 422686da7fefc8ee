#include "shells/phosh/LockSession.hpp"

#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UILabel.hpp"
#include "shells/common/Installation.hpp"
#include "shells/common/Translation.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/sound/SoundModule.hpp"

#include <dlfcn.h>
#include <glib.h>

#include <filesystem>
#include <utility>

namespace phosh {
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
    shell::findTranslations(programFolder());
    UILabel::setDefaultTextColor(UIColor::whiteColor());
    // This lock screen is made for phones.
    if (machineModel().empty()) setMachineModel("iPhone");
    const std::string preferences = variable("TARNWICK_PREFERENCES");
    if (!preferences.empty()) setPreferencesDirectory(preferences);
    return true;
}

// Milliseconds: what a local server that is busy needs at most.
constexpr guint arrivalTime = 500;

std::weak_ptr<LockSession>& current() {
    static std::weak_ptr<LockSession> session;
    return session;
}

}  // namespace

PluginSetting pluginSetting() {
    const std::string programs = programFolder();
    const std::string bundle = variable("TARNWICK_BUNDLE");
    std::vector<std::string> chosen;
    if (!bundle.empty()) chosen.push_back(bundle);
    return {shell::bundlePaths(chosen, programs),
            shell::modulePath(shell::soundServerModule, programs)};
}

void preparePlatform() {
    [[maybe_unused]] static const bool done = prepare();
}

std::shared_ptr<LockSession> LockSession::shared(const std::string& soundModule) {
    std::shared_ptr<LockSession> session = current().lock();
    if (!session) session = std::make_shared<LockSession>(soundModule);
    current() = session;
    return session;
}

void LockSession::release(std::shared_ptr<LockSession> session) {
    if (!session || !session->isWriting()) return;
    using Held = std::shared_ptr<LockSession>;
    const auto wait = +[](gpointer) -> gboolean { return G_SOURCE_REMOVE; };
    const auto end = +[](gpointer held) { std::unique_ptr<Held>(static_cast<Held*>(held)); };
    g_timeout_add_full(G_PRIORITY_DEFAULT, arrivalTime, wait,
                       std::make_unique<Held>(std::move(session)).release(), end);
}

LockSession::LockSession(const std::string& soundModule)
    : sound_(shell::SoundSource::Server, soundModule) {
    sound_.setChangeHandler([this] { tell(&LockSessionUser::serviceChanged); });
    sound_.setAvailabilityHandler([this] { tell(&LockSessionUser::volumesChanged); });
    sound_.setSilenceHandler([this] { tell(&LockSessionUser::silenceChanged); });
}

void LockSession::tell(void (LockSessionUser::*what)()) {
    const std::set<LockSessionUser*> users = users_;
    for (LockSessionUser* user : users)
        if (users_.contains(user)) (user->*what)();
}

}  // namespace phosh
