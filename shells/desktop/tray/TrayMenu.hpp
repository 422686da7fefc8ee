#pragma once

#include "backends/bus/Bus.hpp"

#include <functional>
#include <string>
#include <vector>

namespace desktop {

/// The menu of the tray's icon, which the host draws. Main thread.
class TrayMenu {
 public:
    struct Entry {
        std::string label;
        std::function<void()> chosen;  ///< May end the menu.
    };
    static constexpr const char* objectPath = "/org/tarnwick/mixer/menu";

    /// `opened` is called when a host is about to draw the menu, at the icon as a rule.
    TrayMenu(GDBusConnection* bus, std::vector<Entry> entries, std::function<void()> opened);

 private:
    static void answerCall(GDBusConnection* bus, const char* sender, const char* path,
                           const char* interface, const char* method, GVariant* arguments,
                           GDBusMethodInvocation* invocation, gpointer menu);
    static GVariant* property(GDBusConnection* bus, const char* sender, const char* path,
                              const char* interface, const char* name, GError** error,
                              gpointer menu);
    GVariant* layout() const;
    GVariant* propertiesOf(GVariant* identifiers) const;
    void choose(int identifier) const;
    void chooseAll(GVariant* events) const;

    std::vector<Entry> entries_;
    std::function<void()> opened_;
    bus::BusObject object_;
};

}  // namespace desktop
