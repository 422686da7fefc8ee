#pragma once

#include "shells/settings/Toolkit.hpp"
#include "shells/settings/files/MixerFile.hpp"

#include <functional>
#include <optional>
#include <string>

namespace settings {

/// A card for a file that cannot be used: what is wrong and where, and the ways out of it. Hidden
/// while the file can be used. Main thread.
class FileTrouble {
 public:
    /// `file` outlives the card; `title` says which one it is. `tell` tells the user why something
    /// was not done.
    FileTrouble(MixerFile& file, const char* title,
                std::function<void(const std::string& trouble)> tell);
    FileTrouble(const FileTrouble&) = delete;
    FileTrouble& operator=(const FileTrouble&) = delete;

    GtkWidget* widget() const { return GTK_WIDGET(card_.get()); }
    void refresh();

 private:
    void openInEditor();

    MixerFile& file_;
    std::function<void(const std::string&)> tell_;
    Ref<AdwClamp> card_;
    GtkLabel* reason_ = nullptr;
    GtkWidget* copyPlace_ = nullptr;
    GtkButton* copyButton_ = nullptr;
    std::optional<KeptCopy> copy_;  ///< The newest one that can be used.
};

}  // namespace settings
