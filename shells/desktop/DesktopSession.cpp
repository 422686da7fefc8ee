#include "shells/desktop/DesktopSession.hpp"

#include "backends/gdk/GdkWindowAt.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "shells/common/ApplicationId.hpp"
#include "shells/common/BundleLocation.hpp"
#include "shells/desktop/EndSignals.hpp"
#include "shells/desktop/PopupPlace.hpp"

#ifdef GDK_WINDOWING_X11
#include <gdk/gdkx.h>
#endif

#include <utility>

namespace {

// Seconds, two frames: rows that fill before the window is seen do not flicker, and nobody notices
// that it came later. A server that is there answers within two milliseconds.
constexpr double firstPicturePatience = 0.033;

bool isX11(GdkDisplay* display) {
#ifdef GDK_WINDOWING_X11
    return GDK_IS_X11_DISPLAY(display);
#else
    return false;
#endif
}

void say(const std::string& what) {
    complain("tarnwick", what);
}

}  // namespace

NSString soundNotice(const SoundService& sound) {
    return sound.isSilent() ? NSString("No sound server answers") : std::nullopt;
}

DesktopSession::DesktopSession(GdkDisplay* display, const DesktopOptions& options,
                               PanelWidget& widget, SoundService& sound, SingleInstance& instance,
                               const std::string& accessibilityModule)
    : display_(display),
      options_(options),
      widget_(widget),
      sound_(sound),
      instance_(instance),
      loop_(g_main_loop_new(nullptr, FALSE)),
      files_(say),
      window_(display, events_, widget, accessibilityModule) {
    if (!isX11(display) && GdkLayerShell::isOffered(display)) layers_.emplace(display);
}

DesktopSession::~DesktopSession() {
    instance_.setStandingHandler({});
    instance_.setRequestHandler({});
    sound_.setChangeHandler({});
    sound_.setAvailabilityHandler({});
    sound_.setSilenceHandler({});
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
    letVolumesArrive();
}

void DesktopSession::begin() {
    window_.setCloseHandler([this] { closed(); });
    window_.setFirstFrameHandler([this] { afterFirstFrame(); });
    window_.setShownHandler([this] { lookThroughFiles(); });
    observeSound();
    if (options_.background && instance_.standing() != SingleInstance::Standing::Alone &&
        !options_.standsAlone())
        return beginHidden();
    if (options_.background) say("there is no session bus to be called by: an ordinary start");
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
    sound_.setSilenceHandler([this] { showNotices(); });
}

/// They were read when the widget was presented. After its picture: a user waits for that.
void DesktopSession::lookThroughFiles() {
    files_.refresh();
    showNotices();
}

void DesktopSession::showNotices() {
    window_.setNotice(shell::joinedNotices(soundNotice(sound_), files_.notice()));
}

/// The widget asks for the service when it is assembled.
void DesktopSession::serviceChanged() {
    if (window_.isShown()) {
        widget_.dismiss();
        widget_.present();
        lookThroughFiles();
    }
    if (tray_) tray_->refresh();
}

/// What need not be there for the first picture.
void DesktopSession::afterFirstFrame() {
    window_.setIcon(shell::iconPaths(applicationId, shell::programDirectory()));
    if (!options_.standsAlone()) instance_.connect();
    instance_.setStandingHandler([this] { standingChanged(); });
    instance_.setRequestHandler([this](InstanceRequest request) { requested(request); });
    standingChanged();
}

void DesktopSession::standingChanged() {
    // Another way of writing the bus's address, or a bus that was slow, hid that another one runs.
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
                      .quit = [this] { quit(); },
                      .presenceChanged = [this] { trayChanged(); },
                  });
}

void DesktopSession::trayChanged() {
    if (tray_->presence() == TrayHost::Presence::Absent) sayWhereItIs();
}

void DesktopSession::sayWhereItIs() {
    if (layers_ || std::exchange(saidWhereItIs_, true)) return;
    say("there is neither a tray nor a layer shell here: the mixer is an ordinary window");
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
    if (tray_) tray_->refresh();  // The rows have been read anew.
}

void DesktopSession::iconPressed(const CGPoint& point) {
    icon_.pressed(point);
    toggle([this] { showBeside(*icon_.place()); });
}

/// A menu does not say where it is. Some hosts ask for it long before they show it.
void DesktopSession::menuOpened() {
    const auto pointer = pointerOnScreen(display_);
    if (pointer && PopupPlace::isOnPanel(display_, *pointer)) icon_.pressed(*pointer);
}

void DesktopSession::showFromMenu() {
    const auto place = icon_.place() ? icon_.place() : pointerOnScreen(display_);
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
    sound_.setAttention(SoundServer::Attention::Resting);
    if (!canBeCalled()) quit();
}

bool DesktopSession::canBeCalled() const {
    if (!instance_.bus()) return false;
    const bool hasTray = tray_ && tray_->presence() == TrayHost::Presence::Present;
    // The bus starts a service again when it is called.
    return hasTray || layers_ || (options_.background && !options_.service);
}

/// A server may lose what is on its way when the connection ends.
void DesktopSession::letVolumesArrive() const {
    constexpr double patienceSeconds = 0.5;
    NSRunLoop& loop = NSRunLoop::mainRunLoop();
    const double end = loop.currentTime() + patienceSeconds;
    loop.performAfterDelay(patienceSeconds, [] {});
    while (sound_.isWriting() && loop.currentTime() < end)
        g_main_context_iteration(nullptr, TRUE);
}
