#include "bench/comparison/Reading.hpp"

#include "bench/comparison/Mixers.hpp"
#include "bench/comparison/ScreenReader.hpp"
#include "tests/desktop/AtSpiClient.hpp"
#include "tests/rigs/Waiting.hpp"

#include <X11/keysym.h>

#include <cstdlib>
#include <stdexcept>

namespace comparison {
namespace {

using Object = test::AtSpiClient::Object;

struct Key {
    const char* name;
    unsigned long symbol;
};
constexpr Key tab{"Tab", XK_Tab};
constexpr Key down{"Down", XK_Down};
constexpr Key left{"Left", XK_Left};

struct Visit {
    Mixer mixer;
    std::vector<Key> keys;
};

/// Moves the focus to two sliders, if the mixer has them, and changes one of them twice.
std::vector<Visit> visits() {
    return {{ourMixer(), {tab, left, left, tab, tab}},
            {panelsMixer(), {down, left, left, down, down}},
            {pavucontrol(), {tab, tab, tab, tab, tab, tab, tab, left, left}}};
}

std::string numberText(double number) {
    std::string text = std::to_string(number);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

void listSliders(test::AtSpiClient& client, const Object& object, std::vector<std::string>& all) {
    if (client.role(object) == test::AtSpiClient::roleSlider &&
        client.hasState(object, test::AtSpiClient::stateShowing))
        all.push_back("'" + client.name(object) + "' " + numberText(client.value(object)) + " of " +
                      numberText(client.greatestValue(object)));
    for (const Object& child : client.children(object))
        listSliders(client, child, all);
}

std::vector<std::string> shownSliders(test::AtSpiClient& client) {
    std::vector<std::string> all;
    listSliders(client, {"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"}, all);
    return all;
}

Reading read(Desk& desk, ScreenReader& reader, test::AtSpiClient& client, const Visit& visit) {
    Reading reading{.name = visit.mixer.name, .words = {}, .sliders = {}};
    const CGPoint target = visit.mixer.approach(desk);
    desk.moveTo(target);
    reading.words.emplace_back("pointer over it", reader.said());
    desk.click(target);
    reading.words.emplace_back("click", reader.said());
    reading.sliders = shownSliders(client);
    for (const Key& key : visit.keys) {
        desk.session.user.typeKey(key.symbol);
        reading.words.emplace_back(key.name, reader.said());
    }
    desk.session.screen.picture().keep("reading-" + visit.mixer.windowClass);
    return reading;
}

}  // namespace

std::vector<Reading> readMixers() {
    std::vector<Reading> readings;
    // A desk for each mixer, so that none is affected by what another left behind.
    for (const Visit& visit : visits()) {
        Desk desk({.accessibility = test::Accessibility::Here});
        const test::Environment environment = desk.session.environment();
        setenv("DBUS_SESSION_BUS_ADDRESS", environment.at("DBUS_SESSION_BUS_ADDRESS").c_str(), 1);
        const test::ChildProcess windowManager(
            {"openbox"}, {.environment = environment, .log = desk.session.folder.log()});
        ScreenReader reader(desk.session);
        test::AtSpiClient client;
        readings.push_back(read(desk, reader, client, visit));
    }
    return readings;
}

}  // namespace comparison
