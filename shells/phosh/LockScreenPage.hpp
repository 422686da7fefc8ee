#pragma once

#include "backends/gdk/ViewHost.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "shells/common/FileFollower.hpp"
#include "shells/common/FileReport.hpp"
#include "shells/panel/Notices.hpp"
#include "shells/phosh/LockSession.hpp"
#include "shells/phosh/PageView.hpp"

#include <memory>
#include <set>

namespace phosh {

/// One page of one lock screen: a widget that is created with the page, presented each time the
/// page becomes visible, and dismissed when it is hidden. The page connects to the sound service
/// when it is first shown, since most locks end without that. Main thread.
class LockScreenPage final : public LockSessionUser {
 public:
    LockScreenPage();
    /// Dismisses the widget if it is presented.
    ~LockScreenPage() override;
    LockScreenPage(const LockScreenPage&) = delete;
    LockScreenPage& operator=(const LockScreenPage&) = delete;

    /// Sets the window that shows the page from now on; it must select windowEvents and outlive
    /// leaveWindow().
    void enterWindow(GdkWindow* window);
    void leaveWindow();
    static constexpr int windowEvents = windowing::ViewHost::eventMask | GDK_VISIBILITY_NOTIFY_MASK;

    /// Sets the page's size in points of the window and the text scale, which is reduced on a
    /// narrow page. The widget is as wide as the page, and presented again when the width changes.
    void setSize(const CGSize& place, CGFloat textScale);
    /// Returns whether the page used the event, so that the lock screen must not get it.
    bool handleEvent(const GdkEvent& event);
    /// The page is hidden, whatever its window says.
    void leaveSight();
    /// The context's units are the window's points.
    void paint(cairo_t* context);

    shell::PanelWidget& widget() { return *widget_; }

    void serviceChanged() override;
    void volumesChanged() override { widget_->readAgain(); }
    void silenceChanged() override { showNotice(); }

 private:
    void comeIntoSight();
    void present();
    void showContent();
    void showNotice();
    void lookThroughFiles();
    void filesHaveNews(shell::FileFollower::News news);
    bool handleTouch(const GdkEvent& event);

    std::shared_ptr<LockSession> session_;
    std::unique_ptr<shell::PanelWidget> widget_;
    std::shared_ptr<UIWindow> content_ = std::make_shared<UIWindow>();
    std::shared_ptr<PageView> page_ = std::make_shared<PageView>();
    std::unique_ptr<windowing::ViewHost> host_;
    bool needsSound_ = false;  ///< Whether a widget was loaded, and not only notices.
    bool inSight_ = false;
    bool isNew_ = false;  ///< Presented and not yet painted.
    shell::FileReport files_;
    shell::FileFollower follower_{[this](auto news) { filesHaveNews(news); }};
    OneShotTimer look_;           ///< Through the files, once the picture is there.
    CGFloat presentedWidth_ = 0;  ///< Points.
    std::set<const GdkEventSequence*>
        taken_;  ///< Touches that began on a control; nullptr is the pointer.
};

}  // namespace phosh
