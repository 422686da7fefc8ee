#include "shells/settings/SettingsApplication.hpp"

#include "platform/foundation/MachineModel.hpp"
#include "shells/common/Installation.hpp"
#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"
#include "shells/settings/SettingsWindow.hpp"

#include <glib-unix.h>

#include <array>
#include <csignal>
#include <cstdlib>

namespace settings {
namespace {

/// The manual's page about the files, in whatever the desktop opens manuals with.
constexpr const char* helpAddress = "man:tarnwick(5)";

}  // namespace

std::vector<shell::Option> settingsOptions(SettingsOptions& target) {
    std::vector<shell::Option> options = shell::commonOptions(target.common);
    options.push_back({"--page", "PAGE",
                       shell::translatable("the page to begin with: rows, look or behavior"),
                       [&target](const std::string& value) -> shell::Problem {
                           for (const char* page : SettingsWindow::pageNames)
                               if (value == page) {
                                   target.page = value;
                                   return std::nullopt;
                               }
                           return shell::filled(shell::translated("there is no page \"{page}\""),
                                                {{"page", value}});
                       }});
    return options;
}

SettingsApplication::SettingsApplication(const SettingsOptions& options) : options_(options) {
    // A machine with a desktop that does not report its form is treated as one with a large screen.
    if (machineModel().empty()) setMachineModel("iPad");
    const bool ownFiles = options.common.preferences.has_value();
    application_.reset(adw_application_new(
        settingsApplicationId, ownFiles ? G_APPLICATION_NON_UNIQUE : G_APPLICATION_DEFAULT_FLAGS));
    onSignal(application_.get(), "activate", [this] { activate(); });
    addAction("help", "F1", &SettingsApplication::showHelp);
    addAction("about", nullptr, &SettingsApplication::showAbout);
    addAction("quit", "<Ctrl>q", &SettingsApplication::quit);
    for (const auto& [action, key] : {std::array{"window.close", "<Ctrl>w"},
                                      std::array{"win.show-help-overlay", "<Ctrl>question"},
                                      std::array{"win.add-row", "<Ctrl>n"}}) {
        const std::array<const char*, 2> keys{key, nullptr};
        gtk_application_set_accels_for_action(GTK_APPLICATION(application_.get()), action,
                                              keys.data());
    }
}

SettingsApplication::~SettingsApplication() = default;

void SettingsApplication::addAction(const char* name, const char* accelerator,
                                    void (SettingsApplication::*act)()) {
    const Ref<GSimpleAction> action(g_simple_action_new(name, nullptr));
    onSignal(action.get(), "activate", [this, act] { (this->*act)(); });
    g_action_map_add_action(G_ACTION_MAP(application_.get()), G_ACTION(action.get()));
    if (!accelerator) return;
    const std::array<const char*, 2> keys{accelerator, nullptr};
    gtk_application_set_accels_for_action(GTK_APPLICATION(application_.get()),
                                          (std::string("app.") + name).c_str(), keys.data());
}

int SettingsApplication::run() {
    g_set_prgname(settingsApplicationId);
    g_set_application_name(shell::applicationName);
    gtk_disable_setlocale();  // The program has chosen what it takes of the locale.
    if (gtk_init_check() == FALSE)
        return shell::complain(EXIT_FAILURE, shell::translated("there is no display"));
    // An end from outside is a proper one too: what is kept in temporary files goes.
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
        g_unix_signal_add(
            signal,
            [](gpointer self) {
                static_cast<SettingsApplication*>(self)->quit();
                return gboolean{G_SOURCE_CONTINUE};
            },
            this);
    const int status = g_application_run(G_APPLICATION(application_.get()), 0, nullptr);
    window_.reset();
    return status;
}

void SettingsApplication::activate() {
    if (!window_) window_ = std::make_unique<SettingsWindow>(GTK_APPLICATION(application_.get()));
    if (options_.page) window_->showPage(*options_.page);
    window_->present();
}

void SettingsApplication::showHelp() {
    gtk_show_uri(window_ ? GTK_WINDOW(window_->widget()) : nullptr, helpAddress, GDK_CURRENT_TIME);
}

void SettingsApplication::showAbout() {
    adw_show_about_window(GTK_WINDOW(window_->widget()), "application-name", shell::applicationName,
                          "application-icon", shell::applicationId, "license-type",
                          GTK_LICENSE_GPL_3_0, "comments",
                          shell::translated("A volume for each kind of sound"), nullptr);
}

void SettingsApplication::quit() {
    if (window_) gtk_window_close(GTK_WINDOW(window_->widget()));
}

}  // namespace settings
