#pragma once

#include "tests/desktop/XfcePanel.hpp"
#include "tests/rigs/OtherProgram.hpp"

#include <memory>

namespace comparison {

/// The content of the mixer's category file, and of the user's choice.
enum class Rows {
    Default,
    WithThePlayer,  ///< Three rows; the third is the player's own.
    Apart,          ///< The default ones, and each role has an output of its own.
};

struct DeskSetting {
    test::Accessibility accessibility = test::Accessibility::None;
    Rows rows = Rows::Default;
    float level = 0;  ///< Of the played sound, 0 to 1. 0 keeps level meters still.
};

/// A desktop with all three mixers: a panel with its volume button in the left corner and our tray
/// icon in the right one. A player plays music, and a phone rings.
class Desk {
 public:
    explicit Desk(const DeskSetting& setting);

    void moveTo(const CGPoint& point);
    /// Clicks, and counts the click as the user's effort.
    void click(const CGPoint& point);
    /// The same with the timing of a hand.
    void clickSlowly(const CGPoint& point);
    int clicks() const { return clicks_; }
    /// Moves the pointer to a place where nothing reacts to it.
    void putPointerAside();
    /// Waits for a window of that class and at least that height, and returns its position.
    CGRect waitForWindow(const std::string& windowClass, CGFloat leastHeight) const;
    bool waitForNoWindow(const std::string& windowClass, CGFloat leastHeight) const;

    /// How loud the output is, of 1, while only that stream is heard.
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
    test::ChildProcess mixer_;
    CGPoint trayIcon_;
    int clicks_ = 0;
};

}  // namespace comparison
