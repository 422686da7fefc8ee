#pragma once

#include "platform/foundation/NSRunLoop.hpp"
#include "shells/settings/Toolkit.hpp"
#include "shells/settings/files/Autostart.hpp"
#include "shells/settings/files/CategoriesFile.hpp"
#include "shells/settings/files/SettingsFile.hpp"

#include <functional>

namespace settings {

/// The page of what the mixer does and where it appears, and of both files as files. Every change
/// is written at once. Main thread.
class BehaviorPage {
 public:
    /// Both files outlive the page. `tell` tells the user why something was not done.
    BehaviorPage(SettingsFile& settings, CategoriesFile& categories,
                 std::function<void(const std::string& trouble)> tell);
    ~BehaviorPage();
    BehaviorPage(const BehaviorPage&) = delete;
    BehaviorPage& operator=(const BehaviorPage&) = delete;

    GtkWidget* widget() const { return GTK_WIDGET(page_.get()); }
    /// Shows what the files hold and what the desktop has now.
    void refresh();

 private:
    GtkSwitch* addSwitch(GtkBuilder* builder, const char* id, const std::function<bool()>& isOn,
                         const std::function<Trouble(bool on)>& set);
    void showLockScreen(GtkBuilder* builder);
    void addReset(GtkBuilder* builder, const char* id, MixerFile& file, const char* question);
    void showFiles();
    void tellOf(const Trouble& trouble);

    struct Switch {
        GtkSwitch* widget;
        std::function<bool()> isOn;
    };

    SettingsFile& settings_;
    CategoriesFile& categories_;
    std::function<void(const std::string&)> tell_;
    Autostart autostart_;
    Ref<AdwPreferencesPage> page_;
    Ref<GSettings> plugins_;  ///< Of the lock screen; nullptr without a shell that has one.
    std::vector<Switch> switches_;
    OneShotTimer refreshing_;
};

}  // namespace settings
