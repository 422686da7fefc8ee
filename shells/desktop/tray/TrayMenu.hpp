#pragma once

#include "backends/bus/Bus.hpp"

#include <functional>
#include <string>
#include <vector>

/// The menu behind the tray's icon, for the host to draw. Main thread.
class TrayMenu {
 public:
    struct Entry {
        std::string label;
        std::function<void()> chosen;  ///< May end the menu.
    };
    static constexpr const char* objectPath = "/org/tarnwick/mixer/menu";

    TrayMenu(GDBusConnection* bus, std::vector<Entry> entries);

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
    BusObject object_;
};
