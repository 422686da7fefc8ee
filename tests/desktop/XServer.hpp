#pragma once

#include "platform/uikit/Geometry.hpp"
#include "tests/processes/ChildProcess.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// The library's own header turns everyday words into macros.
typedef struct _XDisplay Display;

namespace test {

/// An X server without a screen to look at, for this test program alone; it ends with it.
class XServer {
 public:
    /// GLX is off by default: GDK would load the graphics driver for it into each test, and unloads
    /// it with its memory lost. The mixer paints without it.
    enum class Glx { Off, On };
    explicit XServer(Glx glx = Glx::Off);
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    /// Pixels.
    static constexpr int width = 1280;
    static constexpr int height = 900;

    /// Empty when it could not be started.
    const std::string& displayName() const { return displayName_; }

 private:
    ChildProcess process_;
    std::string displayName_;
};

/// A user in front of that server: hands and eyes, in pixels of the screen. What the hands do
/// reaches a program as from real devices, some time after the call.
class XUser {
 public:
    explicit XUser(const std::string& displayName);

    void moveTo(double x, double y);
    void press(unsigned button = 1);
    void release(unsigned button = 1);
    void click(unsigned button = 1);
    /// One step of the wheel, away from the user or towards him.
    void scrollUp() { click(4); }
    void scrollDown() { click(5); }
    /// Keys by the library's names for them: XK_Tab.
    void pressKey(unsigned long key);
    void releaseKey(unsigned long key);
    void typeKey(unsigned long key);
    /// What a window manager does when the user closes a window.
    void closeWindow(unsigned long window);

    /// Red, green and blue in the lowest bytes.
    std::uint32_t pixelAt(double x, double y);
    /// Those of a rectangle of the screen, line by line.
    std::vector<std::uint32_t> pixelsIn(const CGRect& rect);
    /// How many different colours there are in a rectangle of the screen.
    std::size_t coloursIn(const CGRect& rect);
    /// How many pixels of a rectangle of the screen have that colour.
    std::size_t countOf(std::uint32_t colour, const CGRect& rect);

 private:
    struct Close {
        void operator()(Display* display) const;
    };

    std::unique_ptr<Display, Close> display_;
};

}  // namespace test
