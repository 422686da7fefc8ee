#pragma once

#include "backends/gdk/GdkViewHost.hpp"
#include "platform/foundation/OneShotTimer.hpp"
#include "shells/common/FileReport.hpp"
#include "shells/panel/PanelContent.hpp"
#include "shells/phosh/LockSession.hpp"
#include "shells/phosh/PageView.hpp"

#include <memory>
#include <set>

/// One page of one lock screen: a widget, made when the page is, presented each time the page comes
/// into sight and dismissed when it goes out of it. The sound service is connected to when it is
/// seen for the first time: most locks end without that. Main thread.
class LockScreenPage final : public LockSessionUser {
 public:
    LockScreenPage();
    /// Dismisses the widget if it is presented.
    ~LockScreenPage() override;
    LockScreenPage(const LockScreenPage&) = delete;
    LockScreenPage& operator=(const LockScreenPage&) = delete;

    /// The window that the page is shown in from now on; it must select windowEvents and outlive
    /// its leaving.
    void enterWindow(GdkWindow* window);
    void leaveWindow();
    static constexpr int windowEvents = GdkViewHost::eventMask | GDK_VISIBILITY_NOTIFY_MASK;

    /// `place` is in points of the window, of which the page's own take `textScale`, or less where
    /// that is narrow. The widget is as wide as the page, and is presented anew when that changes.
    void setSize(const CGSize& place, CGFloat textScale);
    /// Answers whether the event was the page's, and so is none for the lock screen.
    bool handleEvent(const GdkEvent& event);
    /// The page is out of sight, whatever its window says.
    void leaveSight();
    /// Units of the context are the window's points.
    void paint(cairo_t* context);

    PanelWidget& widget() { return *widget_; }

    void serviceChanged() override;
    void volumesChanged() override { widget_->readAgain(); }
    void silenceChanged() override { showNotice(); }

 private:
    void comeIntoSight();
    void present();
    void showContent();
    void showNotice();
    void lookThroughFiles();
    bool handleTouch(const GdkEvent& event);

    std::shared_ptr<LockSession> session_;
    std::unique_ptr<PanelWidget> widget_;
    std::shared_ptr<UIWindow> content_ = std::make_shared<UIWindow>();
    std::shared_ptr<PageView> page_ = std::make_shared<PageView>();
    std::unique_ptr<GdkViewHost> host_;
    bool needsSound_ = false;  ///< Whether there is more than a word of what is missing.
    bool inSight_ = false;
    bool isNew_ = false;  ///< Presented and not yet painted.
    shell::FileReport files_;
    OneShotTimer look_;                        ///< Through the files, once the picture is there.
    CGFloat presentedWidth_ = 0;               ///< Points.
    std::set<const GdkEventSequence*> taken_;  ///< Touches of a control's; nullptr is the pointer.
};
