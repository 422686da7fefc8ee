#pragma once

#include "platform/celestial/RoleOutputs.hpp"
#include "tests/pulse/ServiceFixture.hpp"

#include <algorithm>
#include <cmath>
#include <regex>
#include <utility>

inline double decibels(float level) {
    return 20 * std::log10(std::max(level, 1e-6F));
}

/// The sink of a role.
inline std::string outputOf(const std::string& role) {
    return "input.loopback.sink.role." + role;
}

/// The switch that gives each role an output of its own, on servers as people have them: with the
/// modules that PulseAudio loads by default.
class OutputsFixture : public OnBothServers {
 protected:
    using Choice = RoleOutputs::Choice;
    void SetUp() override { server_->beAsInASession(); }

    /// A mixer that stays, and keeps to the user's choice.
    void startFollower() {
        startControllerAndWait();
        outputs().follow();
    }
    bool waitForOutputs(const std::string& real) {
        return waitUntil([&] {
            const auto all = outputs().outputs();
            return outputs().state() == RoleOutputs::State::Apart && !outputs().isBusy() &&
                   all.size() == 4 &&
                   std::ranges::all_of(all, [&](const auto& each) { return each.real == real; });
        });
    }
    int modules() {
        const std::string all = server_->pactl({"list", "short", "modules"});
        int count = 0;
        for (std::size_t at = all.find("remap-sink"); at != std::string::npos;
             at = all.find("remap-sink", at + 1))
            ++count;
        return count;
    }
    RoleOutputs& outputs() { return *controller_->roleOutputs(); }
    /// Waits until the request is done.
    testing::AssertionResult choose(Choice choice) {
        outputs().choose(choice);
        const auto wanted =
            choice == Choice::Apart ? RoleOutputs::State::Apart : RoleOutputs::State::Shared;
        if (waitUntil([&] { return !outputs().isBusy(); }) && outputs().state() == wanted)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "state " << static_cast<int>(outputs().state())
                                           << ", " << describe(outputs().failure()) << "\n"
                                           << server_->pactl({"list", "short", "sinks"});
    }
    std::string defaultSink() {
        std::string name = server_->pactl({"get-default-sink"});
        if (!name.empty()) name.pop_back();
        return name;
    }
    bool isSettled() {
        return waitUntil([&] { return !controller_->isWriting(); });
    }
    /// What is heard of the real output, once there is a sound and it stays the same.
    static float heard(const rigs::RecordingStream& ear) {
        float last = -1;
        waitUntil([&] {
            runFor(0.06);
            const float now = ear.left();
            return std::abs(std::exchange(last, now) - now) <= 0.001F * now && now > 0;
        });
        return last;
    }
    /// Everything that other programs see of the server's arrangement, except for whether the
    /// devices run.
    std::string arrangement() {
        std::string all = "default " + defaultSink() + "\n";
        for (const char* kind : {"modules", "sinks", "sink-inputs", "sources"})
            all += server_->pactl({"list", "short", kind});
        for (const char* sink : {"spk", "hp"})
            all +=
                server_->pactl({"get-sink-volume", sink}) + server_->pactl({"get-sink-mute", sink});
        return std::regex_replace(all, std::regex("IDLE|RUNNING"), "SUSPENDED");
    }
};
