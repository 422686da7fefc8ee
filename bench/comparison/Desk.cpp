#include "bench/comparison/Desk.hpp"

#include "tests/rigs/Waiting.hpp"

#include <algorithm>
#include <stdexcept>

namespace comparison {
namespace {

// Long enough for buffered sound to reach the output.
constexpr double hearingSeconds = 1;
// Between two checks of an icon that changes once the volume is known.
constexpr double restSeconds = 0.5;
// Between moving to a place, pressing and releasing.
constexpr double handSeconds = 0.15;
constexpr unsigned fullVolume = 65536;

constexpr const char* categories = R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><array>
<dict><key>categoryName</key><string>Ringtone</string>
<key>prettyCategoryName</key><string>Ringtone</string><key>visible</key><true/></dict>
<dict><key>categoryName</key><string>Audio/Video</string>
<key>prettyCategoryName</key><string>Audio/Video</string><key>visible</key><true/></dict>
<dict><key>categoryName</key><string>app:Player</string>
<key>prettyCategoryName</key><string>Player</string><key>visible</key><true/></dict>
</array></plist>
)";

test::UserSession& withSound(test::UserSession& session) {
    session.sound.beAsInASession();
    session.sound.startAndWait();
    session.user.moveTo(test::XServer::width / 2., test::XServer::height - 10.);
    return session;
}

}  // namespace

Desk::Desk(const DeskSetting& setting)
    : session(test::Bus::Here, setting.accessibility),
      panel_(withSound(session), test::VolumeButton::Here),
      player_(session.sound.address(), {.name = "Player"}),
      phone_(session.sound.address(), {.name = "Phone"}),
      ear_(session.sound.address(), {.name = "Ear"}) {
    phone_.writeRoleEntry("event", {fullVolume, fullVolume});
    music_ = player_.play({.role = "music", .level = setting.level});
    if (setting.rows == Rows::WithThePlayer)
        session.folder.write("config/tarnwick/org.tarnwick.mixer.categories.plist", categories);
    if (setting.rows == Rows::Apart)
        session.folder.write("state/tarnwick/outputs", "[outputs]\nchoice=apart\n");
    rigs::runFor(restSeconds);  // The panel's button appears after the panel.
    const test::ScreenPicture before = session.screen.picture();
    mixer_ = session.startMixer({"--background"});
    trayIcon_ = panel_.waitForIcon(before);
    ringtone_ = phone_.play({.role = "event", .level = setting.level});
    rigs::runFor(restSeconds);
}

void Desk::moveTo(const CGPoint& point) {
    session.user.moveTo(point.x, point.y);
}

void Desk::click(const CGPoint& point) {
    moveTo(point);
    session.user.click();
    ++clicks_;
}

void Desk::clickSlowly(const CGPoint& point) {
    moveTo(point);
    rigs::runFor(handSeconds);
    session.user.press();
    rigs::runFor(handSeconds);
    session.user.release();
    ++clicks_;
}

void Desk::putPointerAside() {
    moveTo({test::XServer::width / 2., test::XServer::height - 10.});
}

CGRect Desk::waitForWindow(const std::string& windowClass, CGFloat leastHeight) const {
    CGRect found;
    const auto comes = [&] {
        const auto windows = session.screen.windowsOf(windowClass);
        const auto fits = [&](const CGRect& each) { return each.size.height >= leastHeight; };
        const auto window = std::ranges::find_if(windows, fits);
        if (window != windows.end()) found = *window;
        return window != windows.end();
    };
    if (!rigs::waitUntil(comes)) {
        session.screen.picture().keep("no-window");
        throw std::runtime_error("no window of " + windowClass);
    }
    return found;
}

bool Desk::waitForNoWindow(const std::string& windowClass, CGFloat leastHeight) const {
    return rigs::waitUntil([&] {
        return std::ranges::none_of(session.screen.windowsOf(windowClass), [&](const CGRect& each) {
            return each.size.height >= leastHeight;
        });
    });
}

double Desk::loudnessOfMusic() {
    return loudnessWithout(*ringtone_);
}

double Desk::loudnessOfRingtone() {
    return loudnessWithout(*music_);
}

double Desk::loudnessWithout(const rigs::PlayingStream& other) {
    session.sound.pactl({"set-sink-input-mute", other.index(), "1"});
    const auto hearing = ear_.record("spk.monitor");
    rigs::runFor(hearingSeconds);
    const double heard = double{hearing->left()};
    session.sound.pactl({"set-sink-input-mute", other.index(), "0"});
    return heard;
}

}  // namespace comparison
