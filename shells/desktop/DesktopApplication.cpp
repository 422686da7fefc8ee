#include "shells/desktop/DesktopApplication.hpp"

#include "backends/cairo/CairoText.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/PrintableText.hpp"
#include "platform/uikit/UILabel.hpp"
#include "shells/common/ApplicationId.hpp"
#include "shells/common/BundleLocation.hpp"
#include "shells/common/FileReport.hpp"
#include "shells/common/Process.hpp"
#include "shells/desktop/DesktopSession.hpp"
#include "shells/desktop/PanelPicture.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "shells/panel/OpenWidgets.hpp"
#include "shells/panel/RowReport.hpp"

#include <cstdlib>

namespace {

void complain(const std::string& what) {
    ::complain("tarnwick", what);
}

/// All of the start that changes the environment: threads may read it afterwards.
void beginGdk() {
    g_set_prgname(applicationId);  // By this name a Wayland desktop finds its icon.
    g_set_application_name(applicationName);
    // Nothing here is drawn by GL. The first program of a session that opens a display would load
    // the graphics driver to look at its visuals, which takes longer than everything else of the
    // start and 30 MB for good; and a mixer that starts with the session may be the first.
    constexpr gboolean overwrite = FALSE;
    g_setenv("GDK_GL", "disable", overwrite);
    gdk_parse_args(nullptr, nullptr);
}

/// nullptr where there is no display to open.
GdkDisplay* openDisplay() {
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
    if (options_.quit) return quitOther();
    beginGdk();
    if (!options_.standsAlone()) instance_.begin();
    UILabel::setDefaultTextColor(UIColor::whiteColor());
    sound_ = std::make_unique<SoundService>(
        options_.simulate ? SoundSource::Simulated : SoundSource::Server,
        modulePath(soundServerModule));
    if (!instance_.isLockTaken()) loadAhead();
    GdkDisplay* display = options_.paint ? nullptr : openDisplay();
    if (!display && options_.background && !options_.paint) {
        complain("there is no display");
        return EXIT_FAILURE;
    }
    // The bus may have answered by now; what is asked of it next is answered meanwhile.
    while (display && g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
    if (!openWidget()) return EXIT_FAILURE;
    if (options_.paint) return paint(*options_.paint);
    return display ? runWindow(display) : reportRows();
}

/// What takes long and needs no display, in threads beside its opening.
void DesktopApplication::loadAhead() {
    sound_->loadAhead();
    if (!options_.background) CairoText::shared();  // Looks for its fonts in a thread.
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

bool DesktopApplication::isTakenOver() {
    // Whether it can be called at all is to be known before it hides; there is no picture to wait.
    if (options_.background) instance_.connect();
    if (instance_.waitForStanding() != SingleInstance::Standing::Later) return false;
    const auto wanted = options_.background ? InstanceRequest::Nothing : InstanceRequest::Toggle;
    if (instance_.ask(wanted)) return true;
    complain("another one runs, and does not answer on this session's bus");
    return false;
}

int DesktopApplication::quitOther() {
    constexpr double patienceSeconds = 5;  // Nobody waits for a picture.
    instance_.begin();
    instance_.connect();
    if (instance_.waitForStanding(patienceSeconds) != SingleInstance::Standing::Later)
        return EXIT_SUCCESS;
    if (instance_.ask(InstanceRequest::Quit)) return EXIT_SUCCESS;
    complain("the one that runs does not answer on this session's bus");
    return EXIT_FAILURE;
}

int DesktopApplication::runWindow(GdkDisplay* display) {
    if (!options_.standsAlone() && isTakenOver()) return EXIT_SUCCESS;
    DesktopSession session(display, options_, *widget_, *sound_, instance_,
                           modulePath(accessibilityModuleFile));
    session.run();
    return EXIT_SUCCESS;
}

int DesktopApplication::reportRows() {
    complain("there is no display: the rows are printed as text");
    const std::string path = pictureInCache();
    const bool isPainted = paint(path) == EXIT_SUCCESS;
    widget_->present();
    std::string report = rowReport(panelContent(*widget_).view);
    widget_->dismiss();
    if (isPainted) report += "\nThe picture is " + printableLine(path) + "\n";
    const int error = shell::writeToStandardOutput(report);
    if (error == 0) return EXIT_SUCCESS;
    complain(shell::outputComplaint(error));
    return EXIT_FAILURE;
}

int DesktopApplication::paint(const std::string& path) {
    waitForSound();
    widget_->present();  // The files are read now.
    shell::FileReport files([](const std::string& line) { complain(line); });
    files.refresh();
    const NSString notice = shell::joinedNotices(soundNotice(*sound_), files.notice());
    if (paintPanelPicture(*widget_, notice, path)) return EXIT_SUCCESS;
    complain("cannot write " + path);
    return EXIT_FAILURE;
}

void DesktopApplication::waitForSound() {
    sound_->connect();
    while (!sound_->isSettled())
        g_main_context_iteration(nullptr, TRUE);
}
