#include "tests/desktop/DesktopFixture.hpp"

#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UILabel.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIView.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/desktop/WindowPlace.hpp"
#include "tests/desktop/XDesktop.hpp"

#include <gdk/gdkx.h>

using namespace desktop;
using namespace shell;

namespace test {
namespace {

/// One server and one connection for the whole program: GDK opens no second one. Kept until the
/// process ends, since GDK's connection is.
const XServer& server() {
    static const XServer& shared = *std::make_unique<XServer>().release();
    return shared;
}

void openDisplay() {
    static const WindowManager& manager =
        *std::make_unique<WindowManager>(server().displayName()).release();
    static_cast<void>(manager);
    setenv("DISPLAY", server().displayName().c_str(), 1);
    setenv("GDK_BACKEND", "x11", 1);
    unsetenv("GDK_SCALE");
    ASSERT_TRUE(gdk_init_check(nullptr, nullptr)) << "Xvfb does not start";
}

}  // namespace

DesktopFixture::DesktopFixture() {
    openDisplay();
    user.emplace(server().displayName());
    user->moveTo(1279, 899);
    events = std::make_unique<windowing::EventDispatcher>();
    shell::installBackends();
    setLogSink([](const std::string&) {});
    setPreferencesDirectory(files.folder().string());
    setMachineModel("iPad4,1");
    UILabel::setDefaultTextColor(UIColor::whiteColor());
    AVSystemController::setSharedAVSystemController(device);
}

DesktopFixture::~DesktopFixture() {
    window.reset();
    widget.reset();
    AVSystemController::setSharedAVSystemController(nullptr);
    settle();
    setLogSink({});
}

void DesktopFixture::open(const std::string& accessibilityModule) {
    open(accessibilityModule,
         [] { return std::make_unique<OrdinaryPlace>(gdk_display_get_default()); });
}

void DesktopFixture::open(const std::string& accessibilityModule,
                          const std::function<std::unique_ptr<WindowPlace>()>& place) {
    const auto controller = shell::createController(TARNWICK_BUNDLE_DIR);
    ASSERT_TRUE(controller) << controller.error();
    widget = std::make_unique<HostedWidget>(*controller, parentWidthForModel("iPad4,1"));
    window = std::make_unique<DesktopWindow>(gdk_display_get_default(), *events, *widget,
                                             accessibilityModule);
    window->show(place());
    settle();
}

void DesktopFixture::settle() {
    // What the X server has sent, the frame that comes of it, and what that frame makes it send.
    for (int round = 0; round < 3; ++round) {
        gdk_display_sync(gdk_display_get_default());
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
        if (window && window->isShown()) waitForFrame();
    }
}

void DesktopFixture::waitForFrame() {
    GdkFrameClock* clock = gdk_window_get_frame_clock(window->host().window());
    bool painted = false;
    const auto after = +[](GdkFrameClock*, gpointer flag) { *static_cast<bool*>(flag) = true; };
    const gulong handler = g_signal_connect(clock, "after-paint", G_CALLBACK(after), &painted);
    gdk_frame_clock_request_phase(clock, GDK_FRAME_CLOCK_PHASE_AFTER_PAINT);
    EXPECT_TRUE(waitUntil([&painted] { return painted; })) << "there are no frames";
    g_signal_handler_disconnect(clock, handler);
}

const std::string& DesktopFixture::displayName() const {
    return server().displayName();
}

CGPoint DesktopFixture::rowsOrigin() const {
    return slider(0)->superview()->convertPointToView({}, nullptr);
}

std::shared_ptr<UISlider> DesktopFixture::slider(std::size_t row) const {
    for (const auto& element : accessibilityElements(window->content()))
        if (auto found = std::dynamic_pointer_cast<UISlider>(element); found && row-- == 0)
            return found;
    return nullptr;
}

CGPoint DesktopFixture::windowOrigin() const {
    int x = 0;
    int y = 0;
    gdk_window_get_origin(window->host().window(), &x, &y);
    return {static_cast<CGFloat>(x), static_cast<CGFloat>(y)};
}

CGSize DesktopFixture::windowSize() const {
    GdkWindow* shown = window->host().window();
    return {static_cast<CGFloat>(gdk_window_get_width(shown)),
            static_cast<CGFloat>(gdk_window_get_height(shown))};
}

CGPoint DesktopFixture::onScreen(const UIView& view, const CGPoint& point) const {
    const CGPoint inWindow = view.convertPointToView(point, nullptr);
    const CGPoint origin = windowOrigin();
    const auto scale = static_cast<CGFloat>(gdk_window_get_scale_factor(window->host().window()));
    const CGFloat zoom = window->content()->zoom();
    return {(origin.x + inWindow.x * zoom) * scale, (origin.y + inWindow.y * zoom) * scale};
}

CGPoint DesktopFixture::thumbOnScreen(std::size_t row) const {
    const auto shown = slider(row);
    const CGRect thumb = shown->thumbRect();
    return onScreen(*shown, {CGRectGetMidX(thumb), CGRectGetMidY(thumb)});
}

double DesktopFixture::volume(const char* category) const {
    float volume = -1;
    device->getVolume(volume, category);
    return double{volume};
}

void DesktopFixture::expectVolume(const char* category, double expected) {
    const auto isReached = [&] { return std::abs(volume(category) - expected) < 0.0001; };
    EXPECT_TRUE(waitUntil(isReached))
        << category << " stands at " << volume(category) << ", not at " << expected;
}

}  // namespace test
