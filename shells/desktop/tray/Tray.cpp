#include "shells/desktop/tray/Tray.hpp"

#include "shells/desktop/tray/TrayScroll.hpp"

#include <utility>

Tray::Tray(GDBusConnection* bus, Handlers handlers)
    : menu_(bus, {{"Open the Mixer", handlers.show}, {"Quit", handlers.quit}}),
      item_(bus, [this] { return trayLook(volume_.fraction()); },
            {handlers.toggle, [this] { volume_.toggleSilence(); },
             [this](int delta, std::string_view orientation) {
                 volume_.changeBy(volumeChangeByScroll(delta, orientation));
             }}),
      host_(bus) {
    volume_.setChangeHandler([this] { refresh(); });
    host_.setPresenceHandler([this, changed = std::move(handlers.presenceChanged)] {
        item_.setShown(presence() == TrayHost::Presence::Present);
        changed();
    });
}
