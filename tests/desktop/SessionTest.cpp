#include "shells/common/Installation.hpp"
#include "tests/desktop/UserSession.hpp"
#include "tests/processes/RunningProgram.hpp"
#include "tests/rigs/UnixSocket.hpp"
#include "tests/rigs/Waiting.hpp"
#include "tests/support/MixerFiles.hpp"

#include <X11/keysym.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

namespace test {
namespace {

bool says(const UserSession& session, const std::string& part) {
    return rigs::waitUntil([&] { return session.logged().find(part) != std::string::npos; });
}

/// Points; below a notice.
constexpr double settingsButton = 36 + 14;

/// A bus that takes connections and then says nothing.
class SilentBus {
 public:
    explicit SilentBus(const std::filesystem::path& path)
        : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        path.string().copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
        bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        constexpr int waiting = 5;
        listen(socket_, waiting);
    }
    ~SilentBus() { close(socket_); }
    SilentBus(const SilentBus&) = delete;
    SilentBus& operator=(const SilentBus&) = delete;

 private:
    int socket_;
};

TEST(SessionTest, StartedAgainItClosesTheWindowThatIsOpen) {
    const UserSession session;
    ChildProcess first = session.startMixer({});
    EXPECT_EQ(session.waitForWindow().size.width, 560);
    EXPECT_EQ(session.runMixer({}), 0);
    EXPECT_TRUE(session.waitForNoWindow());
    EXPECT_TRUE(rigs::waitUntil([&] { return first.hasEnded(); })) << "nothing could call it back";
}

TEST(SessionTest, WindowSaysItsNameItsProgramAndItsIconInSeveralSizes) {
    const UserSession session;
    const ChildProcess mixer = session.startMixer({"--background"});
    ASSERT_TRUE(says(session, "neither a tray nor a layer shell"));
    const auto iconOnceItIsThere = [&] {
        std::vector<unsigned long> icon;
        EXPECT_TRUE(rigs::waitUntil([&] {
            icon = session.screen.numbersOf(shell::applicationId, "_NET_WM_ICON");
            return !icon.empty();
        }));
        return icon;
    };
    EXPECT_EQ(session.runMixer({}), 0);
    const std::vector<unsigned long> icon = iconOnceItIsThere();
    std::vector<unsigned long> sizes;
    for (std::size_t at = 0; at + 2 < icon.size(); at += 2 + icon[at] * icon[at + 1]) {
        const unsigned long size = icon[at];
        ASSERT_EQ(icon[at + 1], size);
        sizes.push_back(size);
        EXPECT_EQ(icon[at + 2] >> 24U, 0U) << "its corner is clear";
        const unsigned long middle = icon[at + 2 + size / 2 * size + size * 3 / 4];
        EXPECT_EQ(middle >> 24U & 0xFFU, 0xFFU) << "a slider's groove is not";
        EXPECT_LT(middle & 0xFFU, 0x60U) << "and dark";
    }
    EXPECT_EQ(sizes, (std::vector<unsigned long>{16, 24, 32, 48, 64, 128}));
    EXPECT_EQ(session.screen.textOf(shell::applicationId, "_NET_WM_NAME"), "Tarnwick");
    EXPECT_EQ(session.screen.textOf(shell::applicationId, "WM_CLASS"),
              std::string("tarnwick\0org.tarnwick.mixer\0", 28));
    EXPECT_EQ(session.screen.numbersOf(shell::applicationId, "_NET_WM_PID").size(), 1U);
    EXPECT_EQ(session.runMixer({}), 0);
    EXPECT_TRUE(session.waitForNoWindow());
    EXPECT_EQ(session.runMixer({}), 0);
    EXPECT_EQ(iconOnceItIsThere(), icon) << "each window has it";
}

TEST(SessionTest, SaysWhatIsWrongWithTheFilesBelowTheRowsAndOnStandardError) {
    const UserSession session;
    const MixerFiles files;
    MixerFiles::write(files.categoryFile(), "<plist><array><string>A & B</string></array></plist>");
    ChildProcess mixer = session.startMixer({"--preferences", files.folder().string()});
    EXPECT_TRUE(says(session, "tarnwick: " + files.categoryFile().string() +
                                  ".unreadable-1:1:25: a bare '&', which is written '&amp;'; "));
    // Five rows, two lines on the list and one on the server that does not answer.
    constexpr double height = 20 + 5 * 50 + 3 * 14 + 8 + settingsButton;
    EXPECT_TRUE(rigs::waitUntil([&] { return session.waitForWindow().size.height == height; }))
        << session.waitForWindow().size.height;
}

TEST(SessionTest, LooksThroughTheFilesEachTimeItIsShown) {
    const UserSession session;
    const MixerFiles files;
    files.writeCategories({{"Ringtone", "Ringtone"}});
    const std::vector<std::string> arguments = {"--preferences", files.folder().string()};
    ChildProcess mixer =
        session.startMixer({"--preferences", files.folder().string(), "--background"});
    ASSERT_TRUE(says(session, "neither a tray nor a layer shell"));
    EXPECT_EQ(session.runMixer(arguments), 0);
    session.waitForWindow();
    EXPECT_EQ(session.runMixer(arguments), 0);
    EXPECT_TRUE(session.waitForNoWindow());
    files.writeSettings("<key>selectedSkin</key><string>Glass</string>");
    EXPECT_EQ(session.logged().find("Glass"), std::string::npos);
    EXPECT_EQ(session.runMixer(arguments), 0);
    EXPECT_TRUE(says(session, "there is no skin 'Glass'"));
}

TEST(SessionTest, FollowsTheFilesWhileItIsShown) {
    const UserSession session;
    const MixerFiles files;
    const auto show = [&](std::size_t rows) {
        std::vector<CategoryEntry> list(rows, {"Ringtone", "Ringtone"});
        files.writeCategories(list);
    };
    show(2);
    files.writeSettings("<key>selectedSkin</key><string>Glass</string>");
    ChildProcess mixer = session.startMixer({"--preferences", files.folder().string()});
    // With a line on the server that does not answer, and one on the skin.
    constexpr double margins = 20 + 2 * 14 + 8 + settingsButton;
    const auto growsTo = [&](double height) {
        return rigs::waitUntil([&] { return session.waitForWindow().size.height == height; });
    };
    ASSERT_TRUE(growsTo(2 * 50 + margins)) << session.waitForWindow().size.height;
    ASSERT_TRUE(says(session, "there is no skin 'Glass'")) << "the files are watched from then on";
    show(4);
    EXPECT_TRUE(growsTo(4 * 50 + margins));
    // The widget has its rows by now, but counts those of the file once more in the next turn.
    rigs::runFor(0.5);
    MixerFiles::write(files.categoryFile(), "<plist><array><string>A & B</string></array></plist>");
    constexpr double lineHeight = 14;
    EXPECT_TRUE(growsTo(4 * 50 + margins + lineHeight)) << "the rows stay, and a notice says why";
    show(1);
    EXPECT_TRUE(growsTo(50 + margins));
}

TEST(SessionTest, InTheBackgroundItWaitsToBeCalledAndIsHiddenAgain) {
    const UserSession session;
    ChildProcess first = session.startMixer({"--background"});
    ASSERT_TRUE(says(session, "neither a tray nor a layer shell"));
    EXPECT_TRUE(session.screen.windowsOf(shell::applicationId).empty());
    EXPECT_EQ(session.runMixer({}), 0);
    EXPECT_EQ(session.waitForWindow().size.width, 560);
    EXPECT_EQ(session.runMixer({"--background"}), 0);
    rigs::runFor(0.1);
    EXPECT_EQ(session.screen.windowsOf(shell::applicationId).size(), 1U)
        << "that start means nothing";
    EXPECT_EQ(session.runMixer({}), 0);
    EXPECT_TRUE(session.waitForNoWindow());
    EXPECT_FALSE(first.hasEnded());
    EXPECT_EQ(session.runMixer({}), 0);
    session.waitForWindow();
}

TEST(SessionTest, TwoStartsAtOnceAreOneMixer) {
    const UserSession session;
    ChildProcess one = session.startMixer({"--background"});
    ChildProcess other = session.startMixer({"--background"});
    ChildProcess* left = nullptr;
    ASSERT_TRUE(rigs::waitUntil([&] {
        if (one.hasEnded()) left = &other;
        if (other.hasEnded()) left = &one;
        return left != nullptr;
    }));
    rigs::runFor(0.2);
    EXPECT_FALSE(left->hasEnded());
    EXPECT_EQ(session.runMixer({}), 0);
    EXPECT_EQ(session.waitForWindow().size.width, 560);
}

TEST(SessionTest, AnotherSessionOfTheSameUserHasAMixerOfItsOwn) {
    const UserSession session;
    ChildProcess first = session.startMixer({});
    session.waitForWindow();
    const std::string socket = session.folder.path() / "other-bus";
    const ChildProcess bus(
        {"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=unix:path=" + socket},
        {.environment = session.environment(), .log = session.folder.log()});
    ASSERT_TRUE(rigs::waitUntil([&] { return rigs::takesConnections(socket); }));
    Environment elsewhere = session.environment();
    elsewhere["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + socket;
    const auto start = [&] {
        return ChildProcess({TARNWICK_PROGRAM, "--model", "iPad4,1"},
                            {.environment = elsewhere, .log = session.folder.log()});
    };
    const auto windows = [&] { return session.screen.windowsOf(shell::applicationId).size(); };
    ChildProcess second = start();
    EXPECT_TRUE(rigs::waitUntil([&] { return windows() == 2; }));
    EXPECT_EQ(start().wait(), 0) << "which toggles that one";
    EXPECT_TRUE(rigs::waitUntil([&] { return windows() == 1; }));
    EXPECT_FALSE(first.hasEnded());
}

TEST(SessionTest, StartThatWritesTheBusesAddressAnotherWayYieldsToTheOneThatRuns) {
    const UserSession session;
    ChildProcess first = session.startMixer({});
    session.waitForWindow();
    Environment otherwise = session.environment();
    otherwise["DBUS_SESSION_BUS_ADDRESS"] += ";unix:path=/nowhere";
    for (const std::vector<std::string>& options : {std::vector<std::string>{}, {"--background"}}) {
        std::vector<std::string> command = {TARNWICK_PROGRAM, "--model", "iPad4,1"};
        command.insert(command.end(), options.begin(), options.end());
        ChildProcess second(command, {.environment = otherwise, .log = session.folder.log()});
        EXPECT_EQ(second.wait(), 0);
        EXPECT_TRUE(rigs::waitUntil(
            [&] { return session.screen.windowsOf(shell::applicationId).size() == 1; }));
    }
    EXPECT_FALSE(first.hasEnded());
}

TEST(SessionTest, StartBesideOneThatHangsAsksItOnceAndGoesOnByItself) {
    UserSession session;
    ChildProcess first = session.startMixer({});
    const CGRect window = session.waitForWindow();
    ASSERT_EQ(session.runMixer({"--background"}), 0) << "it is on the bus";
    kill(first.id(), SIGSTOP);
    ChildProcess second = session.startMixer({});
    ASSERT_TRUE(rigs::waitUntil(
        [&] { return session.screen.windowsOf(shell::applicationId).size() == 2; }));
    rigs::runFor(0.5);  // Past its first picture.
    session.user.moveTo(CGRectGetMidX(window), CGRectGetMidY(window));
    session.user.typeKey(XK_Escape);
    constexpr double lessThanAnAnswerIsWaitedFor = 3;  // seconds
    EXPECT_TRUE(rigs::waitUntil([&] { return second.hasEnded(); }, lessThanAnAnswerIsWaitedFor));
    kill(first.id(), SIGCONT);
}

TEST(SessionTest, QuitEndsTheOneThatRuns) {
    const UserSession session;
    EXPECT_EQ(session.runMixer({"--quit"}), 0) << "afterwards none runs";
    ChildProcess first = session.startMixer({});
    session.waitForWindow();
    EXPECT_EQ(session.runMixer({"--quit"}), 0);
    EXPECT_TRUE(rigs::waitUntil([&] { return first.hasEnded(); }));
}

TEST(SessionTest, EscapeEndsItWhereNothingCouldCallItBack) {
    UserSession session;
    ChildProcess mixer = session.startMixer({});
    const CGRect window = session.waitForWindow();
    ASSERT_TRUE(says(session, "neither a tray nor a layer shell"));
    session.user.moveTo(CGRectGetMidX(window), CGRectGetMidY(window));
    session.user.typeKey(XK_Escape);
    EXPECT_TRUE(rigs::waitUntil([&] { return mixer.hasEnded(); }));
}

TEST(SessionTest, SimulatedOneAndANewInstanceStandAside) {
    const UserSession session;
    ChildProcess first = session.startMixer({});
    session.waitForWindow();
    ChildProcess simulated = session.startMixer({"--simulate"});
    ChildProcess another = session.startMixer({"--new-instance"});
    EXPECT_TRUE(rigs::waitUntil(
        [&] { return session.screen.windowsOf(shell::applicationId).size() == 3; }));
}

TEST(SessionTest, WithoutABusEachStartHasAWindow) {
    const UserSession session(Bus::None);
    ChildProcess first = session.startMixer({});
    ChildProcess second = session.startMixer({});
    EXPECT_TRUE(rigs::waitUntil(
        [&] { return session.screen.windowsOf(shell::applicationId).size() == 2; }));
    EXPECT_EQ(session.runMixer({"--quit"}), 0);
    EXPECT_TRUE(says(session, "neither a tray nor a layer shell"));
}

TEST(SessionTest, WithoutABusItCannotWaitInTheBackgroundAndSaysSo) {
    const UserSession session(Bus::None);
    ChildProcess mixer = session.startMixer({"--background"});
    EXPECT_EQ(session.waitForWindow().size.width, 560);
    EXPECT_TRUE(says(session, "no session bus"));
}

TEST(SessionTest, BusThatSaysNothingDoesNotHoldTheWindowBack) {
    const UserSession session(Bus::None);
    const std::filesystem::path socket = session.folder.path() / "no-bus";
    const SilentBus bus(socket);
    ChildProcess mixer = session.startMixer({});
    EXPECT_EQ(session.waitForWindow().size.width, 560);
    mixer.signal(SIGTERM);
    EXPECT_TRUE(rigs::waitUntil([&] { return mixer.hasEnded(); })) << "nor its end";
}

TEST(SessionTest, EndOfTheBusLeavesAnOpenWindowAlone) {
    UserSession session;
    ChildProcess mixer = session.startMixer({});
    const CGRect window = session.waitForWindow();
    ASSERT_TRUE(says(session, "neither a tray nor a layer shell"));
    session.endBus();
    rigs::runFor(0.2);
    EXPECT_FALSE(mixer.hasEnded());
    session.user.moveTo(CGRectGetMidX(window), CGRectGetMidY(window));
    session.user.typeKey(XK_Escape);
    EXPECT_TRUE(rigs::waitUntil([&] { return mixer.hasEnded(); }));
}

TEST(SessionTest, EndOfTheBusLeavesOneAloneThatAskedItForAScreenReaderOnly) {
    UserSession session(Bus::Here, Accessibility::Here);
    ChildProcess mixer = session.startMixer({"--new-instance"});
    const auto isOnTheBus = [&] {
        const std::string names = outputOf(
            {"gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
             "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.ListNames"},
            session.environment());
        return std::ranges::count(names, ':') > 1;  // Who asks is there too.
    };
    ASSERT_TRUE(rigs::waitUntil(isOnTheBus));
    session.endBus();
    rigs::runFor(0.2);
    EXPECT_FALSE(mixer.hasEnded());
}

TEST(SessionTest, EndOfTheBusEndsAHiddenOne) {
    UserSession session;
    ChildProcess mixer = session.startMixer({"--background"});
    ASSERT_TRUE(says(session, "neither a tray nor a layer shell"));
    session.endBus();
    EXPECT_TRUE(rigs::waitUntil([&] { return mixer.hasEnded(); }));
}

TEST(SessionTest, NothingWakesAHiddenOneWhileNothingChanges) {
    UserSession session;
    session.sound.startAndWait();
    ChildProcess mixer = session.startMixer({"--background"});
    ASSERT_TRUE(says(session, "neither a tray nor a layer shell"));
    EXPECT_EQ(session.runMixer({}), 0);  // Also after it was shown once.
    session.waitForWindow();
    EXPECT_EQ(session.runMixer({}), 0);
    ASSERT_TRUE(session.waitForNoWindow());
    constexpr double quietSeconds = 1;
    long before = -1;
    EXPECT_TRUE(rigs::waitUntil([&] {
        const long now = sleepsOf(mixer.id());
        const bool rests = now == before;
        before = now;
        if (!rests) rigs::runFor(quietSeconds);
        return rests;
    })) << "it never rests for "
        << quietSeconds << " s";
}

}  // namespace
}  // namespace test
