#pragma once

#include "backends/glib/GLibRunLoop.hpp"
#include "shells/common/Options.hpp"
#include "shells/settings/Toolkit.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace settings {

inline constexpr const char* settingsApplicationId = "org.tarnwick.Settings";

/// The choices on the settings program's command line.
struct SettingsOptions {
    shell::CommonOptions common;
    std::optional<std::string> page;  ///< "rows", "look" or "behavior".
};

/// The program's options; they write into `target`, which must outlive them.
std::vector<shell::Option> settingsOptions(SettingsOptions& target);

class SettingsWindow;

/// The program: one window for a session's files. A second start shows the first one's window,
/// unless it names files of its own.
class SettingsApplication {
 public:
    explicit SettingsApplication(const SettingsOptions& options);
    ~SettingsApplication();
    SettingsApplication(const SettingsApplication&) = delete;
    SettingsApplication& operator=(const SettingsApplication&) = delete;

    /// Returns the exit status when the window was closed.
    int run();

 private:
    void addAction(const char* name, const char* accelerator, void (SettingsApplication::*act)());
    void activate();
    void showHelp();
    void showAbout();
    void quit();

    const SettingsOptions& options_;
    glib::GLibRunLoop runLoop_;
    Ref<AdwApplication> application_;
    std::unique_ptr<SettingsWindow> window_;
};

}  // namespace settings
