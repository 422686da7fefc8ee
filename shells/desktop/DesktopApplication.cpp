#include "shells/desktop/DesktopApplication.hpp"

#include "backends/cairo/CairoText.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/PrintableText.hpp"
#include "platform/uikit/UILabel.hpp"
#include "shells/common/FileReport.hpp"
#include "shells/common/Installation.hpp"
#include "shells/common/Process.hpp"
#include "shells/common/Translation.hpp"
#include "shells/desktop/DesktopSession.hpp"
#include "shells/desktop/OpenSettings.hpp"
#include "shells/desktop/PanelPicture.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "shells/panel/OpenWidgets.hpp"
#include "shells/panel/RowReport.hpp"

#include <cstdlib>

namespace desktop {
namespace {

/// Everything in the start that changes the environment, which threads may read afterwards.
void beginGdk() {
    g_set_prgname(shell::applicationId);  // Wayland desktops find the icon by this name.
    g_set_application_name(shell::applicationName);
    // Nothing here is drawn with GL. The first program of a session that opens a display would load
    // the graphics driver to examine its visuals, which takes longer than the rest of the start and
    // 30 MB permanently; a mixer that starts with the session may be that program.
    constexpr gboolean overwrite = FALSE;
    g_setenv("GDK_GL", "disable", overwrite);
    gdk_parse_args(nullptr, nullptr);
}

/// nullptr if no display can be opened.
GdkDisplay* openDisplay() {
    if (gdk_init_check(nullptr, nullptr) == FALSE) return nullptr;
    gdk_set_program_class(shell::applicationId);
    return gdk_display_get_default();
}

std::string modulePath(const char* name) {
    return shell::modulePath(name, shell::programDirectory());
}

/// The default file for the picture.
std::string pictureInCache() {
    const std::string folder = std::string(g_get_user_cache_dir()) + "/tarnwick";
    constexpr int ownerOnly = 0700;
    g_mkdir_with_parents(folder.c_str(), ownerOnly);
    return folder + "/widget.png";
}

}  // namespace

int DesktopApplication::run() {
    if (options_.quit) return quitOther();
    if (options_.settings)
        return openSettings(options_.common, nullptr) ? EXIT_FAILURE : EXIT_SUCCESS;
    beginGdk();
    if (!options_.standsAlone()) instance_.begin();
    UILabel::setDefaultTextColor(UIColor::whiteColor());
    sound_ = std::make_unique<shell::SoundService>(
        options_.simulate ? shell::SoundSource::Simulated : shell::SoundSource::Server,
        modulePath(shell::soundServerModule));
    if (!instance_.isLockTaken()) loadAhead();
    GdkDisplay* display = options_.paint ? nullptr : openDisplay();
    if (!display && options_.background && !options_.paint)
        return shell::complain(EXIT_FAILURE, shell::translated("there is no display"));
    // Handle the bus's answers so far; the next ones arrive during the following steps.
    while (display && g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
    if (!openWidget()) return EXIT_FAILURE;
    if (options_.paint) return paint(*options_.paint);
    return display ? runWindow(display) : reportRows();
}

/// Starts threads for slow work that needs no display, while the display is opened.
void DesktopApplication::loadAhead() {
    sound_->loadAhead();
    if (!options_.background) painting::CairoText::shared();  // Searches for fonts in a thread.
}

bool DesktopApplication::openWidget() {
    // A machine with a desktop that does not report its form is treated as one with a large screen.
    if (machineModel().empty()) setMachineModel("iPad");
    shell::OpenedWidgets opened =
        shell::openWidgets(shell::bundlePaths(options_.common.bundles, shell::programDirectory()),
                           options_.host, shell::parentWidthForModel(machineModel()));
    for (const std::string& complaint : opened.complaints)
        shell::complain(complaint);
    widget_ = std::move(opened.widget);
    return opened.anyLoaded;
}

bool DesktopApplication::isTakenOver() {
    // Find out whether it can be called before it hides; no picture has to wait for that.
    if (options_.background) instance_.connect();
    if (instance_.waitForStanding() != SingleInstance::Standing::Later) return false;
    const auto wanted = options_.background ? InstanceRequest::Nothing : InstanceRequest::Toggle;
    if (instance_.ask(wanted)) return true;
    shell::complain(
        shell::translated("another mixer is running but does not answer on the session bus"));
    return false;
}

int DesktopApplication::quitOther() {
    constexpr double patienceSeconds = 5;  // Longer than usual, since no picture waits for it.
    instance_.begin();
    instance_.connect();
    if (instance_.waitForStanding(patienceSeconds) != SingleInstance::Standing::Later)
        return EXIT_SUCCESS;
    if (instance_.ask(InstanceRequest::Quit)) return EXIT_SUCCESS;
    return shell::complain(
        EXIT_FAILURE, shell::translated("the running mixer does not answer on the session bus"));
}

int DesktopApplication::runWindow(GdkDisplay* display) {
    if (!options_.standsAlone() && isTakenOver()) return EXIT_SUCCESS;
    DesktopSession session(display, options_, *widget_, *sound_, instance_,
                           modulePath(windowing::accessibilityModuleFile));
    session.run();
    return EXIT_SUCCESS;
}

int DesktopApplication::reportRows() {
    shell::complain(shell::translated("there is no display: the rows are printed as text"));
    const std::string path = pictureInCache();
    const bool isPainted = paint(path) == EXIT_SUCCESS;
    widget_->present();
    std::string report = shell::rowReport(shell::panelContent(*widget_).view);
    widget_->dismiss();
    if (isPainted)
        report += "\n" +
                  shell::filled(shell::translated("The picture is {path}"),
                                {{"path", printableLine(path)}}) +
                  "\n";
    const int error = shell::writeToStandardOutput(report);
    if (error == 0) return EXIT_SUCCESS;
    return shell::complain(EXIT_FAILURE, shell::outputComplaint(error));
}

int DesktopApplication::paint(const std::string& path) {
    waitForSound();
    widget_->present();  // The files are read now.
    shell::FileReport files([](const std::string& line) { shell::complain(line); });
    files.refresh();
    const auto panel = std::make_shared<shell::PanelView>();
    panel->setNotice(shell::joinedNotices(soundNotice(*sound_), files.notice()));
    if (paintPanelPicture(*widget_, panel, path)) return EXIT_SUCCESS;
    return shell::complain(
        EXIT_FAILURE, shell::filled(shell::translated("cannot write {path}"), {{"path", path}}));
}

void DesktopApplication::waitForSound() {
    sound_->connect();
    while (!sound_->isSettled())
        g_main_context_iteration(nullptr, TRUE);
}

}  // namespace desktop
