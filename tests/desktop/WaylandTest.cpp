#include "backends/glib/GLibRunLoop.hpp"
#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/desktop/DesktopWindow.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "tests/desktop/MainLoop.hpp"
#include "tests/desktop/WaylandServer.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

using namespace desktop;
using namespace shell;

namespace test {
namespace {

/// The window's size with a widget of that height, 560 points wide: on Wayland there always is a
/// shadow.
CGSize withShadow(CGFloat height) {
    const UIEdgeInsets margins = panelMargins(PanelEdge::Soft);
    return {560 + margins.left + margins.right, height + margins.top + margins.bottom};
}

class WaylandTest : public testing::Test {
 protected:
    WaylandTest() {
        static const WaylandServer server;
        EXPECT_TRUE(server.isRunning()) << "weston does not start";
        // The library's complaints about what it is asked are failures.
        g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_FATAL_MASK | G_LOG_LEVEL_CRITICAL |
                                                           G_LOG_LEVEL_WARNING));
        if (gdk_init_check(nullptr, nullptr) == FALSE) throw std::runtime_error("no display");
        shell::installBackends();
        setLogSink([](const std::string&) {});
        setPreferencesDirectory(files.folder().string());
        setMachineModel("iPad4,1");
        AVSystemController::setSharedAVSystemController(std::make_shared<SimulatedAudioDevice>());
        const auto created = shell::createController(TARNWICK_BUNDLE_DIR);
        widget = std::make_unique<HostedWidget>(*created, 768);
    }
    ~WaylandTest() override {
        window.reset();
        widget.reset();
        AVSystemController::setSharedAVSystemController(nullptr);
        setLogSink({});
    }

    void makeWindow() {
        events = std::make_unique<windowing::EventDispatcher>();
        window = std::make_unique<DesktopWindow>(gdk_display_get_default(), *events, *widget, "");
    }
    CGSize size() const {
        GdkWindow* shown = window->host().window();
        return {static_cast<CGFloat>(gdk_window_get_width(shown)),
                static_cast<CGFloat>(gdk_window_get_height(shown))};
    }
    void notePaintedSize() {
        if (window && window->isShown()) paintedSizes.push_back(size());
    }
    void showAndWait() {
        paintedSizes.clear();
        window->show();
        const auto painted = +[](GdkFrameClock*, gpointer test) {
            static_cast<WaylandTest*>(test)->notePaintedSize();
        };
        GdkFrameClock* clock = gdk_window_get_frame_clock(window->host().window());
        g_signal_connect(clock, "after-paint", G_CALLBACK(painted), this);
        constexpr std::size_t frames = 2;  // The answer to the first one may change the size.
        ASSERT_TRUE(waitUntil([this] {
            window->content()->setNeedsDisplay();
            return paintedSizes.size() >= frames;
        }));
        EXPECT_EQ(window->content()->frame().size, size());
    }

    MixerFiles files;
    glib::GLibRunLoop runLoop;
    std::unique_ptr<HostedWidget> widget;
    std::unique_ptr<windowing::EventDispatcher> events;
    std::unique_ptr<DesktopWindow> window;
    std::vector<CGSize> paintedSizes;
};

TEST_F(WaylandTest, EveryFrameFromTheFirstHasTheWidgetsSize) {
    makeWindow();
    showAndWait();
    for (const CGSize& painted : paintedSizes)
        EXPECT_EQ(painted, withShadow(270)) << painted.width << " x " << painted.height;
}

TEST_F(WaylandTest, OpensAgainInTheSizeOfOtherRows) {
    makeWindow();
    showAndWait();
    window->close();
    files.writeShownCategories(3);
    showAndWait();
    for (const CGSize& painted : paintedSizes)
        EXPECT_EQ(painted, withShadow(170)) << painted.width << " x " << painted.height;
}

TEST_F(WaylandTest, OpensAgainWithRoomForItsNotice) {
    makeWindow();
    showAndWait();
    window->close();
    window->setFooter("No sound server answers");
    showAndWait();
    const CGFloat room = paintedSizes.back().height - withShadow(270).height;
    EXPECT_GT(room, 10);
    for (const CGSize& painted : paintedSizes)
        EXPECT_EQ(painted, withShadow(270 + room)) << painted.width << " x " << painted.height;
}

TEST_F(WaylandTest, FollowsRowsThatChangeWhileItIsOpen) {
    makeWindow();
    showAndWait();
    files.writeShownCategories(8);
    widget->dismiss();
    widget->present();
    EXPECT_TRUE(waitUntil([this] { return size() == withShadow(420); }));
}

TEST_F(WaylandTest, RestsOnceItIsShown) {
    makeWindow();
    showAndWait();
    bool over = false;
    const auto end = +[](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_REMOVE;
    };
    constexpr guint watchedTime = 300;  // milliseconds
    g_timeout_add(watchedTime, end, &over);
    const std::size_t before = paintedSizes.size();
    while (!over)
        g_main_context_iteration(nullptr, TRUE);
    EXPECT_LE(paintedSizes.size(), before + 1) << "the last frame that showAndWait() asked for";
}

}  // namespace
}  // namespace test
