#include "tests/rigs/FakeAlsaCard.hpp"

#include "tests/rigs/Waiting.hpp"
#include "tests/rigs/fakealsa/Elements.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace rigs {
namespace {

// Sound goes nowhere; the control device is the plugin.
std::string libraryConfiguration() {
    return std::string("ctl_type.fake { lib \"") + RIG_FAKE_ALSA_CONTROL +
           "\" }\n"
           "ctl.hw { @args [ CARD ] @args.CARD { type string default \"0\" } type fake }\n"
           "pcm.nowhere { type null }\n";
}

constexpr const char* profileSet =
    "[General]\n"
    "auto-profiles = yes\n"
    "[Mapping analog-stereo]\n"
    "device-strings = nowhere\n"
    "channel-map = left,right\n"
    "paths-output = analog-output-lineout analog-output-speaker analog-output-headphones\n"
    "priority = 15\n"
    "direction = output\n"
    "[Mapping hdmi-stereo]\n"
    "description = Digital Stereo (HDMI)\n"
    "device-strings = nowhere\n"
    "channel-map = left,right\n"
    "paths-output = hdmi-output-0\n"
    "priority = 9\n"
    "direction = output\n";

// Everything at full and on, nothing plugged in.
std::string firstState() {
    std::string state;
    for (const Element& element : elements) {
        const int value = element.kind == Element::Kind::Jack ? 0 : element.highest();
        const ElementState values{value, value};
        state.append(reinterpret_cast<const char*>(values.data()), sizeof values);
    }
    return state;
}

std::size_t jackOf(FakeCard::Plug plug) {
    const std::string name = plug == FakeCard::Plug::Headphones ? "Headphone Jack"
                             : plug == FakeCard::Plug::LineOut  ? "Line Out Jack"
                                                                : "HDMI/DP,pcm=0 Jack";
    const auto found = std::find_if(elements.begin(), elements.end(),
                                    [&](const Element& each) { return name == each.name; });
    return static_cast<std::size_t>(found - elements.begin());
}

}  // namespace

FakeAlsaCard::FakeAlsaCard(SoundServer& server)
    : FakeCard(server), state_(server.folder().path() / "alsa-state") {
    const ServerFolder& folder = server.folder();
    folder.write("alsa-state", firstState());
    folder.write("asound.conf", libraryConfiguration());
    folder.write("profiles.conf", profileSet);
    server.setEnvironment("LD_PRELOAD", RIG_FAKE_ALSA_ONE_CARD);
    server.setEnvironment("ALSA_CONFIG_PATH", (folder.path() / "asound.conf").string());
    server.setEnvironment(stateVariable, state_.string());
}

void FakeAlsaCard::insert() {
    server_.pactl({"load-module", "module-switch-on-port-available"});
    // A device that plays into nothing takes all it can get as long as it is open.
    server_.pactl({"load-module", "module-suspend-on-idle", "timeout=0"});
    server_.pactl({"load-module", "module-alsa-card", "device_id=0", "name=fake",
                   "card_name=alsa_card.fake", "use_ucm=0", "tsched=0",
                   "profile_set=" + (server_.folder().path() / "profiles.conf").string()});
    server_.pactl({"set-default-sink", "alsa_output.fake.analog-stereo"});
    if (!waitUntil([this] { return activePort() == "analog-output-speaker"; }))
        throw std::runtime_error("the fake card is not taken");
}

// The server doesn't go over to a screen by itself, as its sound is a profile of its own.
void FakeAlsaCard::plug(Plug plug) {
    setJack(plug, 1);
    if (plug == Plug::Hdmi) chooseProfile("hdmi-stereo");
}

void FakeAlsaCard::unplug(Plug plug) {
    setJack(plug, 0);
    if (plug == Plug::Hdmi) chooseProfile("analog-stereo");
}

void FakeAlsaCard::chooseProfile(const std::string& profile) const {
    server_.pactl({"set-card-profile", "alsa_card.fake", "output:" + profile});
    server_.pactl({"set-default-sink", "alsa_output.fake." + profile});
}

void FakeAlsaCard::setJack(Plug plug, int value) const {
    const ElementState values{value, value};
    const int file = open(state_.c_str(), O_WRONLY | O_CLOEXEC);
    const ssize_t written = pwrite(file, values.data(), sizeof values,
                                   static_cast<off_t>(jackOf(plug) * sizeof values));
    close(file);
    if (written != sizeof values) throw std::runtime_error("the fake card has lost its state");
}

}  // namespace rigs
