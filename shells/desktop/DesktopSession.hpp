#pragma once

#include "shells/common/FileReport.hpp"
#include "shells/desktop/DesktopOptions.hpp"
#include "shells/desktop/DesktopWindow.hpp"
#include "shells/desktop/DrawerPlacement.hpp"
#include "shells/desktop/SingleInstance.hpp"
#include "shells/desktop/tray/Tray.hpp"
#include "shells/sound/SoundService.hpp"

#include <optional>
#include <string>

/// What the panel says of the sound server; nil for nothing.
NSString soundNotice(const SoundService& sound);

/// The mixer while it runs on a desktop: shown by its start, its icon or another start, hidden
/// again, and ended when nobody could call it back. Main thread.
class DesktopSession {
 public:
    /// All of them outlive the session.
    DesktopSession(GdkDisplay* display, const DesktopOptions& options, PanelWidget& widget,
                   SoundService& sound, SingleInstance& instance,
                   const std::string& accessibilityModule);
    ~DesktopSession();
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;

    /// Until it is ended.
    void run();

 private:
    struct LoopEnd {
        void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
    };

    void begin();
    void beginHidden();
    void observeSound();
    void lookThroughFiles();
    void showNotices();
    void serviceChanged();
    void afterFirstFrame();
    void standingChanged();
    void openTray();
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
    /// Whether there is a way back to a hidden mixer.
    bool canBeCalled() const;
    void quit() { g_main_loop_quit(loop_.get()); }
    void letVolumesArrive() const;

    GdkDisplay* display_;
    const DesktopOptions& options_;
    PanelWidget& widget_;
    SoundService& sound_;
    SingleInstance& instance_;
    std::unique_ptr<GMainLoop, LoopEnd> loop_;
    shell::FileReport files_;
    GdkEvents events_;
    std::optional<GdkLayerShell> layers_;
    DesktopWindow window_;
    std::optional<Tray> tray_;
    IconSpot icon_;
    bool saidWhereItIs_ = false;
};
