#pragma once

#include "platform/celestial/SoundInventory.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "shells/settings/MixerPreview.hpp"
#include "shells/settings/Toolkit.hpp"
#include "shells/settings/files/CategoriesFile.hpp"
#include "shells/settings/files/SettingsFile.hpp"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace settings {

class BehaviorPage;
class FileTrouble;
class LookPage;
class RowsPage;

/// The window with the mixer's preview on top and the pages below it. Main thread.
class SettingsWindow {
 public:
    static constexpr std::array pageNames{"rows", "look", "behavior"};

    explicit SettingsWindow(GtkApplication* application);
    ~SettingsWindow();
    SettingsWindow(const SettingsWindow&) = delete;
    SettingsWindow& operator=(const SettingsWindow&) = delete;

    AdwApplicationWindow* widget() const { return window_.get(); }
    /// One of pageNames.
    void showPage(const std::string& name);
    void present();

 private:
    void addPage(GtkWidget* page, const char* name, const char* title, const char* icon);
    void filesChanged();
    void resized();
    void openInventory();
    void addRow();
    void tell(const std::string& trouble);
    void offerUndo(const std::string& removed, std::function<void()> undo);

    CategoriesFile categories_;
    SettingsFile settings_;
    MixerPreview preview_;
    std::shared_ptr<SoundInventory> inventory_;  ///< nullptr before it was opened.
    OneShotTimer opening_;
    OneShotTimer refreshing_;
    Ref<AdwApplicationWindow> window_;  ///< Destroyed by the toolkit when it is closed.
    AdwViewStack* pages_ = nullptr;
    AdwToastOverlay* toasts_ = nullptr;
    std::vector<std::unique_ptr<FileTrouble>> troubles_;
    std::unique_ptr<RowsPage> rows_;
    std::unique_ptr<LookPage> look_;
    std::unique_ptr<BehaviorPage> behavior_;
};

}  // namespace settings
