#include "shells/desktop/PopupPlace.hpp"
#include "tests/desktop/AtSpiClient.hpp"
#include "tests/desktop/DesktopFixture.hpp"
#include "tests/desktop/KeyTaker.hpp"
#include "tests/desktop/XDesktop.hpp"
#include "tests/support/FakeRoleOutputs.hpp"

#include <X11/keysym.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

using namespace desktop;

namespace test {
namespace {

/// The library's bridge keeps its connection until the program ends, so the bus stays as long.
SessionBus& sessionBus() {
    static SessionBus bus;
    return bus;
}

bool bridgeIsLoaded() {
    std::ifstream maps("/proc/self/maps");
    const std::string text{std::istreambuf_iterator<char>(maps), {}};
    return text.find("libatk-bridge") != std::string::npos;
}

class AccessibilityTest : public DesktopFixture {
 protected:
    AccessibilityTest() { sessionBus(); }
    ~AccessibilityTest() override {
        window.reset();
        reader.setEnabled(false);
    }

    void openWindow() { open(TARNWICK_ACCESSIBILITY_MODULE); }
    void openWithReader() {
        reader.setEnabled(true);
        openWindow();
    }

    using Object = AtSpiClient::Object;
    /// Opens it with the five sliders of the initial list.
    std::vector<Object> openedSliders() {
        openWithReader();
        const std::vector<Object> found = sliders();
        if (found.size() != 5) throw std::runtime_error("there are not five sliders");
        return found;
    }
    Object frame() {
        const Object program = reader.waitForProgram(g_get_application_name());
        if (program.program.empty()) return {};
        const auto windows = reader.children(program);
        return windows.empty() ? Object{} : windows.front();
    }
    std::vector<Object> sliders() {
        std::vector<Object> found;
        for (const Object& element : reader.children(frame()))
            if (reader.role(element) == AtSpiClient::roleSlider) found.push_back(element);
        return found;
    }

    /// How often an event of that member or detail was told, by that object or by any.
    long timesTold(const std::string& what, const Object& source = {}) const {
        return std::ranges::count_if(reader.events(), [&](const AtSpiClient::Event& event) {
            const bool isMeant = event.member == what || event.detail == what;
            return isMeant && (source.path.empty() || event.source.path == source.path);
        });
    }

