#pragma once

#include "platform/uikit/UISlider.hpp"

#include <gtk/gtk.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace test {

/// Loads the plugin as the shell does, once for this program, and answers the type of its widget.
GType pluginsWidget();

/// A lock screen of the toolkit's alone, which makes the plugin's widget as the shell does: one of
/// several pages that lie side by side, the others empty. It ends with this object, as by
/// unlocking. Needs a display. The loop runs where a call waits.
class LockedScreen {
 public:
    /// Points.
    explicit LockedScreen(int width = 360, int height = 600);
    ~LockedScreen();
    LockedScreen(const LockedScreen&) = delete;
    LockedScreen& operator=(const LockedScreen&) = delete;

    /// Shows the screen, at once with the plugin's page or with an empty one.
    void showAtMixer() { show(0); }
    void showBesideMixer() { show(1); }
    /// Turns to the page that lies to the right of the plugin's, or back.
    void turnAway();
    void turnBack();
    /// Hides the plugin's page for good, as when another part of the shell covers it.
    void hide();
    void resize(int width, int height);

    GtkWidget* widget() const { return widget_; }
    /// Whether the page has got its size.
    bool isLaidOut() const;
    /// How many events of that kind nobody took before they came to the lock screen itself.
    std::size_t passedOn(GdkEventType type) const;

    /// A finger on the page, with or without the pointer's emulation, in points of the page.
    void touch(GdkEventType type, double x, double y, int finger = 1);
    /// The pointer.
    void pointer(GdkEventType type, double x, double y);

 private:
    void show(int page);
    void place();
    void send(GdkEvent* event, double x, double y);
    static gboolean keep(GtkWidget* widget, GdkEvent* event, gpointer screen);

    int width_;
    int height_;
    int page_ = 0;
    GtkWidget* window_ = nullptr;
    GtkWidget* pages_ = nullptr;
    GtkWidget* widget_ = nullptr;
    std::vector<GdkEventType> passed_;
};

}  // namespace test
