#include "bench/comparison/Mixers.hpp"

#include "shells/common/Installation.hpp"
#include "tests/rigs/Waiting.hpp"

#include <X11/keysym.h>

#include <stdexcept>

namespace comparison {
namespace {

constexpr const char* popupClass = "Wrapper-2.0";
// Longer than a menu takes to open.
constexpr double menuSeconds = 0.5;

// Pixels in each mixer's window.
constexpr CGFloat firstTrackBelowTop = 45;
constexpr CGFloat betweenRows = 50;
constexpr CGPoint halfInPopup{112, 24};
constexpr CGPoint halfOfPlayer{133, 213};
constexpr CGPoint entryFromBottom{60, 16};

CGPoint trayIcon(Desk& desk) {
    return desk.trayIcon();
}

CGPoint volumeButton(Desk& /*desk*/) {
    return Desk::volumeButton;
}

CGPoint menuEntry(Desk& desk) {
    desk.click(Desk::volumeButton);
    const CGRect popup = desk.waitForWindow(popupClass, leastHeight);
    rigs::runFor(menuSeconds);
    const CGPoint entry{entryFromBottom.x, CGRectGetMaxY(popup) - entryFromBottom.y};
    desk.moveTo(entry);
    rigs::runFor(menuSeconds);
    return entry;
}

template <int row>
CGPoint halfOfRow(const CGRect& window) {
    return {CGRectGetMidX(window), window.origin.y + firstTrackBelowTop + row * betweenRows};
}

template <const CGPoint& point>
CGPoint inWindow(const CGRect& window) {
    return {window.origin.x + point.x, window.origin.y + point.y};
}

void escape(Desk& desk, unsigned long /*window*/) {
    desk.session.user.typeKey(XK_Escape);
}

void closeWindow(Desk& desk, unsigned long window) {
    const std::ptrdiff_t programs = desk.session.folder.programs();
    desk.session.user.closeWindow(window);
    // Otherwise the next start would only raise the running program's window.
    if (!rigs::waitUntil([&] { return desk.session.folder.programs() < programs; }))
        throw std::runtime_error("it does not end with its window");
}

}  // namespace

Mixer ourMixer() {
    return {"Tarnwick", shell::applicationId, trayIcon, halfOfRow<1>, escape};
}

Mixer ourMixerWithThePlayer() {
    return {"Tarnwick, with a row for the player", shell::applicationId, trayIcon, halfOfRow<2>,
            escape};
}

Mixer ourMixerKeepingApart() {
    return {"Tarnwick, keeping them apart", shell::applicationId, trayIcon, halfOfRow<1>, escape};
}

Mixer panelsMixer() {
    return {"the panel's plugin", popupClass, volumeButton, inWindow<halfInPopup>, escape};
}

Mixer pavucontrol() {
    return {"pavucontrol", "Pavucontrol", menuEntry, inWindow<halfOfPlayer>, closeWindow};
}

}  // namespace comparison
