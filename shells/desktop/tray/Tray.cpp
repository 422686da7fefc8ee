#include "shells/desktop/tray/Tray.hpp"

#include "shells/desktop/tray/TrayScroll.hpp"

Tray::Icon::Icon(GDBusConnection* bus, const Handlers& handlers)
    : menu(bus, {{"Open the Mixer", handlers.show}, {"Quit", handlers.quit}}, handlers.menuOpened),
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
