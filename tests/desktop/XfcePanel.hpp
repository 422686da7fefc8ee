#pragma once

#include "tests/desktop/UserSession.hpp"

namespace test {

/// Whether the panel has its own button for the volume too, in its left corner.
enum class VolumeButton { Here, None };

/// A desktop's panel with little but a tray in it, along the upper edge of a session's screen.
class XfcePanel {
 public:
    static constexpr CGFloat thickness = 30;  // pixels

    /// Comes back when it is on the screen.
    explicit XfcePanel(const UserSession& session, VolumeButton button = VolumeButton::None);

    /// The middle of the icon that has appeared since the picture was taken; waits for it.
    CGPoint waitForIcon(const ScreenPicture& before) const;
    /// The panel's window on the screen.
    CGRect place() const;
    void end();

 private:
    const UserSession& session_;
    ChildProcess process_;
};

}  // namespace test
