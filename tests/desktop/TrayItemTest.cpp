#include "backends/bus/Bus.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "shells/common/Installation.hpp"
#include "shells/desktop/tray/TrayItem.hpp"
#include "tests/desktop/UserSession.hpp"
#include "tests/rigs/Waiting.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

using namespace desktop;

namespace test {
namespace {

bus::BusConnection connectionTo(const UserSession& session) {
    return bus::BusConnection(g_dbus_connection_new_for_address_sync(
        session.environment().at("DBUS_SESSION_BUS_ADDRESS").c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
}

/// What somebody on the session's bus learns of the mixer's icon.
class IconListener {
 public:
    explicit IconListener(const UserSession& session)
        : bus_(connectionTo(session)),
          told_(bus_.get(), {.path = path, .interface = interface},
                [this](GVariant* /*arguments*/) { ++signals_; }) {}

    /// Before the latest tooltip that was asked for.
    int signals() const {
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
        return signals_;
    }
    /// Empty while there is none.
    std::string toolTip() const {
        const bus::BusValue answer(g_dbus_connection_call_sync(
            bus_.get(), shell::applicationId, path, "org.freedesktop.DBus.Properties", "Get",
            g_variant_new("(ss)", interface, "ToolTip"), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
            -1, nullptr, nullptr));
        if (!answer) return "";
        GVariant* value = nullptr;
        g_variant_get(answer.get(), "(v)", &value);
        const bus::BusValue kept(value);
        const bus::BusValue title(g_variant_get_child_value(value, 2));
        return g_variant_get_string(title.get(), nullptr);
    }

 private:
    static constexpr const char* interface = "org.kde.StatusNotifierItem";
    static constexpr const char* path = "/StatusNotifierItem";

    bus::BusConnection bus_;
    int signals_ = 0;
    bus::BusSignal told_;
};

/// The session's tray, while there is no panel that would show what is in it.
class TrayWithoutPanel {
 public:
    explicit TrayWithoutPanel(const UserSession& session) : bus_(connectionTo(session)) {
        static const GDBusInterfaceVTable table = {taken, isShown, nullptr, {}};
        object_.emplace(bus_.get(), "/StatusNotifierWatcher", description, table, this);
        const bus::BusValue named(g_dbus_connection_call_sync(
            bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
            "RequestName", g_variant_new("(su)", "org.kde.StatusNotifierWatcher", 0U), nullptr,
            G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        if (!named) throw std::runtime_error("the tray gets no name");
    }

    int items() const { return items_; }

 private:
    static constexpr const char* description = R"xml(<node>
      <interface name="org.kde.StatusNotifierWatcher">
        <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
        <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
      </interface>
    </node>)xml";

    static void taken(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                      const char* /*interface*/, const char* /*method*/, GVariant* /*arguments*/,
                      GDBusMethodInvocation* invocation, gpointer self) {
        ++static_cast<TrayWithoutPanel*>(self)->items_;
        g_dbus_method_invocation_return_value(invocation, nullptr);
    }
    static GVariant* isShown(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                             const char* /*interface*/, const char* /*name*/, GError** /*error*/,
                             gpointer /*self*/) {
        return g_variant_new_boolean(FALSE);
    }

    bus::BusConnection bus_;
    std::optional<bus::BusObject> object_;
    int items_ = 0;
};

TEST(TrayItemTest, IsNotThereBeforeThereIsATray) {
    const UserSession session;
    const ChildProcess mixer = session.startMixer({"--background"});
    const IconListener listener(session);
    const auto hasLooked = [&] {
        return session.logged().find("neither a tray nor") != std::string::npos;
    };
    ASSERT_TRUE(rigs::waitUntil(hasLooked));
    EXPECT_EQ(listener.toolTip(), "");
    const TrayWithoutPanel tray(session);
    ASSERT_TRUE(rigs::waitUntil([&] { return tray.items() > 0; }));
    EXPECT_NE(listener.toolTip(), "");
    EXPECT_EQ(tray.items(), 1);
}

TEST(TrayItemTest, SignalsNoVolumeWhileNoHostShowsTheIcon) {
    UserSession session;
    session.sound.startAndWait();
    const TrayWithoutPanel tray(session);
    const ChildProcess mixer = session.startMixer({"--background"});
    const IconListener listener(session);
    const auto follows = [&](const char* percent, const std::string& end) {
        session.sound.pactl({"set-sink-volume", "@DEFAULT_SINK@", percent});
        return rigs::waitUntil([&] { return listener.toolTip().ends_with(end); });
    };
    EXPECT_TRUE(follows("30%", "): 30%")) << listener.toolTip();
    EXPECT_TRUE(listener.toolTip().starts_with("Audio/Video (")) << listener.toolTip();
    EXPECT_TRUE(follows("90%", "): 90%")) << "whoever asks is answered";
    EXPECT_EQ(listener.signals(), 0);
}

TEST(TrayItemTest, CallsTheVolumeAsItsRowDoes) {
    UserSession session;
    session.sound.startAndWait();
    const MixerFiles files;
    files.writeCategories({{"Ringtone", "Bell"}, {"Audio/Video", "Music"}});
    const TrayWithoutPanel tray(session);
    const ChildProcess mixer =
        session.startMixer({"--background", "--preferences", files.folder().string()});
    const IconListener listener(session);
    EXPECT_TRUE(rigs::waitUntil([&] { return listener.toolTip().starts_with("Music ("); }))
        << listener.toolTip();
    files.writeCategories({{"Audio/Video", "Media"}});
    EXPECT_EQ(session.runMixer({"--preferences", files.folder().string()}), 0);
    EXPECT_TRUE(rigs::waitUntil([&] { return listener.toolTip().starts_with("Media ("); }))
        << "the rows have been read anew, and " << listener.toolTip();
}

TEST(TrayItemTest, SaysNothingThatActsOnThePanel) {
    UserSession session;
    session.sound.startAndWait();
    const MixerFiles files;
    files.writeCategories({{"Audio/Video", "Mu\u202Es\u009Bic\u2067\n"}});
    const TrayWithoutPanel tray(session);
    const ChildProcess mixer =
        session.startMixer({"--background", "--preferences", files.folder().string()});
    const IconListener listener(session);
    const std::string harmless = "Mu\uFFFDs\uFFFDic\uFFFD  (";
    EXPECT_TRUE(rigs::waitUntil([&] { return listener.toolTip().starts_with(harmless); }))
        << listener.toolTip();
}

/// An icon of the test's own, shown by a host, in virtual time.
class ShownIcon : public testing::Test {
 protected:
    ShownIcon() {
        NSRunLoop::mainRunLoop().setClock([this] { return now_; });
        item.setShown(true);
        expectSignals(2);
    }
    ~ShownIcon() override { NSRunLoop::mainRunLoop().setClock({}); }

    void advance(double seconds) {
        now_ += seconds;
        NSRunLoop::mainRunLoop().runDue();
    }
    void changeTo(int percent) {
        percent_ = percent;
        item.lookAgain();
    }
    /// That so many came since the icon is there.
    void expectSignals(int count) {
        // What was sent before this comes before it.
        g_dbus_connection_emit_signal(bus.get(), nullptr, TrayItem::objectPath,
                                      "org.kde.StatusNotifierItem", "NewTitle", nullptr, nullptr);
        ++marks_;
        ASSERT_TRUE(
            rigs::waitUntil([this, count] { return listener.signals() >= count + marks_; }));
        EXPECT_EQ(listener.signals() - marks_, count);
    }

    UserSession session;
    bus::BusConnection bus = connectionTo(session);
    IconListener listener{session};
    int percent_ = 0;
    int lookedAt_ = 0;  ///< The percentage that was there when the icon looked last.
    double now_ = 1;
    int marks_ = 0;
    TrayItem item{bus.get(),
                  [this] {
                      lookedAt_ = percent_;
                      return TrayLook{"icon", std::to_string(percent_)};
                  },
                  {}};
};

TEST_F(ShownIcon, TellsOfAChangeAtOnce) {
    changeTo(1);
    expectSignals(3);
    advance(10);
    changeTo(2);
    expectSignals(4);
    changeTo(2);
    advance(10);
    expectSignals(4);
}

TEST_F(ShownIcon, SignalsManyChangesAFewTimesASecondAndAlwaysTheLastOne) {
    changeTo(1);
    // In a second and a bit. The first one after each pause comes 0.12 s after the one before.
    for (int percent = 2; percent <= 35; ++percent) {
        advance(0.03);
        changeTo(percent);
    }
    expectSignals(2 + 1 + 8);
    advance(TrayItem::pauseSeconds);
    EXPECT_EQ(lookedAt_, 35);
    expectSignals(2 + 1 + 9);
    EXPECT_EQ(NSRunLoop::mainRunLoop().nextDue(), std::nullopt) << "nothing is left to wake for";
}

TEST_F(ShownIcon, SaysNothingWhereTheVolumeHasComeBackInThePause) {
    changeTo(1);
    changeTo(2);
    changeTo(1);
    advance(TrayItem::pauseSeconds);
    expectSignals(3);
}

TEST_F(ShownIcon, SendsTheCurrentStateToAHostThatAppearsInThePause) {
    changeTo(1);
    changeTo(2);
    item.setShown(false);
    advance(TrayItem::pauseSeconds);
    expectSignals(3);
    item.setShown(true);
    EXPECT_EQ(lookedAt_, 2);
    expectSignals(5);
}

}  // namespace
}  // namespace test
