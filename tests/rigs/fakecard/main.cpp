#include "tests/rigs/fakecard/Card.hpp"

#include <pipewire/impl.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>

// Puts a fake sound card into the PipeWire of PIPEWIRE_REMOTE and PIPEWIRE_RUNTIME_DIR.
//
// usage: fake_card NAME, then lines on standard input, each answered by one line:
//   port NAME | available NAME yes|no|unknown | volume LINEAR | mute yes|no | state
// It says "ready" when the card and its output are there, and ends with its input.

namespace {

class Program {
 public:
    explicit Program(std::string name) : name_(std::move(name)), card_(name_) {}
    int run();

 private:
    void makeOutput(uint32_t deviceId);
    void readLine();
    bool obey(std::istringstream& words);

    std::string name_;
    Card card_;
    pw_main_loop* loop_ = nullptr;
    pw_core* core_ = nullptr;
    spa_hook deviceListener_{};
    spa_hook outputListener_{};
};

// The output of the card: the device's number and its own in the profile tie them together.
void Program::makeOutput(uint32_t deviceId) {
    pw_properties* properties = pw_properties_new(
        "factory.name", "support.null-audio-sink", "media.class", "Audio/Sink", "audio.position",
        "[ FL FR ]", "card.profile.device", "0", "priority.session", "3000", nullptr);
    pw_properties_set(properties, "node.name", ("output." + name_).c_str());
    pw_properties_setf(properties, "device.id", "%u", deviceId);
    pw_properties_setf(properties, "device.routes", "%zu", card_.portCount());
    auto* output = static_cast<pw_proxy*>(pw_core_create_object(
        core_, "adapter", PW_TYPE_INTERFACE_Node, PW_VERSION_NODE, &properties->dict, 0));
    pw_properties_free(properties);
    static constexpr pw_proxy_events events = [] {
        pw_proxy_events all{};
        all.version = PW_VERSION_PROXY_EVENTS;
        all.bound = [](void*, uint32_t) { std::cout << "ready" << std::endl; };
        return all;
    }();
    pw_proxy_add_listener(output, &outputListener_, &events, this);
}

bool Program::obey(std::istringstream& words) {
    std::string command;
    std::string name;
    words >> command;
    if (command == "state") return true;
    if (command == "port" && words >> name) return card_.choosePort(name);
    if (command == "mute" && words >> name) return card_.setMuted(name == "yes"), true;
    float volume = 0;
    if (command == "volume" && words >> volume) return card_.setVolume(volume), true;
    std::string word;
    if (command != "available" || !(words >> name >> word)) return false;
    return card_.setAvailability(name, word == "yes"  ? SPA_PARAM_AVAILABILITY_yes
                                       : word == "no" ? SPA_PARAM_AVAILABILITY_no
                                                      : SPA_PARAM_AVAILABILITY_unknown);
}

void Program::readLine() {
    std::string line;
    if (!std::getline(std::cin, line)) {
        pw_main_loop_quit(loop_);
        return;
    }
    std::istringstream words(line);
    std::cout << (obey(words) ? card_.state() : "error: " + line) << std::endl;
}

int Program::run() {
    loop_ = pw_main_loop_new(nullptr);
    pw_loop* loop = pw_main_loop_get_loop(loop_);
    core_ = pw_context_connect(pw_context_new(loop, nullptr, 0), nullptr, 0);
    if (!core_) {
        std::perror("fake_card: no PipeWire");
        return EXIT_FAILURE;
    }
    auto* device = static_cast<pw_proxy*>(
        pw_core_export(core_, SPA_TYPE_INTERFACE_Device, card_.properties(), card_.device(), 0));
    static constexpr pw_proxy_events events = [] {
        pw_proxy_events all{};
        all.version = PW_VERSION_PROXY_EVENTS;
        all.bound = [](void* self, uint32_t id) { static_cast<Program*>(self)->makeOutput(id); };
        return all;
    }();
    pw_proxy_add_listener(device, &deviceListener_, &events, this);
    const auto input = [](void* self, int, uint32_t) { static_cast<Program*>(self)->readLine(); };
    pw_loop_add_io(loop, STDIN_FILENO, SPA_IO_IN | SPA_IO_HUP, false, input, this);
    return pw_main_loop_run(loop_);
}

}  // namespace

int main(int argc, char** argv) {
    pw_init(&argc, &argv);
    std::cin.rdbuf()->pubsetbuf(nullptr, 0);
    // Ended at once: what the library keeps for itself is none of the tests' business.
    std::_Exit(Program(argc > 1 ? argv[1] : "fake").run());
}
