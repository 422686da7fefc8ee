#include "shells/desktop/DesktopApplication.hpp"

#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/uikit/UILabel.hpp"
#include "shells/common/ApplicationId.hpp"
#include "shells/common/BundleLocation.hpp"
#include "shells/desktop/DesktopWindow.hpp"
#include "shells/desktop/PanelPicture.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "shells/panel/OpenWidgets.hpp"
#include "shells/panel/RowReport.hpp"

#include <glib-unix.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

struct LoopEnd {
    void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
};
using MainLoop = std::unique_ptr<GMainLoop, LoopEnd>;

void complain(const std::string& what) {
    std::fprintf(stderr, "tarnwick: %s\n", what.c_str());
}

/// Closes the window when the program is told to end, as by Ctrl-C in its terminal: the widget is
/// dismissed and the last volume arrives.
class EndSignals {
 public:
    explicit EndSignals(DesktopWindow& window) {
        const auto close = +[](gpointer closed) -> gboolean {
            static_cast<DesktopWindow*>(closed)->close();
            return G_SOURCE_CONTINUE;
        };
        for (std::size_t i = 0; i < signals.size(); ++i)
            sources_[i] = g_unix_signal_add(signals[i], close, &window);
    }
    ~EndSignals() {
        for (const guint source : sources_)
            g_source_remove(source);
    }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

 private:
    static constexpr std::array signals = {SIGINT, SIGTERM, SIGHUP};
    std::array<guint, signals.size()> sources_{};
};

/// nullptr where there is no display to open.
GdkDisplay* openDisplay() {
    g_set_prgname(applicationId);  // By this name a Wayland desktop finds its icon.
    g_set_application_name(applicationName);
    if (gdk_init_check(nullptr, nullptr) == FALSE) return nullptr;
    gdk_set_program_class(applicationId);
    return gdk_display_get_default();
}

std::string modulePath(const char* name) {
    return shell::modulePath(name, shell::programDirectory());
}

/// Where the picture goes that nobody gave a name.
std::string pictureInCache() {
    const std::string folder = std::string(g_get_user_cache_dir()) + "/tarnwick";
    constexpr int ownerOnly = 0700;
    g_mkdir_with_parents(folder.c_str(), ownerOnly);
    return folder + "/widget.png";
}

}  // namespace

int DesktopApplication::run() {
    UILabel::setDefaultTextColor(UIColor::whiteColor());
    GdkDisplay* display = options_.paint ? nullptr : openDisplay();
    sound_ = std::make_unique<SoundService>(
        options_.simulate ? SoundSource::Simulated : SoundSource::Server,
        modulePath(soundServerModule));
    if (!openWidget()) return EXIT_FAILURE;
    if (options_.paint) return paint(*options_.paint);
    return display ? runWindow(display) : reportRows();
}

bool DesktopApplication::openWidget() {
    // A machine that says nothing of itself, and has a desktop, has a larger screen.
    if (machineModel().empty()) setMachineModel("iPad");
    OpenedWidgets opened =
        openWidgets(shell::bundlePaths(options_.common.bundles, shell::programDirectory()),
                    options_.host, parentWidthForModel(machineModel()));
    for (const std::string& complaint : opened.complaints)
        complain(complaint);
    widget_ = std::move(opened.widget);
    return opened.anyLoaded;
}

int DesktopApplication::runWindow(GdkDisplay* display) {
    const MainLoop loop(g_main_loop_new(nullptr, FALSE));
    GdkEvents events;
    DesktopWindow window(display, events, *widget_, modulePath(accessibilityModuleFile));
    window.setCloseHandler([&loop] { g_main_loop_quit(loop.get()); });
    sound_->setChangeHandler([this] {
        widget_->dismiss();
        widget_->present();
    });
    sound_->setAvailabilityHandler([this] { widget_->readAgain(); });
    sound_->setSilenceHandler([this, &window] { window.setNotice(soundNotice()); });
    window.setFirstFrameHandler([this] { sound_->connect(); });
    const EndSignals signals(window);
    window.show();
    g_main_loop_run(loop.get());
    sound_->setChangeHandler({});
    sound_->setAvailabilityHandler({});
    sound_->setSilenceHandler({});
    letVolumesArrive();
    return EXIT_SUCCESS;
}

/// A server may lose what is on its way when the connection ends.
void DesktopApplication::letVolumesArrive() {
    constexpr double patienceSeconds = 0.5;
    const NSRunLoop& loop = NSRunLoop::mainRunLoop();
    const double end = loop.currentTime() + patienceSeconds;
    NSRunLoop::mainRunLoop().performAfterDelay(patienceSeconds, [] {});
    while (sound_->isWriting() && loop.currentTime() < end)
        g_main_context_iteration(nullptr, TRUE);
}

NSString DesktopApplication::soundNotice() const {
    return sound_->isSilent() ? NSString("No sound server answers") : std::nullopt;
}

int DesktopApplication::reportRows() {
    complain("there is no display: painting a picture instead");
    const std::string path = pictureInCache();
    const int status = paint(path);
    if (status != EXIT_SUCCESS) return status;
    widget_->present();
    const std::string report = rowReport(panelContent(*widget_).view);
    std::printf("%s\nThe picture is %s\n", report.c_str(), path.c_str());
    widget_->dismiss();
    return status;
}

int DesktopApplication::paint(const std::string& path) {
    waitForSound();
    if (paintPanelPicture(*widget_, soundNotice(), path)) return EXIT_SUCCESS;
    complain("cannot write " + path);
    return EXIT_FAILURE;
}

void DesktopApplication::waitForSound() {
    sound_->connect();
    while (!sound_->isSettled())
        g_main_context_iteration(nullptr, TRUE);
}
