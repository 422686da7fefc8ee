#pragma once

#include "shells/common/FileFollower.hpp"
#include "shells/common/FileReport.hpp"
#include "shells/desktop/DesktopOptions.hpp"
#include "shells/desktop/DesktopWindow.hpp"
#include "shells/desktop/DrawerPlacement.hpp"
#include "shells/desktop/SingleInstance.hpp"
#include "shells/desktop/tray/Tray.hpp"
#include "shells/sound/SoundService.hpp"

#include <optional>
#include <string>

namespace desktop {

/// The panel's notice about the sound server; nil for none.
NSString soundNotice(const shell::SoundService& sound);

/// The mixer while it runs on a desktop. It is shown by a start, by its icon or by another start,
/// hidden again, and ends when nothing could show it again. Main thread.
class DesktopSession {
 public:
    /// All arguments must outlive the session.
    DesktopSession(GdkDisplay* display, const DesktopOptions& options, shell::PanelWidget& widget,
                   shell::SoundService& sound, SingleInstance& instance,
                   const std::string& accessibilityModule);
    ~DesktopSession();
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;

    /// Runs until the mixer ends.
    void run();

 private:
    struct LoopEnd {
        void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
    };

    void begin();
    void beginHidden();
    void observeSound();
    void lookThroughFiles();
    void filesHaveNews(shell::FileFollower::News news);
    void showFooter();
    void outputsChanged();
    void serviceChanged();
    void afterFirstFrame();
    void standingChanged();
    void openTray();
    void showSettings();
    void trayChanged();
    void sayWhereItIs();
    void requested(InstanceRequest request);
    void show();
    void iconPressed(const CGPoint& point);
    void menuOpened();
    void showFromMenu();
    void showBeside(const CGPoint& icon);
    void toggle(const std::function<void()>& showIt);
    void closed();
    /// Whether something could show a hidden mixer again.
    bool canBeCalled() const;
    void quit() { g_main_loop_quit(loop_.get()); }
    void letVolumesArrive() const;

    GdkDisplay* display_;
    const DesktopOptions& options_;
    shell::PanelWidget& widget_;
    shell::SoundService& sound_;
    SingleInstance& instance_;
    std::unique_ptr<GMainLoop, LoopEnd> loop_;
    shell::FileReport files_;
    shell::FileFollower follower_{[this](auto news) { filesHaveNews(news); }};
    windowing::EventDispatcher events_;
    std::optional<windowing::LayerShell> layers_;
    DesktopWindow window_;
    std::optional<Tray> tray_;
    IconSpot icon_;
    bool saidWhereItIs_ = false;
    NSString toldFailure_;      ///< Of the outputs.
    NSString settingsProblem_;  ///< Until the window is closed.
};

}  // namespace desktop
