#pragma once

#include "platform/foundation/PropertyValue.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "shells/panel/PanelView.hpp"
#include "shells/panel/PanelWidget.hpp"
#include "shells/settings/Toolkit.hpp"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace settings {

/// What both files of the mixer hold.
struct MixerFiles {
    PropertyValue settings;
    PropertyValue categories;
    bool operator==(const MixerFiles&) const = default;
};

/// The mixer itself in a widget of the toolkit, on the simulated device: its sliders can be moved,
/// and move nothing real. It reads files of its own in a temporary folder, so whatever the widget
/// does with them, the user's stay as they are.
///
///     MixerPreview preview;
///     gtk_box_append(box, preview.widget());
///     preview.show(contents);
///
/// Points the process's preferences directory to that folder. Main thread, one at a time.
class MixerPreview {
 public:
    MixerPreview();
    ~MixerPreview();
    MixerPreview(const MixerPreview&) = delete;
    MixerPreview& operator=(const MixerPreview&) = delete;

    /// Valid as long as this object; to be put into a window once.
    GtkWidget* widget() const { return area_.get(); }

    /// Assembles the mixer anew from those files; nothing happens if it shows them already.
    void show(const MixerFiles& files);
    /// The tallest that it gets, in points; the mixer scrolls where it has more rows.
    void setTallest(int height);

    /// Paints a mixer for each of those files, on its panel: still pictures, `width` points wide,
    /// each point `scale` pixels. nullptr for one that cannot be painted. What this shows stays.
    std::vector<Ref<GdkTexture>> pictures(std::span<const MixerFiles> each, int width, int scale);

 private:
    void assemble();
    void layout();
    void draw(cairo_t* context, int width, int height);
    void frame();
    void requestFrame();
    void takeInput();

    std::string folder_;
    Ref<GtkWidget> area_;
    std::unique_ptr<shell::PanelWidget> mixer_;
    std::shared_ptr<shell::PanelView> panel_;
    std::shared_ptr<UIWindow> content_;
    MixerFiles shown_;
    int tallest_ = 0;
    guint tick_ = 0;  ///< The callback for the next frame; 0 for none.
    CGPoint dragStart_;
    CGPoint pointer_;
};

}  // namespace settings
