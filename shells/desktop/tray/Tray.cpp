#include "shells/desktop/tray/Tray.hpp"

#include "shells/common/Translation.hpp"
#include "shells/desktop/tray/MediaVolume.hpp"

namespace desktop {

Tray::Icon::Icon(GDBusConnection* bus, const Handlers& handlers)
    : menu(bus,  // TRANSLATORS: In the menu of the icon in the tray.
           {{shell::translated("Open the Mixer"), handlers.show},
            // TRANSLATORS: In the menu of the icon in the tray.
            {shell::translated("Settings…"), handlers.settings},
            // TRANSLATORS: In the menu of the icon in the tray.
            {shell::translated("Quit"), handlers.quit}},
           handlers.menuOpened),
      item(bus, [this] { return trayLook(volume.title(), volume.fraction()); },
           {handlers.toggle, [this] { volume.toggleSilence(); },
            [this](int delta, std::string_view orientation) {
                volume.changeBy(volumeChangeByScroll(delta, orientation));
            }}) {
    volume.setChangeHandler([this] { item.lookAgain(); });
}

Tray::Tray(GDBusConnection* bus, const Handlers& handlers)
    : host_(bus, {.came =
                      [this, bus, handlers] {
                          if (!icon_) icon_.emplace(bus, handlers);
                      },
                  .presenceChanged =
                      [this, changed = handlers.presenceChanged] {
                          if (icon_)
                              icon_->item.setShown(presence() == TrayHost::Presence::Present);
                          changed();
                      }}) {}

void Tray::refresh() {
    if (!icon_) return;
    icon_->volume.readName();
    icon_->item.lookAgain();
}

}  // namespace desktop