    AtSpiClient reader;
};

TEST_F(AccessibilityTest, IsNotLoadedWithoutAListener) {
    reader.setEnabled(false);
    if (bridgeIsLoaded()) GTEST_SKIP() << "an earlier test in this process has loaded it";
    openWindow();
    for (int question = 0; question < 20; ++question)
        reader.setEnabled(false);
    settle();
    EXPECT_FALSE(bridgeIsLoaded());
}

TEST_F(AccessibilityTest, ShowsTheWindowAndItsRows) {
    openWithReader();
    const Object shown = frame();
    ASSERT_FALSE(shown.program.empty());
    EXPECT_EQ(reader.role(shown), AtSpiClient::roleFrame);
    EXPECT_EQ(reader.name(shown), "Tarnwick");
    const auto elements = reader.children(shown);
    ASSERT_EQ(elements.size(), 11U) << "five captions, five sliders, and what closes the window";
    EXPECT_EQ(reader.role(elements[0]), AtSpiClient::roleLabel);
    EXPECT_EQ(reader.role(elements[1]), AtSpiClient::roleSlider);
    EXPECT_EQ(reader.name(elements[0]), "Ringtone: 50%");
    EXPECT_EQ(reader.name(elements[1]), "Ringtone");
    EXPECT_EQ(reader.role(elements[10]), AtSpiClient::roleButton);
    EXPECT_EQ(reader.name(elements[10]), "Close");
}

TEST_F(AccessibilityTest, ButtonCanBePressed) {
    openedSliders();
    const Object button = reader.children(frame()).back();
    EXPECT_TRUE(reader.hasState(button, AtSpiClient::stateEnabled));
    EXPECT_FALSE(reader.hasState(button, AtSpiClient::stateFocusable))
        << "Escape is the key for it";
    EXPECT_TRUE(reader.act(button));
    EXPECT_TRUE(waitUntil([this] { return !window->isShown(); }));
}

TEST_F(AccessibilityTest, GearIsAButtonOfTheMenusNameThatCanBePressed) {
    openedSliders();
    int opened = 0;
    window->setSettingsHandler([&] { ++opened; });
    window->setFooter(std::nullopt);
    std::vector<Object> elements;
    ASSERT_TRUE(waitUntil([&] {
        elements = reader.children(frame());
        return elements.size() == 12;
    }));
    const Object& gear = elements.back();
    EXPECT_EQ(reader.role(gear), AtSpiClient::roleButton);
    EXPECT_EQ(reader.name(gear), "Settings…");
    EXPECT_TRUE(reader.hasState(gear, AtSpiClient::stateFocusable));
    EXPECT_TRUE(reader.act(gear));
    EXPECT_TRUE(waitUntil([&] { return opened == 1; }));
}

TEST_F(AccessibilityTest, OfferIsAnnouncedAndHasButtonsThatCanBePressed) {
    openedSliders();
    FakeRoleOutputs outputs;
    outputs.setChangeHandler([&] { window->setFooter(std::nullopt, &outputs); });
    outputs.follow();
    std::vector<Object> elements;
    ASSERT_TRUE(waitUntil([&] {
        elements = reader.children(frame());
        return elements.size() == 14;
    }));
    EXPECT_EQ(reader.role(elements[11]), AtSpiClient::roleNotification);
    EXPECT_EQ(reader.name(elements[11]), "Media and ringtone share one volume.");
    EXPECT_EQ(reader.name(elements[12]), "Keep them apart");
    EXPECT_EQ(reader.name(elements[13]), "Not now");
    for (const Object& button : {elements[12], elements[13]}) {
        EXPECT_EQ(reader.role(button), AtSpiClient::roleButton);
        EXPECT_TRUE(reader.hasState(button, AtSpiClient::stateFocusable));
        EXPECT_TRUE(reader.hasState(button, AtSpiClient::stateEnabled));
    }
    EXPECT_TRUE(reader.act(elements[12]));
    EXPECT_TRUE(waitUntil([&] { return outputs.chosen == RoleOutputs::Choice::Apart; }));
    EXPECT_TRUE(waitUntil([&] { return reader.children(frame()).size() == 12; }));
    EXPECT_EQ(reader.name(elements[11]), "Keeping them apart\u2026");
    outputs.settle(RoleOutputs::State::Apart);
    EXPECT_TRUE(waitUntil([&] { return reader.children(frame()).size() == 11; }));
    window->setFooter(std::nullopt);
}

TEST_F(AccessibilityTest, NamesHaveNothingThatActsOnTheirReader) {
    files.writeCategories({{"Ringtone", "a\u202Eb\u009Bc\nd"}});
    openWithReader();
    const auto elements = reader.children(frame());
    ASSERT_GE(elements.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_TRUE(reader.name(elements[i]).starts_with("a\uFFFDb\uFFFDc d"))
            << reader.name(elements[i]);
}

TEST_F(AccessibilityTest, SliderCanBeReadAndSet) {
    const auto shown = openedSliders();
    EXPECT_EQ(reader.value(shown[1]), 50);
    EXPECT_EQ(reader.greatestValue(shown[1]), 100);
    reader.setValue(shown[1], 73);
    expectVolume("Audio/Video", 0.73);
    EXPECT_EQ(reader.value(shown[1]), 73);
    settle();
    EXPECT_EQ(reader.name(shown[1]), "Audio/Video (Speaker)");
    EXPECT_EQ(reader.name(reader.children(frame())[2]), "Audio/Video (Speaker): 73%");
    EXPECT_NEAR(volume("Ringtone"), 0.5, 0.0001);
}

TEST_F(AccessibilityTest, ValueOutOfRangeIsBroughtIntoIt) {
    const auto shown = openedSliders();
    reader.setValue(shown[0], 101);
    expectVolume("Ringtone", 1);
    reader.setValue(shown[0], -1);
    expectVolume("Ringtone", 0);
}

TEST_F(AccessibilityTest, TellsEachStepOnceAndTheSameName) {
    const auto shown = openedSliders();
    reader.listen("object:property-change:accessible-value");
    reader.listen("object:property-change:accessible-name");
    settle();
    constexpr int steps = 3;
    for (int step = 1; step <= steps; ++step) {
        reader.setValue(shown[1], 50 + step);
        settle();
        EXPECT_TRUE(waitUntil([&] { return timesTold("accessible-value", shown[1]) >= step; }));
    }
    EXPECT_EQ(timesTold("accessible-value", shown[1]), steps);
    EXPECT_EQ(timesTold("accessible-name", shown[1]), 0);
    EXPECT_EQ(reader.name(shown[1]), "Audio/Video (Speaker)");
}

TEST_F(AccessibilityTest, KeepsTheNameWithoutPercentages) {
    files.writeSettings("<key>displayPercentage</key><false/>");
    const auto shown = openedSliders();
    EXPECT_EQ(reader.name(shown[1]), "Audio/Video (Speaker)");
    EXPECT_EQ(reader.name(shown[0]), "Ringtone");
}

TEST_F(AccessibilityTest, TellsWhereARowIsInAnyZoom) {
    SettingsManager settings(displayName());
    settings.set({{"Xft/DPI", 144 * 1024}});
    openWithReader();
    ASSERT_TRUE(waitUntil([this] { return window->content()->zoom() == 1.5; }));
    ASSERT_TRUE(waitUntil([this] { return sliders().size() == 5; }));
    const CGRect told = reader.extents(sliders()[1]);
    const CGRect shown = slider(1)->convertRectToView(slider(1)->bounds(), nullptr);
    EXPECT_NEAR(told.origin.y, 1.5 * shown.origin.y, 1);
    EXPECT_NEAR(told.size.width, 1.5 * shown.size.width, 1);
}

TEST_F(AccessibilityTest, TellsTheFirstOpeningOfADrawerWithItsNotice) {
    reader.setEnabled(true);
    reader.listen("window:activate");
    reader.listen("object:state-changed:showing");
    open(TARNWICK_ACCESSIBILITY_MODULE, [this] {
        window->setFooter("No sound server answers");
        return std::make_unique<PopupPlace>(gdk_display_get_default(), CGPoint{640, 10}, 0);
    });
    EXPECT_TRUE(waitUntil([this] { return timesTold("Activate") > 0; }));
    EXPECT_TRUE(waitUntil([this] { return timesTold("showing") > 0; }));
    settle();
    EXPECT_EQ(timesTold("Activate"), 1);
    EXPECT_EQ(timesTold("showing"), 1);
    const auto elements = reader.children(frame());
    ASSERT_EQ(elements.size(), 11U);
    EXPECT_EQ(reader.name(elements[10]), "No sound server answers") << "below the rows";
}

TEST_F(AccessibilityTest, TellsANoticeThatComesAndOneThatTakesItsPlace) {
    openedSliders();
    reader.listen("object:state-changed:showing");
    settle();
    window->setFooter("No sound server answers");
    settle();
    ASSERT_TRUE(waitUntil([this] { return timesTold("showing") == 1; }));
    const Object told = reader.events().back().source;
    EXPECT_EQ(reader.role(told), AtSpiClient::roleNotification);
    EXPECT_EQ(reader.name(told), "No sound server answers");
    window->setFooter("The list of rows could not be read");
    settle();
    ASSERT_TRUE(waitUntil([this] { return timesTold("showing") == 2; }));
    EXPECT_EQ(reader.name(told), "The list of rows could not be read");
    device->changeVolume("Ringtone", 0.25F);
    settle();
    EXPECT_EQ(timesTold("showing"), 2) << "nothing new was to be said";
}

TEST_F(AccessibilityTest, RowWithoutAVolumeIsInsensitiveAndCanHaveTheFocus) {
    device->setReadable("HeadsetBT", false);
    const auto shown = openedSliders();
    reader.listen("object:state-changed:sensitive");
    EXPECT_EQ(reader.name(shown[2]), "BT Headset");
    EXPECT_FALSE(reader.hasState(shown[2], AtSpiClient::stateEnabled));
    EXPECT_FALSE(reader.hasState(shown[2], AtSpiClient::stateSensitive));
    EXPECT_TRUE(reader.hasState(shown[2], AtSpiClient::stateFocusable));
    EXPECT_TRUE(reader.hasState(shown[1], AtSpiClient::stateSensitive));
    EXPECT_TRUE(reader.grabFocus(shown[2]));
    device->setReadable("HeadsetBT", true);
    device->changeVolume("HeadsetBT", 0.4F);
    EXPECT_TRUE(waitUntil([&] { return timesTold("sensitive", shown[2]) == 1; }));
    EXPECT_TRUE(reader.hasState(shown[2], AtSpiClient::stateEnabled));
    EXPECT_TRUE(reader.hasState(shown[2], AtSpiClient::stateSensitive));
    EXPECT_EQ(reader.name(shown[2]), "BT Headset");
}

TEST_F(AccessibilityTest, TellsOfAChangeMadeElsewhere) {
    openedSliders();
    reader.watch("accessible-value");
    settle();
    device->changeVolume("Ringtone", 0.25F);
    EXPECT_TRUE(waitUntil([this] { return reader.toldChanges() > 0; }));
}

TEST_F(AccessibilityTest, SaysNothingOfAChangeThatRoundsToTheSamePercentage) {
    openedSliders();
    reader.watch("accessible-value");
    settle();
    device->changeVolume("Ringtone", 0.5004F);
    settle();
    EXPECT_NEAR(reader.value(sliders()[0]), 50.04, 0.001);
    EXPECT_EQ(reader.toldChanges(), 0);
    device->changeVolume("Ringtone", 0.51F);
    EXPECT_TRUE(waitUntil([this] { return reader.toldChanges() > 0; }));
    EXPECT_EQ(reader.toldChanges(), 1);
}

TEST_F(AccessibilityTest, GivesTheFocusWhereItIsAsked) {
    const auto shown = openedSliders();
    EXPECT_TRUE(reader.grabFocus(shown[3]));
    EXPECT_TRUE(slider(3)->isFocused());
    EXPECT_FALSE(reader.grabFocus(reader.children(frame())[0])) << "a label";
}

TEST_F(AccessibilityTest, TellsEverySlidersRangeStepStatesAndPlace) {
    const auto shown = openedSliders();
    for (std::size_t row = 0; row < shown.size(); ++row) {
        EXPECT_EQ(reader.leastValue(shown[row]), 0);
        EXPECT_EQ(reader.greatestValue(shown[row]), 100);
        EXPECT_EQ(reader.increment(shown[row]), 1);
        for (const unsigned state :
             {AtSpiClient::stateEnabled, AtSpiClient::stateFocusable, AtSpiClient::stateShowing})
            EXPECT_TRUE(reader.hasState(shown[row], state)) << state;
        const auto view = slider(row);
        EXPECT_EQ(reader.extents(shown[row]), view->convertRectToView(view->bounds(), nullptr));
    }
}

TEST_F(AccessibilityTest, DisabledSliderSaysSoAndCannotBeSet) {
    openWithReader();
    slider(0)->setEnabled(false);
    settle();
    const auto shown = sliders();
    ASSERT_EQ(shown.size(), 5U);
    EXPECT_FALSE(reader.hasState(shown[0], AtSpiClient::stateEnabled));
    EXPECT_FALSE(reader.hasState(shown[0], AtSpiClient::stateFocusable));
    reader.setValue(shown[0], 90);
    EXPECT_FALSE(reader.grabFocus(shown[0]));
    settle();
    EXPECT_NEAR(volume("Ringtone"), 0.5, 0.0001);
}

TEST_F(AccessibilityTest, TabMovesTheFocusThatIsTold) {
    const auto shown = openedSliders();
    user->moveTo(windowOrigin().x + 5, windowOrigin().y + 100);
    user->typeKey(XK_Tab);
    ASSERT_TRUE(waitUntil([this] { return slider(0)->isFocused(); }));
    EXPECT_TRUE(reader.hasState(shown[0], AtSpiClient::stateFocused));
    EXPECT_FALSE(reader.hasState(shown[1], AtSpiClient::stateFocused));
    user->typeKey(XK_Tab);
    ASSERT_TRUE(waitUntil([this] { return slider(1)->isFocused(); }));
    EXPECT_FALSE(reader.hasState(shown[0], AtSpiClient::stateFocused));
    EXPECT_TRUE(reader.hasState(shown[1], AtSpiClient::stateFocused));
}

TEST_F(AccessibilityTest, KeysOfTheReaderAreNoneOfTheWindow) {
    reader.setEnabled(true);
    const KeyTaker taker(reader.busAddress(), "Escape");
    ASSERT_TRUE(waitUntil([&] { return taker.isListening(); }));
    openWindow();
    ASSERT_EQ(sliders().size(), 5U);
    user->moveTo(windowOrigin().x + 5, windowOrigin().y + 100);
    // The window learns at a time of its own that somebody listens.
    ASSERT_TRUE(waitUntil([&] {
        user->typeKey(XK_Shift_L);
        settle();
        return taker.heard() >= 1;
    }));
    user->typeKey(XK_Tab);
    ASSERT_TRUE(waitUntil([this] { return slider(0)->isFocused(); }));
    EXPECT_EQ(taker.taken(), 0);
    user->typeKey(XK_Escape);
    user->typeKey(XK_Right);
    expectVolume("Ringtone", 0.51);
    EXPECT_EQ(taker.taken(), 1);
    EXPECT_TRUE(window->isShown()) << "Escape was the reader's";
}

TEST_F(AccessibilityTest, ComesWhenItIsSwitchedOnLater) {
    reader.setEnabled(false);
    openWindow();
    settle();
    reader.setEnabled(true);
    EXPECT_EQ(sliders().size(), 5U);
}

TEST_F(AccessibilityTest, ClosedWindowHasNothingToRead) {
    openedSliders();
    const Object shown = frame();
    EXPECT_TRUE(reader.hasState(shown, AtSpiClient::stateShowing));
    window->close();
    EXPECT_TRUE(reader.children(shown).empty());
    EXPECT_FALSE(reader.hasState(shown, AtSpiClient::stateShowing));
    window->show();
    settle();
    EXPECT_EQ(sliders().size(), 5U);
    EXPECT_TRUE(reader.hasState(frame(), AtSpiClient::stateShowing));
}

TEST_F(AccessibilityTest, RowsFollowWhatIsShown) {
    openedSliders();
    window->close();
    files.writeShownCategories(3);
    window->show();
    settle();
    EXPECT_EQ(sliders().size(), 3U);
}

}  // namespace
}  // namespace test
