#include "shells/desktop/DesktopSession.hpp"

#include "backends/gdk/X11Windows.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "shells/common/Installation.hpp"
#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"
#include "shells/desktop/OpenSettings.hpp"
#include "shells/desktop/PopupPlace.hpp"

#include <glib-unix.h>

#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#endif

#include <array>
#include <csignal>
#include <utility>

namespace desktop {
namespace {

// Seconds, two frames: rows that fill before the window is visible do not flicker, and the delay is
// not noticeable. A running server answers within two milliseconds.
constexpr double firstPicturePatience = 0.033;

bool isX11(GdkDisplay* display) {
#ifdef GDK_WINDOWING_X11
    return GDK_IS_X11_DISPLAY(display);
#else
    return false;
#endif
}

/// Calls back when the program is asked to end (Ctrl-C, the session's end), so that it can dismiss
/// the widget and let the last volume arrive.
class EndSignals {
 public:
    explicit EndSignals(std::function<void()> end) : end_(std::move(end)) {
        const auto tell = +[](gpointer self) -> gboolean {
            static_cast<EndSignals*>(self)->end_();
            return G_SOURCE_CONTINUE;
        };
        for (std::size_t i = 0; i < signals.size(); ++i)
            sources_[i] = g_unix_signal_add(signals[i], tell, this);
    }
    ~EndSignals() {
        for (const guint source : sources_)
            g_source_remove(source);
    }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

 private:
    static constexpr std::array signals = {SIGINT, SIGTERM, SIGHUP};

