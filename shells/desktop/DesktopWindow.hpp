#pragma once

#include "backends/gdk/AccessibilityLoader.hpp"
#include "backends/gdk/EventDispatcher.hpp"
#include "backends/gdk/ViewHost.hpp"
#include "shells/desktop/WindowPlace.hpp"
#include "shells/panel/Notices.hpp"
#include "shells/panel/PanelView.hpp"

#include <functional>
#include <memory>

namespace desktop {

/// A widget in a borderless window. show() presents the widget, closing the window (by Escape or
/// the window manager) dismisses it, and it can be shown again.
///
///     DesktopWindow window(display, events, widget, module);
///     window.setCloseHandler([&] { loop.quit(); });
///     window.show();
///
/// Main thread.
class DesktopWindow {
 public:
    /// All references must outlive the window. `accessibilityModule` is the file to load while
    /// assistive technology is in use; empty for none.
    DesktopWindow(GdkDisplay* display, windowing::EventDispatcher& events,
                  shell::PanelWidget& widget, std::string accessibilityModule);
    ~DesktopWindow();
    DesktopWindow(const DesktopWindow&) = delete;
    DesktopWindow& operator=(const DesktopWindow&) = delete;

    /// Has no effect while it is shown. Without a place it is an ordinary window.
    void show();
    void show(std::unique_ptr<WindowPlace> place);
    void close();
    bool isShown() const { return widget_.isPresented(); }
    /// Called after the window was closed, by anyone. It may destroy this object.
    void setCloseHandler(std::function<void()> handler) { closeHandler_ = std::move(handler); }
    /// What is below the widget: an offer of outputs for roles, as PanelView::setOutputs() has it,
    /// and a notice of one or more lines; nil for none.
    void setFooter(const NSString& notice, RoleOutputs* outputs = nullptr);
    /// Called by the gear and the other ways to the settings, Ctrl+comma among them.
    void setSettingsHandler(std::function<void()> handler) {
        panel_->setSettingsHandler(std::move(handler));
    }
    /// PNG files of the icon in several sizes, used for an ordinary window and read after its first
    /// frame.
    void setIcon(std::vector<std::string> files);
    /// Called once, when the first frame has been painted and handed to the window system.
    void setFirstFrameHandler(std::function<void()> handler) {
        firstFrameHandler_ = std::move(handler);
    }
    /// Called after the first frame of each showing.
    void setShownHandler(std::function<void()> handler) { shownHandler_ = std::move(handler); }

    /// A new one for each showing; none before the first.
    windowing::ViewHost& host() { return *host_; }
    const std::shared_ptr<UIWindow>& content() const { return content_; }

 private:
    struct WindowEnd {
        void operator()(GdkWindow* window) const { gdk_window_destroy(window); }
    };

    void makeWindow();
    void dropWindow();
    void framePainted();
    /// After the first frame of each window.
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
    /// The area of the screen that the panel may take, in points.
    CGSize roomForPanel() const;
    void followScreen();
    shell::PanelLayout wantedLayout();
    /// Adapts to the widget's size and to the screen.
    void layout();
    /// The same from outside show(): the screen may change while the window is created.
    void layoutIfShown() {
        if (isShown() && window_) layout();
    }
    void applyLayout(const shell::PanelLayout& layout);
    void beginMove();
    void showFocus();

    GdkDisplay* display_;
    GdkScreen* screen_;
    windowing::EventDispatcher& events_;
    shell::PanelWidget& widget_;
    std::unique_ptr<WindowPlace> place_;
    std::unique_ptr<GdkWindow, WindowEnd> window_;
    std::shared_ptr<UIWindow> content_;
    std::shared_ptr<shell::PanelView> panel_;
    std::unique_ptr<windowing::ViewHost> host_;
    shell::PanelLook look_ = shell::PanelEdge::Hard;
    CGFloat textScale_ = 1;
    CGFloat parentWidth_ = 0;  ///< Of the widget, in points; 0 before it is known.
    shell::PanelContent shown_;
    CGSize size_;  ///< Of the window, in points of the screen.
    std::function<void()> closeHandler_;
    std::function<void()> firstFrameHandler_;
    std::function<void()> shownHandler_;
    windowing::WindowActivity activity_ = windowing::WindowActivity::Inactive;
    std::vector<std::string> iconFiles_;
    std::string accessibilityModule_;
    std::unique_ptr<windowing::AccessibilityLoader> accessibility_;
    bool painted_ = false;  ///< Since it was shown.
    bool muteKeyIsDown_ = false;
    guint idle_ = 0;  ///< The source that waits for the end of the first frame.
};

}  // namespace desktop
