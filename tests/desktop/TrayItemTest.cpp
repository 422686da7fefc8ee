#include "shells/common/ApplicationId.hpp"
#include "shells/desktop/Bus.hpp"
#include "tests/desktop/UserSession.hpp"
#include "tests/rigs/Waiting.hpp"

#include <gtest/gtest.h>

namespace test {
namespace {

/// What somebody on the session's bus learns of the mixer's icon.
class IconListener {
 public:
    explicit IconListener(const UserSession& session)
        : bus_(g_dbus_connection_new_for_address_sync(
              session.environment().at("DBUS_SESSION_BUS_ADDRESS").c_str(),
              static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
              nullptr, nullptr, nullptr)) {
        const auto told =
            +[](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*,
                gpointer self) { ++static_cast<IconListener*>(self)->signals_; };
        subscription_ = g_dbus_connection_signal_subscribe(bus_.get(), nullptr, interface, nullptr,
                                                           path, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
                                                           told, this, nullptr);
    }
    ~IconListener() { g_dbus_connection_signal_unsubscribe(bus_.get(), subscription_); }
    IconListener(const IconListener&) = delete;
    IconListener& operator=(const IconListener&) = delete;

    /// Before the latest tooltip that was asked for.
    int signals() const {
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
        return signals_;
    }
    /// Empty while there is none.
    std::string toolTip() const {
        const BusValue answer(g_dbus_connection_call_sync(
            bus_.get(), applicationId, path, "org.freedesktop.DBus.Properties", "Get",
            g_variant_new("(ss)", interface, "ToolTip"), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
            -1, nullptr, nullptr));
        if (!answer) return "";
        GVariant* value = nullptr;
        g_variant_get(answer.get(), "(v)", &value);
        const BusValue kept(value);
        const BusValue title(g_variant_get_child_value(value, 2));
        return g_variant_get_string(title.get(), nullptr);
    }

 private:
    static constexpr const char* interface = "org.kde.StatusNotifierItem";
    static constexpr const char* path = "/StatusNotifierItem";

    BusConnection bus_;
    guint subscription_ = 0;
    int signals_ = 0;
};

TEST(TrayItemTest, TellsNothingOfTheVolumeWhereNobodyShowsTheIcon) {
    UserSession session;
    session.sound.startAndWait();
    const rigs::ChildProcess mixer = session.startMixer({"--background"});
    const IconListener listener(session);
    const auto follows = [&](const char* percent, const char* text) {
        session.sound.pactl({"set-sink-volume", "@DEFAULT_SINK@", percent});
        return rigs::waitUntil([&] { return listener.toolTip() == text; });
    };
    EXPECT_TRUE(follows("30%", "Media: 30%")) << listener.toolTip();
    EXPECT_TRUE(follows("90%", "Media: 90%")) << "whoever asks is answered";
    EXPECT_EQ(listener.signals(), 0);
}

}  // namespace
}  // namespace test
