#pragma once

#include "backends/bus/Bus.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "shells/desktop/tray/MediaVolume.hpp"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace desktop {

/// The icon as a tray's host sees it on the bus. Main thread.
class TrayItem {
 public:
    static constexpr const char* objectPath = "/StatusNotifierItem";
    /// The shortest time between signals to the host, in seconds: it requests everything again
    /// after each, and a drag changes the volume at each frame.
    static constexpr double pauseSeconds = 0.1;

    /// The user's actions on the icon; x and y are screen points near the icon.
    struct Handlers {
        std::function<void(int x, int y)> activated;
        std::function<void()> secondaryActivated;
        std::function<void(int delta, std::string_view orientation)> scrolled;
    };

    using Look = std::function<TrayLook()>;

    /// `look` returns what the icon shows now.
    TrayItem(GDBusConnection* bus, Look look, Handlers handlers);

    /// The volume may have changed: signals the changes to the host, now or after the pause. Does
    /// not even look while no host shows the icon.
    void lookAgain();
    /// Whether a host shows the icon. A new host is sent everything, since it may have looked
    /// before.
    void setShown(bool shown);

 private:
    static void answerCall(GDBusConnection* bus, const char* sender, const char* path,
                           const char* interface, const char* method, GVariant* arguments,
                           GDBusMethodInvocation* invocation, gpointer item);
    static GVariant* property(GDBusConnection* bus, const char* sender, const char* path,
                              const char* interface, const char* name, GError** error,
                              gpointer item);

    void tell();

    /// The state that the host was sent last; the current one for other callers.
    TrayLook shownLook() const { return told_ ? *told_ : look_(); }

    Look look_;
    std::optional<TrayLook> told_;  ///< While a host shows the icon.
    double toldSeconds_ = 0;        ///< On the run loop's clock.
    OneShotTimer pause_;
    Handlers handlers_;
    bus::BusObject object_;
};

}  // namespace desktop
