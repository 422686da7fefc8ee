#pragma once

#include "tests/desktop/XfcePanel.hpp"
#include "tests/rigs/OtherProgram.hpp"

#include <memory>

namespace comparison {

/// What the mixer's file of categories lists.
enum class Rows {
    Default,
    WithThePlayer,  ///< Three rows; the third is the player's own.
};

struct DeskSetting {
    test::Accessibility accessibility = test::Accessibility::None;
    Rows rows = Rows::Default;
    float level = 0;  ///< Of what is played, 0 to 1. 0 keeps level meters still.
};

/// A desktop with all three mixers at hand: a panel with its own volume button in the left corner
/// and the tray icon of our mixer in the right one. A player plays music, and a phone rings.
class Desk {
 public:
    explicit Desk(const DeskSetting& setting);

    void moveTo(const CGPoint& point);
    /// Counts, as that is what the user has to do.
    void click(const CGPoint& point);
    /// The same, at the pace of a hand.
    void clickSlowly(const CGPoint& point);
    int clicks() const { return clicks_; }
    /// To where nothing reacts to it.
    void putPointerAside();
    /// Waits for a window of that class, at least so tall, and answers where it is.
    CGRect waitForWindow(const std::string& windowClass, CGFloat leastHeight) const;
    bool waitForNoWindow(const std::string& windowClass, CGFloat leastHeight) const;

    /// How loud the output is, of 1, while only that one is heard.
    double loudnessOfMusic();
    double loudnessOfRingtone();

    static constexpr CGPoint volumeButton{15, 15};
    CGPoint trayIcon() const { return trayIcon_; }

    test::UserSession session;

 private:
    double loudnessWithout(const rigs::PlayingStream& other);

    test::XfcePanel panel_;
    rigs::OtherProgram player_;
    rigs::OtherProgram phone_;
    rigs::OtherProgram ear_;
    std::unique_ptr<rigs::PlayingStream> music_;
    std::unique_ptr<rigs::PlayingStream> ringtone_;
    rigs::ChildProcess mixer_;
    CGPoint trayIcon_;
    int clicks_ = 0;
};

}  // namespace comparison
