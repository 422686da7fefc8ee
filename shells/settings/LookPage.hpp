#pragma once

#include "platform/foundation/NSRunLoop.hpp"
#include "shells/settings/MixerPreview.hpp"
#include "shells/settings/Toolkit.hpp"
#include "shells/settings/files/SettingsFile.hpp"

#include <functional>
#include <vector>

namespace settings {

/// The page of the mixer's looks: skin, colours and percentages. Every change is written at once.
/// Pictures are painted when the page comes up, and again after changes while it is there. Main
/// thread.
class LookPage {
 public:
    /// `file` and `painter` outlive the page. `tell` tells the user why something was not done.
    LookPage(SettingsFile& file, MixerPreview& painter,
             std::function<void(const std::string& trouble)> tell);
    ~LookPage();
    LookPage(const LookPage&) = delete;
    LookPage& operator=(const LookPage&) = delete;

    GtkWidget* widget() const { return GTK_WIDGET(page_.get()); }
    /// Shows what the file holds now.
    void refresh();

 private:
    class ColorRow;
    struct Choice {
        GtkWidget* button = nullptr;
        GtkPicture* picture = nullptr;
    };

    Choice addChoice(GtkFlowBox* box, GtkWidget* button, const char* name);
    void addLooks(GtkFlowBox* box);
    void addSkins(GtkFlowBox* box);
    void addColors(AdwPreferencesGroup* group);
    void paintPictures();
    void set(const PropertyValue::Dictionary& entries);

    SettingsFile& file_;
    MixerPreview& painter_;
    std::function<void(const std::string&)> tell_;
    Ref<AdwPreferencesPage> page_;
    AdwPreferencesGroup* colors_ = nullptr;
    GtkSwitch* percentage_ = nullptr;
    std::vector<Choice> looks_;
    std::vector<Choice> skins_;
    std::vector<std::unique_ptr<ColorRow>> colorRows_;
    std::vector<MixerFiles> painted_;
    OneShotTimer refreshing_;
};

}  // namespace settings
