#pragma once

#include "backends/bus/Bus.hpp"
#include "platform/foundation/OneShotTimer.hpp"
#include "shells/desktop/tray/TrayLook.hpp"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// The icon as a tray's host sees it on the bus. Main thread.
class TrayItem {
 public:
    static constexpr const char* objectPath = "/StatusNotifierItem";
    /// The host is told at most so often: it asks for everything anew each time, and in a drag the
    /// volume is another at each frame.
    static constexpr double pauseSeconds = 0.1;

    /// What the user does with the icon; x and y are points of the screen, near the icon.
    struct Handlers {
        std::function<void(int x, int y)> activated;
        std::function<void()> secondaryActivated;
        std::function<void(int delta, std::string_view orientation)> scrolled;
    };

    using Look = std::function<TrayLook()>;

    /// `look` answers what the icon shows now.
    TrayItem(GDBusConnection* bus, Look look, Handlers handlers);

    /// It may show another volume: tells the host what is another now, or after the pause. Where
    /// nobody shows the icon it does not even look.
    void lookAgain();
    /// Whether a host shows the icon. One that comes is told all: it may have looked before that
    /// was known.
    void setShown(bool shown);

 private:
    static void answerCall(GDBusConnection* bus, const char* sender, const char* path,
                           const char* interface, const char* method, GVariant* arguments,
                           GDBusMethodInvocation* invocation, gpointer item);
    static GVariant* property(GDBusConnection* bus, const char* sender, const char* path,
                              const char* interface, const char* name, GError** error,
                              gpointer item);

    void tell();

    /// What the host was told; to whoever else asks, what is now.
    TrayLook shownLook() const { return told_ ? *told_ : look_(); }

    Look look_;
    std::optional<TrayLook> told_;  ///< While a host shows the icon.
    double toldSeconds_ = 0;        ///< On the run loop's clock.
    OneShotTimer pause_;
    Handlers handlers_;
    BusObject object_;
};
