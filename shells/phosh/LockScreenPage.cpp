#include "shells/phosh/LockScreenPage.hpp"

#include "platform/foundation/NSLog.hpp"
#include "shells/common/Translation.hpp"
#include "shells/panel/OpenWidgets.hpp"
#include "shells/phosh/LockSession.hpp"

#include <cmath>
#include <utility>

namespace phosh {
namespace {

// Points: of the phones' screens for which the lock screen is made.
constexpr CGFloat usualWidth = 360;

void tell(const std::string& what) {
    NSLog("tarnwick: " + what);
}

shell::OpenedWidgets openAll(const std::vector<std::string>& bundles) {
    shell::OpenedWidgets opened = shell::openWidgets(bundles, shell::HostKind::Current, usualWidth);
    for (const std::string& complaint : opened.complaints)
        tell(complaint);
    return opened;
}

/// Whether it is a horizontal scroll, which turns the lock screen's pages and moves no slider.
bool goesSideways(const GdkEventScroll& event) {
    if (event.direction == GDK_SCROLL_SMOOTH)
        return std::abs(event.delta_x) > std::abs(event.delta_y);
    return event.direction == GDK_SCROLL_LEFT || event.direction == GDK_SCROLL_RIGHT;
}

}  // namespace

LockScreenPage::LockScreenPage() : files_(tell) {
    preparePlatform();
    const PluginSetting setting = pluginSetting();
    session_ = LockSession::shared(setting.soundModule);
    shell::OpenedWidgets opened = openAll(setting.bundles);
    widget_ = std::move(opened.widget);
    needsSound_ = opened.anyLoaded;
    session_->add(*this);
    content_->addSubview(page_);
    widget_->setSizeHandler([this] { showContent(); });
}

LockScreenPage::~LockScreenPage() {
    session_->remove(*this);
    leaveWindow();
    page_->setContent(nullptr);
    widget_.reset();
    LockSession::release(std::move(session_));
}

void LockScreenPage::enterWindow(GdkWindow* window) {
    host_ = std::make_unique<windowing::ViewHost>(content_, window);
}

void LockScreenPage::leaveWindow() {
    leaveSight();
    host_.reset();
}

void LockScreenPage::setSize(const CGSize& place, CGFloat textScale) {
    const CGFloat zoom = shell::zoomWithin(textScale, place.width);
    const CGSize size = {place.width / zoom, place.height / zoom};
    content_->setZoom(zoom);
    content_->setFrame({{0, 0}, size});
    page_->setFrame({{0, 0}, size});
    page_->setNeedsLayout();
    if (size.width == presentedWidth_) return;
    widget_->dismiss();  // Rows are made as wide as they are needed.
    if (inSight_) comeIntoSight();
}

void LockScreenPage::comeIntoSight() {
    inSight_ = true;
    // It has no size before the page has been laid out for the first time.
    if (widget_->isPresented() || page_->frame().size.width <= 1) return;
    if (needsSound_) session_->connect();
    present();
}

void LockScreenPage::present() {
    presentedWidth_ = page_->frame().size.width;
    widget_->setParentWidth(presentedWidth_);
    widget_->present();
    isNew_ = true;
    showNotice();
    showContent();
}

void LockScreenPage::leaveSight() {
    inSight_ = false;
    look_.cancel();
    follower_.end();
    taken_.clear();
    content_->cancelTouches();
    widget_->dismiss();
}

void LockScreenPage::showContent() {
    const shell::PanelContent shown = shell::panelContent(*widget_);
    shown.view->setFrame({shown.view->frame().origin, shown.size});
    page_->setContent(shown.view);
}

void LockScreenPage::showNotice() {
    const NSString sound = session_->isSilent()
                               ? NSString(shell::translated("No sound server answers"))
                               : std::nullopt;
    page_->setNotice(shell::joinedNotices(sound, files_.notice()));
}

/// Checks the files that the widget read when it was presented.
void LockScreenPage::lookThroughFiles() {
    files_.refresh();
    follower_.begin();
    showNotice();
}

void LockScreenPage::filesHaveNews(shell::FileFollower::News news) {
    if (news == shell::FileFollower::News::Unreadable) {
        files_.refreshNotice();
        return showNotice();
    }
    widget_->assembleAgain();
    lookThroughFiles();
    showContent();
}

void LockScreenPage::serviceChanged() {
    if (!widget_->isPresented()) return;
    widget_->dismiss();
    present();
}

void LockScreenPage::paint(cairo_t* context) {
    if (host_) host_->paint(context);
    // After the picture, which the user waits for.
    if (!std::exchange(isNew_, false)) return;
    look_.start(0, [this] {
        lookThroughFiles();
        session_->followOutputs();
    });
}

bool LockScreenPage::handleEvent(const GdkEvent& event) {
    if (!host_) return false;
    switch (event.type) {
        case GDK_EXPOSE:  // The toolkit asks for a paint.
            return false;
        case GDK_VISIBILITY_NOTIFY:
            if (event.visibility.state == GDK_VISIBILITY_FULLY_OBSCURED)
                leaveSight();
            else
                comeIntoSight();
            return false;
        case GDK_SCROLL:
            return !goesSideways(event.scroll) && host_->handleEvent(event);
        default:
            return handleTouch(event);
    }
}

/// A touch that begins beside the controls also goes to the lock screen, until it turns out to
/// scroll the widget.
bool LockScreenPage::handleTouch(const GdkEvent& event) {
    const GdkEventSequence* finger = gdk_event_get_event_sequence(&event);
    gdouble x = 0;
    gdouble y = 0;
    switch (event.type) {
        case GDK_BUTTON_PRESS:
        case GDK_TOUCH_BEGIN:
            gdk_event_get_coords(&event, &x, &y);
            x /= content_->zoom();
            y /= content_->zoom();
            if (page_->takesTouchAt({static_cast<CGFloat>(x), static_cast<CGFloat>(y)}))
                taken_.insert(finger);
            return host_->handleEvent(event) && taken_.contains(finger);
        case GDK_MOTION_NOTIFY:
        case GDK_TOUCH_UPDATE:
            host_->handleEvent(event);
            return taken_.contains(finger) || page_->isScrolling();
        case GDK_BUTTON_RELEASE:
        case GDK_TOUCH_END:
        case GDK_TOUCH_CANCEL:
            host_->handleEvent(event);
            return taken_.erase(finger) > 0;
        default:
            return host_->handleEvent(event);
    }
}

}  // namespace phosh
