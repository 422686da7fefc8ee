#pragma once

#include "tests/rigs/Conversation.hpp"
#include "tests/rigs/ServerFolder.hpp"
#include "tests/wayland/Screenshot.hpp"

#include <filesystem>
#include <memory>

namespace test {

/// The phone's Wayland compositor without a screen, a graphics card, a seat or a bus, for this test
/// alone; it ends with this object. It takes layer surfaces, and shows any program that is given
/// its environment. There is a pointer, and the picture can be looked at. Everything lies in the
/// folder, which a sound server may share.
class HeadlessPhoc {
 public:
    struct Screen {
        int width = 720;  ///< Pixels.
        int height = 1440;
        int scale = 2;  ///< Pixels a point.
    };

    /// Returns once it answers and the pointer is there. Throws std::runtime_error with what it
    /// said when it does not come up.
    explicit HeadlessPhoc(rigs::ServerFolder& folder) : HeadlessPhoc(folder, Screen{}) {}
    HeadlessPhoc(rigs::ServerFolder& folder, const Screen& screen);
    ~HeadlessPhoc();

    /// For programs that are to be shown: the folder's, with the display.
    Environment environment() const;
    rigs::ServerFolder& folder() const { return folder_; }
    /// Points.
    int width() const { return screen_.width / screen_.scale; }
    int height() const { return screen_.height / screen_.scale; }

    /// The pointer, in whole points of the screen. What it does has reached the compositor when a
    /// call returns, and the programs some time later.
    void moveTo(int x, int y);
    void press();
    void release();
    void click(int x, int y);
    /// Pressed at the one place, moved to the other in that many steps, one a frame, and released
    /// there.
    void drag(int fromX, int fromY, int toX, int toY, int steps = 10);
    /// Two fingers on a touchpad, with the pointer where it stands; one of both must be 0. The
    /// content moves against them: a negative dx shows what lies to the left.
    void swipe(double dx, double dy, int steps);

    /// What the screen shows now.
    Screenshot screenshot() const;
    /// The same as a PNG file.
    void saveScreenshot(const std::filesystem::path& file) const;

 private:
    rigs::ServerFolder& folder_;
    Screen screen_;
    ChildProcess compositor_;
    std::unique_ptr<rigs::Conversation> pointer_;
};

}  // namespace test
