#pragma once

#include "backends/gdk/AccessibilityLoader.hpp"
#include "backends/gdk/GdkEvents.hpp"
#include "backends/gdk/GdkViewHost.hpp"
#include "shells/desktop/WindowPlace.hpp"
#include "shells/panel/PanelContent.hpp"
#include "shells/panel/PanelView.hpp"

#include <functional>
#include <memory>

/// A widget in a borderless window of its own. Showing the window presents the widget, closing it
/// (Escape, or the window manager) dismisses it, and it can be shown again. Main thread.
class DesktopWindow {
 public:
    /// All three must outlive the window. `accessibilityModule` is the file that is loaded where
    /// assistive technology is in use; empty for none.
    DesktopWindow(GdkDisplay* display, GdkEvents& events, PanelWidget& widget,
                  std::string accessibilityModule);
    ~DesktopWindow();
    DesktopWindow(const DesktopWindow&) = delete;
    DesktopWindow& operator=(const DesktopWindow&) = delete;

    /// Does nothing while it is shown. Without a place, as a window among others.
    void show();
    void show(std::unique_ptr<WindowPlace> place);
    void close();
    bool isShown() const { return widget_.isPresented(); }
    /// Called after the window was closed, by whomever. It may destroy the window.
    void setCloseHandler(std::function<void()> handler) { closeHandler_ = std::move(handler); }
    /// A quiet text below the widget, of one line or more; nil for none.
    void setNotice(const NSString& text);
    /// PNG files of an icon in several sizes, for a window among others; read after its first
    /// frame.
    void setIcon(std::vector<std::string> files);
    /// Called once, when the first frame has been painted and handed to the window system.
    void setFirstFrameHandler(std::function<void()> handler) {
        firstFrameHandler_ = std::move(handler);
    }
    /// Called after the first frame of each showing, in the same way.
    void setShownHandler(std::function<void()> handler) { shownHandler_ = std::move(handler); }

    /// Another one each time the window is shown; none before the first time.
    GdkViewHost& host() { return *host_; }
    const std::shared_ptr<UIWindow>& content() const { return content_; }

 private:
    struct WindowEnd {
        void operator()(GdkWindow* window) const { gdk_window_destroy(window); }
    };

    void makeWindow();
    void dropWindow();
    void framePainted();
    /// Of each window.
    void afterFirstFrame();
    void showIcon();
    void watchForAccessibility();
    void tellOfFrames();
    void handleEvent(const GdkEvent& event);
    void handleOtherEvent(const GdkEvent& event);
    void screenChanged();
    void readDesktopSettings();
    bool handleKey(const GdkEventKey& event);
    void handleMuteKey(const GdkEventKey& event);
    void windowHasSize(const CGSize& size);
    /// What of the screen the panel may take, in its points.
    CGSize roomForPanel() const;
    void followScreen();
    PanelLayout wantedLayout();
    /// Follows the widget's size and the screen.
    void layout();
    /// The same, from outside of show(): the screen may tell of a change while the window is made.
    void layoutIfShown() {
        if (isShown() && window_) layout();
    }
    void applyLayout(const PanelLayout& layout);
    void beginMove();
    void showFocus();

    GdkDisplay* display_;
    GdkScreen* screen_;
    GdkEvents& events_;
    PanelWidget& widget_;
    std::unique_ptr<WindowPlace> place_;
    std::unique_ptr<GdkWindow, WindowEnd> window_;
    std::shared_ptr<UIWindow> content_;
    std::shared_ptr<PanelView> panel_;
    std::unique_ptr<GdkViewHost> host_;
    PanelLook look_ = PanelEdge::Hard;
    CGFloat textScale_ = 1;
    CGFloat parentWidth_ = 0;  ///< Of the widget, in points; 0 before it is known.
    PanelContent shown_;
    CGSize size_;  ///< Of the window, in points of the screen.
    std::function<void()> closeHandler_;
    std::function<void()> firstFrameHandler_;
    std::function<void()> shownHandler_;
    WindowActivity activity_ = WindowActivity::Inactive;
    std::vector<std::string> iconFiles_;
    std::string accessibilityModule_;
    std::unique_ptr<AccessibilityLoader> accessibility_;
    bool painted_ = false;  ///< Since it was shown.
    bool muteKeyIsDown_ = false;
    guint idle_ = 0;  ///< The source that waits for the end of the first frame.
};