    std::function<void()> end_;
    std::array<guint, signals.size()> sources_{};
};

}  // namespace

NSString soundNotice(const shell::SoundService& sound) {
    if (sound.isSilent()) return shell::translated("No sound server answers");
    const NSString failure = sound.outputs() ? sound.outputs()->failure() : std::nullopt;
    if (!failure) return std::nullopt;
    // TRANSLATORS: Why the outputs for each kind of sound could not be switched on or off.
    const char* text = shell::translated("Outputs: {reason}");
    return shell::wrapped(shell::filled(text, {{"reason", *failure}}));
}

DesktopSession::DesktopSession(GdkDisplay* display, const DesktopOptions& options,
                               shell::PanelWidget& widget, shell::SoundService& sound,
                               SingleInstance& instance, const std::string& accessibilityModule)
    : display_(display),
      options_(options),
      widget_(widget),
      sound_(sound),
      instance_(instance),
      loop_(g_main_loop_new(nullptr, FALSE)),
      files_([](const std::string& line) { shell::complain(line); }),
      window_(display, events_, widget, accessibilityModule) {
    if (!isX11(display) && windowing::LayerShell::isOffered(display)) layers_.emplace(display);
}

DesktopSession::~DesktopSession() {
    instance_.setStandingHandler({});
    instance_.setRequestHandler({});
    sound_.setChangeHandler({});
    sound_.setAvailabilityHandler({});
    sound_.setSilenceHandler({});
    sound_.setOutputsHandler({});
}

void DesktopSession::run() {
    const EndSignals signals([this] { quit(); });
    begin();
    g_main_loop_run(loop_.get());
    sound_.forgetWhenSettled();
    tray_.reset();
    window_.setCloseHandler({});
    window_.setShownHandler({});
    window_.close();
    follower_.end();
    letVolumesArrive();
}

void DesktopSession::begin() {
    window_.setCloseHandler([this] { closed(); });
    window_.setFirstFrameHandler([this] { afterFirstFrame(); });
    window_.setShownHandler([this] { lookThroughFiles(); });
    window_.setSettingsHandler([this] { showSettings(); });
    observeSound();
    if (options_.background && instance_.standing() != SingleInstance::Standing::Alone &&
        !options_.standsAlone())
        return beginHidden();
    if (options_.background)
        shell::complain(shell::translated(
            "there is no session bus that could call the mixer: it starts with its window"));
    sound_.connect();
    sound_.whenSettled(firstPicturePatience, [this] { show(); });
}

void DesktopSession::beginHidden() {
    sound_.setAttention(SoundServer::Attention::Resting);
    sound_.connect();
    afterFirstFrame();
}

void DesktopSession::observeSound() {
    sound_.setChangeHandler([this] { serviceChanged(); });
    sound_.setAvailabilityHandler([this] {
        widget_.readAgain();
        if (tray_) tray_->refresh();
    });
    sound_.setSilenceHandler([this] { showFooter(); });
    sound_.setOutputsHandler([this] { outputsChanged(); });
}

/// Checks the files that the widget read when it was presented. Runs after the picture, which the
/// user waits for.
void DesktopSession::lookThroughFiles() {
    files_.refresh();
    follower_.begin();
    showFooter();
}

void DesktopSession::filesHaveNews(shell::FileFollower::News news) {
    if (news == shell::FileFollower::News::Unreadable) {
        files_.refreshNotice();
        return showFooter();
    }
    widget_.assembleAgain();
    lookThroughFiles();
    if (tray_) tray_->refresh();
}

void DesktopSession::showFooter() {
    const NSString notice = shell::joinedNotices(soundNotice(sound_), files_.notice());
    window_.setFooter(shell::joinedNotices(notice, settingsProblem_), sound_.outputs());
}

void DesktopSession::outputsChanged() {
    const RoleOutputs* outputs = sound_.outputs();
    const NSString failure = outputs ? outputs->failure() : std::nullopt;
    if (failure && failure != toldFailure_)
        shell::complain(
            shell::filled(shell::translated("outputs: {reason}"), {{"reason", *failure}}));
    toldFailure_ = failure;
    showFooter();
}

/// The widget gets the service when it is assembled, so it must be assembled again.
void DesktopSession::serviceChanged() {
    if (window_.isShown()) {
        widget_.dismiss();
        widget_.present();
        lookThroughFiles();
    }
    if (tray_) tray_->refresh();
}

/// Does what the first picture does not need.
void DesktopSession::afterFirstFrame() {
    window_.setIcon(shell::iconPaths(shell::applicationId, shell::programDirectory()));
    if (!options_.standsAlone()) instance_.connect();
    instance_.setStandingHandler([this] { standingChanged(); });
    instance_.setRequestHandler([this](InstanceRequest request) { requested(request); });
    standingChanged();
    sound_.followOutputs();
}

void DesktopSession::standingChanged() {
    // A different spelling of the bus address, or a slow bus, hid that another mixer runs.
    const auto wanted = options_.background ? InstanceRequest::Nothing : InstanceRequest::Show;
    if (instance_.standing() == SingleInstance::Standing::Later && instance_.ask(wanted))
        return quit();
    if (instance_.bus() && !tray_) openTray();
    if (instance_.bus()) return;
    tray_.reset();
    if (options_.standsAlone() || instance_.standing() == SingleInstance::Standing::Undecided)
        return;
    sayWhereItIs();
    if (!window_.isShown()) quit();
}

void DesktopSession::openTray() {
    tray_.emplace(instance_.bus(),
                  Tray::Handlers{
                      .toggle =
                          [this](int x, int y) {
                              iconPressed({static_cast<CGFloat>(x), static_cast<CGFloat>(y)});
                          },
                      .menuOpened = [this] { menuOpened(); },
                      .show = [this] { showFromMenu(); },
                      .settings = [this] { showSettings(); },
                      .quit = [this] { quit(); },
                      .presenceChanged = [this] { trayChanged(); },
                  });
}

void DesktopSession::showSettings() {
    settingsProblem_.reset();
    if (const shell::Problem reason = openSettings(options_.common, display_)) {
        // TRANSLATORS: Why they cannot be opened.
        const char* text = shell::translated("Settings: {reason}");
        settingsProblem_ = shell::wrapped(shell::filled(text, {{"reason", *reason}}));
    }
    showFooter();
}

void DesktopSession::trayChanged() {
    if (tray_->presence() == TrayHost::Presence::Absent) sayWhereItIs();
}

void DesktopSession::sayWhereItIs() {
    if (layers_ || std::exchange(saidWhereItIs_, true)) return;
    shell::complain(shell::translated(
        "there is neither a tray nor a layer shell here: the mixer is an ordinary window"));
}

void DesktopSession::requested(InstanceRequest request) {
    switch (request) {
        case InstanceRequest::Show:
            return show();
        case InstanceRequest::Toggle:
            return toggle([this] { show(); });
        case InstanceRequest::Quit:
            return quit();
        case InstanceRequest::Nothing:
            return;
    }
}

void DesktopSession::show() {
    sound_.setAttention(SoundServer::Attention::Watched);
    if (window_.isShown())
        gdk_window_focus(window_.host().window(), GDK_CURRENT_TIME);
    else if (layers_)
        window_.show(std::make_unique<LayerPlace>(display_, events_, *layers_, options_.anchor));
    else
        window_.show();
    if (tray_) tray_->refresh();  // The rows have been read again.
}

void DesktopSession::iconPressed(const CGPoint& point) {
    icon_.pressed(point);
    toggle([this] { showBeside(*icon_.place()); });
}

/// A menu does not report its place, and some hosts request it long before they show it.
void DesktopSession::menuOpened() {
    const auto pointer = windowing::pointerOnScreen(display_);
    if (pointer && PopupPlace::isOnPanel(display_, *pointer)) icon_.pressed(*pointer);
}

void DesktopSession::showFromMenu() {
    const auto place = icon_.place() ? icon_.place() : windowing::pointerOnScreen(display_);
    if (window_.isShown() || !place) return show();
    showBeside(*place);
}

void DesktopSession::showBeside(const CGPoint& icon) {
    if (!isX11(display_)) return show();
    sound_.setAttention(SoundServer::Attention::Watched);
    window_.show(
        std::make_unique<PopupPlace>(display_, icon, static_cast<CGFloat>(options_.anchor.margin)));
    if (tray_) tray_->refresh();
}

void DesktopSession::toggle(const std::function<void()>& showIt) {
    if (window_.isShown())
        window_.close();
    else
        showIt();
}

void DesktopSession::closed() {
    follower_.end();
    settingsProblem_.reset();
    sound_.setAttention(SoundServer::Attention::Resting);
    if (!canBeCalled()) quit();
}

bool DesktopSession::canBeCalled() const {
    if (!instance_.bus()) return false;
    const bool hasTray = tray_ && tray_->presence() == TrayHost::Presence::Present;
    // The bus restarts a service when it is called.
    return hasTray || layers_ || (options_.background && !options_.service);
}

/// A server may lose pending writes when the connection ends, and a switch of the outputs that is
/// left half-way keeps some sounds quiet until the next start finishes it.
void DesktopSession::letVolumesArrive() const {
    const double patienceSeconds = sound_.isSwitchingOutputs() ? 3 : 0.5;
    NSRunLoop& loop = NSRunLoop::mainRunLoop();
    const double end = loop.currentTime() + patienceSeconds;
    loop.performAfterDelay(patienceSeconds, [] {});
    while (sound_.isWriting() && loop.currentTime() < end)
        g_main_context_iteration(nullptr, TRUE);
}

}  // namespace desktop
