#include "shells/desktop/DesktopWindow.hpp"

#include "backends/gdk/DesktopSettings.hpp"
#include "backends/gdk/InputTranslator.hpp"
#include "backends/gdk/X11Windows.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "shells/common/Installation.hpp"
#include "shells/desktop/WindowPlace.hpp"

#include <gdk/gdkkeysyms.h>

#include <utility>

namespace desktop {

DesktopWindow::DesktopWindow(GdkDisplay* display, windowing::EventDispatcher& events,
                             shell::PanelWidget& widget, std::string accessibilityModule)
    : display_(display),
      screen_(gdk_display_get_default_screen(display)),
      events_(events),
      widget_(widget),
      content_(std::make_shared<UIWindow>()),
      panel_(std::make_shared<shell::PanelView>()),
      accessibilityModule_(std::move(accessibilityModule)) {
    readDesktopSettings();
    content_->addSubview(panel_);
    panel_->setMoveHandler([this] { beginMove(); });
    widget_.setSizeHandler([this] { layoutIfShown(); });
    events_.setOtherHandler([this](const GdkEvent& event) { handleOtherEvent(event); });
    const auto changed =
        +[](GdkScreen*, gpointer window) { static_cast<DesktopWindow*>(window)->screenChanged(); };
    for (const char* signal :
         {"composited-changed", "monitors-changed", "size-changed", "window-manager-changed"})
        if (g_signal_lookup(signal, G_OBJECT_TYPE(screen_)) != 0)  // The last one is X11's alone.
            g_signal_connect(screen_, signal, G_CALLBACK(changed), this);
}

DesktopWindow::~DesktopWindow() {
    closeHandler_ = {};
    close();
    if (idle_ != 0) g_source_remove(idle_);
    g_signal_handlers_disconnect_by_data(screen_, this);
    widget_.setSizeHandler({});
    events_.setOtherHandler({});
    dropWindow();
    panel_->setWidgetView(nullptr);
}

void DesktopWindow::makeWindow() {
    painted_ = false;
    window_.reset(place_->newWindow(wantedLayout().window));
    host_ = std::make_unique<windowing::ViewHost>(content_, window_.get());
    events_.setHandler(window_.get(), [this](const GdkEvent& event) { handleEvent(event); });
    if (accessibility_) tellOfFrames();
}

void DesktopWindow::dropWindow() {
    host_.reset();
    if (window_) events_.setHandler(window_.get(), {});
    window_.reset();
}

void DesktopWindow::show() {
    show(std::make_unique<OrdinaryPlace>(display_));
}

/// Uses a new window: one that was shown before would be mapped in its old size first.
void DesktopWindow::show(std::unique_ptr<WindowPlace> place) {
    if (isShown()) return;
    dropWindow();
    place_ = std::move(place);
    place_->setDismissHandler([this] { close(); });
    panel_->setCloseHandler(place_->isAmongOthers() ? [this] { close(); }
                                                    : std::function<void()>());
    followScreen();
    widget_.preferredSize();
    widget_.present();
    makeWindow();
    layout();
    place_->show(window_.get());
}

void DesktopWindow::close() {
    if (!isShown()) return;
    content_->cancelTouches();
    place_->hide(window_.get());
    panel_->setCloseHandler({});
    widget_.dismiss();
    if (accessibility_) accessibility_->contentMayHaveChanged();  // No frame will follow.
    // A copy: the handler may destroy this window.
    if (const std::function<void()> handler = closeHandler_) handler();
}

/// Together, so that the window changes its size once.
void DesktopWindow::setFooter(const NSString& notice, RoleOutputs* outputs) {
    panel_->setNotice(notice);
    panel_->setOutputs(outputs);
    layoutIfShown();
}

void DesktopWindow::handleEvent(const GdkEvent& event) {
    if (place_->takesEvent(event)) return;
    switch (event.type) {
        case GDK_DELETE:
            close();
            return;
        case GDK_KEY_PRESS:
        case GDK_KEY_RELEASE:
            if (handleKey(event.key)) return;
            break;
        case GDK_FOCUS_CHANGE:
            muteKeyIsDown_ = false;  // Its release may go to another window.
            activity_ = event.focus_change.in != 0 ? windowing::WindowActivity::Active
                                                   : windowing::WindowActivity::Inactive;
            if (accessibility_) accessibility_->activityChanged(activity_);
            break;
        case GDK_CONFIGURE:
            windowHasSize({static_cast<CGFloat>(event.configure.width),
                           static_cast<CGFloat>(event.configure.height)});
            break;
        default:
            break;
    }
    host_->handleEvent(event);
    if (event.type == GDK_KEY_PRESS) showFocus();
    if (event.type == GDK_EXPOSE) framePainted();
}

/// Does what can wait until the window is visible.
void DesktopWindow::framePainted() {
    if (std::exchange(painted_, true)) return;
    const auto after = +[](gpointer window) -> gboolean {
        static_cast<DesktopWindow*>(window)->afterFirstFrame();
        return G_SOURCE_REMOVE;
    };
    if (idle_ == 0) idle_ = g_idle_add(after, this);
}

void DesktopWindow::afterFirstFrame() {
    idle_ = 0;
    showIcon();
    if (!accessibilityModule_.empty() && !accessibility_) watchForAccessibility();
    if (firstFrameHandler_) std::exchange(firstFrameHandler_, nullptr)();
    if (shownHandler_ && isShown()) shownHandler_();
}

void DesktopWindow::setIcon(std::vector<std::string> files) {
    iconFiles_ = std::move(files);
    if (painted_) showIcon();
}

void DesktopWindow::showIcon() {
    if (isShown() && place_->isAmongOthers()) windowing::setWindowIcon(window_.get(), iconFiles_);
}

void DesktopWindow::watchForAccessibility() {
    const auto origin = [this]() -> CGPoint {
        int x = 0;
        int y = 0;
        gdk_window_get_origin(window_.get(), &x, &y);
        return {static_cast<CGFloat>(x), static_cast<CGFloat>(y)};
    };
    accessibility_ = std::make_unique<windowing::AccessibilityLoader>(
        accessibilityModule_,
        windowing::AccessibleWindow{content_, shell::applicationName, origin});
    accessibility_->activityChanged(activity_);
    tellOfFrames();
}

void DesktopWindow::tellOfFrames() {
    host_->setFrameHandler([this] { accessibility_->contentMayHaveChanged(); });
}

void DesktopWindow::handleOtherEvent(const GdkEvent& event) {
    if (event.type == GDK_SETTING && windowing::applyDesktopSettings(screen_, &event.setting))
        screenChanged();
}

void DesktopWindow::screenChanged() {
    readDesktopSettings();  // Text smoothing depends on whether the window is translucent.
    if (isShown()) place_->screenChanged();
    content_->setNeedsDisplay();
    layoutIfShown();
}

void DesktopWindow::readDesktopSettings() {
    windowing::applyDesktopSettings(screen_);
    textScale_ = static_cast<CGFloat>(windowing::desktopTextScale(screen_));
}

bool DesktopWindow::handleKey(const GdkEventKey& event) {
    if (accessibility_ && accessibility_->takesKey(event)) return true;
    if (gdk_keyval_to_lower(event.keyval) == GDK_KEY_m && windowing::isTypedAlone(event)) {
        handleMuteKey(event);
        return true;
    }
    if (event.type != GDK_KEY_PRESS) return false;
    const bool isControlHeld = (event.state & GDK_CONTROL_MASK) != 0;
    if (event.keyval == GDK_KEY_comma && isControlHeld && panel_->settingsHandler()) {
        panel_->settingsHandler()();
        return true;
    }
    if (event.keyval != GDK_KEY_Escape) return false;
    close();
    return true;
}

/// A held key repeats its press event; only the first one mutes.
void DesktopWindow::handleMuteKey(const GdkEventKey& event) {
    const bool isDown = event.type == GDK_KEY_PRESS;
    if (std::exchange(muteKeyIsDown_, isDown) || !isDown) return;
    const std::shared_ptr<UIView> focused = content_->focusedView();
    const NSString category = focused ? widget_.categoryOf(*focused) : std::nullopt;
    const auto service = AVSystemController::sharedAVSystemController();
    if (category && service) service->toggleMute(category);
}

void DesktopWindow::showFocus() {
    const std::shared_ptr<UIView> focused = content_->focusedView();
    if (!focused || !content_->isFocusVisible()) return;
    shell::ScrollingView& scroller = panel_->scroller();
    if (!focused->isDescendantOfView(scroller)) return;
    // The whole row, so that its caption is visible too.
    const std::shared_ptr<UIView> row = focused->superview();
    const UIView& shown = row ? *row : *focused;
    scroller.scrollToShow(shown.convertRectToView(shown.bounds(), &scroller));
}

void DesktopWindow::beginMove() {
    const windowing::Press& press = host_->lastPress();
    if (press.device == nullptr || !place_->isAmongOthers()) return;
    // The window manager has the pointer from here on: no release will come.
    content_->cancelTouches();
    gdk_window_begin_move_drag_for_device(window_.get(), press.device, press.button, press.rootX,
                                          press.rootY, press.time);
}

}  // namespace desktop
