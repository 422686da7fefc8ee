#include "backends/gdk/GdkFrameSync.hpp"
#include "tests/desktop/LonelyDisplay.hpp"
#include "tests/desktop/MainLoop.hpp"
#include "tests/desktop/XDesktop.hpp"

#include <gtest/gtest.h>

#include <optional>

// Last: the X library's header makes macros of common words.
#include <X11/Xatom.h>
#include <gdk/gdkx.h>

namespace test {
namespace {

/// The frames of a window.
class Frames {
 public:
    explicit Frames(GdkDisplay* display) : display_(display) {
        GdkWindowAttr attributes = {};
        attributes.width = attributes.height = 50;
        attributes.wclass = GDK_INPUT_OUTPUT;
        attributes.window_type = GDK_WINDOW_TOPLEVEL;
        window_ = gdk_window_new(
            gdk_screen_get_root_window(gdk_display_get_default_screen(display)), &attributes, 0);
    }
    ~Frames() { gdk_window_destroy(window_); }
    Frames(const Frames&) = delete;
    Frames& operator=(const Frames&) = delete;

    GdkWindow* window() const { return window_; }

    void show() {
        gdk_window_show(window_);
        ASSERT_TRUE(waitUntil([this] { return gdk_window_is_viewable(window_) != FALSE; }));
    }

    struct End {
        /// The server had answered its last request by then.
        bool waitedForTheServer = false;
        /// A window manager will tell when it was shown.
        bool waitsForTheManager = false;
    };

    End paint() {
        end_.reset();
        GdkFrameClock* clock = gdk_window_get_frame_clock(window_);
        // Connected last, so called once GDK has ended the frame.
        const gulong handler =
            g_signal_connect(clock, "after-paint", G_CALLBACK(&Frames::frameEnded), this);
        gdk_frame_clock_request_phase(clock, GDK_FRAME_CLOCK_PHASE_PAINT);
        EXPECT_TRUE(waitUntil([this] { return end_.has_value(); }));
        g_signal_handler_disconnect(clock, handler);
        return end_.value_or(End());
    }

 private:
    static void frameEnded(GdkFrameClock* clock, Frames* frames) {
        Display* display = gdk_x11_display_get_xdisplay(frames->display_);
        GdkFrameTimings* timings = gdk_frame_clock_get_current_timings(clock);
        frames->end_ = {LastKnownRequestProcessed(display) == NextRequest(display) - 1,
                        gdk_frame_timings_get_complete(timings) == FALSE};
    }

    GdkDisplay* display_;
    GdkWindow* window_;
    std::optional<End> end_;
};

/// The properties of a window manager that tells of frames, in that connection's own window.
void pretendWindowManager(GdkDisplay* display, GdkWindow* own) {
    Display* connection = gdk_x11_display_get_xdisplay(display);
    const Window window = gdk_x11_window_get_xid(own);
    const Window root = DefaultRootWindow(connection);
    const auto atom = [display](const char* name) {
        return gdk_x11_get_xatom_by_name_for_display(display, name);
    };
    const auto setProperty = [&](Window on, const char* name, Atom type, unsigned long value) {
        XChangeProperty(connection, on, atom(name), type, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(&value), 1);
    };
    setProperty(window, "_NET_SUPPORTING_WM_CHECK", XA_WINDOW, window);
    setProperty(root, "_NET_SUPPORTING_WM_CHECK", XA_WINDOW, window);
    setProperty(root, "_NET_SUPPORTED", XA_ATOM, atom("_NET_WM_FRAME_DRAWN"));
}

TEST(FrameSync, IsSkippedWhereNoWindowManagerRuns) {
    const LonelyDisplay display;
    Frames usual(display.get());
    usual.show();
    EXPECT_TRUE(usual.paint().waitedForTheServer) << "there would be nothing to skip";
    Frames frames(display.get());
    skipFrameSyncIfUnmanaged(frames.window());
    frames.show();
    EXPECT_FALSE(frames.paint().waitedForTheServer);
}

TEST(FrameSync, IsLeftToAWindowManagerThatTellsOfFrames) {
    const LonelyDisplay display;
    const Frames managers(display.get());
    pretendWindowManager(display.get(), managers.window());
    Frames frames(display.get());
    skipFrameSyncIfUnmanaged(frames.window());
    frames.show();
    EXPECT_TRUE(frames.paint().waitsForTheManager);
}

}  // namespace
}  // namespace test
