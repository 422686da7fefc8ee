#include "backends/pulse/categories/Roles.hpp"
#include "backends/pulse/outputs/OutputsPlan.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

using namespace pulse;

using Choice = OutputsJournal::Choice;
using Phase = OutputsJournal::Phase;

namespace {

pa_cvolume stereoVolume(double fraction) {
    pa_cvolume volume{};
    pa_cvolume_set(&volume, 2, static_cast<pa_volume_t>(std::lround(fraction * PA_VOLUME_NORM)));
    return volume;
}

double fractionOf(const pa_cvolume& volume) {
    return static_cast<double>(pa_cvolume_max(&volume)) / PA_VOLUME_NORM;
}

}  // namespace

/// A server as the plan sees it: takes the steps one by one, routes streams by their roles, and
/// tells how loud each stream is at the real sink.
class OutputsPlanTest : public testing::Test {
 protected:
    OutputsPlanTest() { reset(false, 1); }

    /// A speaker and headphones, everything on the speaker, and each role with a volume of its own.
    /// `restored` is what the server gives a sink that comes.
    void reset(bool isPipeWire, double restored) {
        mirror = {};
        journal = {};
        memory = {};
        restoredFraction = restored;
        if (isPipeWire) mirror.server.pipeWire = Version{1, 4, 0};
        addReal("spk", 1);
        addReal("hp", 2);
        mirror.server.defaultSinkName = "spk";
        mirror.restoreEntries.emplace();
        addStream(100, "");
        addStream(101, "event");
        addStream(102, "phone");
        sink("spk").volume = stereoVolume(0.8);
        setEntry("event", 0.5);
        setEntry("phone", 0.7, Mute::On);
        journal.choice = Choice::Apart;
    }

    void addReal(const std::string& name, std::uint32_t index) {
        mirror.sinks[name] = {.name = name, .volume = stereoVolume(1), .index = index};
    }
    void addStream(std::uint32_t index, const std::string& role) {
        mirror.sinkInputs.push_back(
            {.index = index, .sinkIndex = 1, .volume = stereoVolume(1), .role = role});
    }
    SinkInput& stream(std::uint32_t index) {
        return *std::ranges::find(mirror.sinkInputs, index, &SinkInput::index);
    }
    void setEntry(const std::string& role, double fraction, Mute mute = Mute::Off) {
        (*mirror.restoreEntries)[roleEntryName(role)] = {.volume = stereoVolume(fraction),
                                                         .mute = mute};
        for (SinkInput& each : mirror.sinkInputs)
            if (each.role == role) {
                each.volume = stereoVolume(fraction);
                each.mute = mute;
            }
    }
    Device& sink(const std::string& name) { return mirror.sinks.at(name); }
    Device& output(const std::string& role) { return sink("input.loopback.sink.role." + role); }

    /// 0 to 1, on the volumes' scale.
    double loudnessOf(const SinkInput& each) const {
        if (each.mute == Mute::On) return 0;
        const Device* device = mirror.sinkOf(each);
        if (!device || device->mute == Mute::On) return 0;
        const double here = fractionOf(each.volume) * fractionOf(device->volume);
        const SinkInput* playback = playbackOf(mirror, *device);
        return playback ? here * loudnessOf(*playback) : here;
    }
    double loudness(std::uint32_t index) { return loudnessOf(stream(index)); }

    void take(const OutputStep& each) {
        std::visit([this](const auto& kind) { apply(kind); }, each);
    }
    void apply(const step::Remember& each) { journal = each.journal; }
    void apply(const step::AskForRouting& /*each*/) { memory.isRouting = true; }
    void apply(const step::Settle& /*each*/) { memory.isSettled = true; }
    void apply(const step::Wake& each) { memory.awake.insert(sink(each.sink).index); }
    void apply(const step::Load& each) {
        const std::uint32_t module = ++lastIndex;
        mirror.sinks[each.sink->name()] = {.name = each.sink->name(),
                                           .volume = stereoVolume(restoredFraction),
                                           .isOfCard = false,
                                           .isOurOutput = true,
                                           .ownerModule = module,
                                           .index = ++lastIndex};
        mirror.sinkInputs.push_back({.index = ++lastIndex,
                                     .sinkIndex = sink(each.real).index,
                                     .volume = stereoVolume(1),
                                     .role = "filter",
                                     .ownerModule = module});
        route();
    }
    void apply(const step::SetVolume& each) {
        if (each.target.kind == Target::Kind::Sink)
            sink(each.target.name).volume = each.volume;
        else
            stream(each.target.sinkInputIndex).volume = each.volume;
    }
    void apply(const step::SetMute& each) {
        if (each.target.kind == Target::Kind::Sink)
            sink(each.target.name).mute = each.mute;
        else
            stream(each.target.sinkInputIndex).mute = each.mute;
    }
    void apply(const step::WriteEntry& each) {
        (*mirror.restoreEntries)[roleEntryName(each.role)] = each.entry;
    }
    void apply(const step::SetDefault& each) {
        mirror.server.defaultSinkName = each.sink;
        memory.isSettled = false;
        route();
    }
    void apply(const step::Move& each) {
        memory.moved[each.sinkInputIndex] = sink(each.sink).index;
        stream(each.sinkInputIndex).sinkIndex = sink(each.sink).index;
    }
    void apply(const step::Unload& each) {
        std::erase_if(mirror.sinks,
                      [&](const auto& named) { return named.second.ownerModule == each.module; });
        std::erase_if(mirror.sinkInputs,
                      [&](const SinkInput& own) { return own.ownerModule == each.module; });
        route();
    }
    /// The device goes, and with it what plays on it.
    void unplug(const std::string& name) {
        const std::uint32_t index = sink(name).index;
        std::set<std::uint32_t> modules;
        for (const SinkInput& each : mirror.sinkInputs)
            if (each.sinkIndex == index && each.role == "filter") modules.insert(each.ownerModule);
        for (const std::uint32_t module : modules)
            apply(step::Unload{module});
        mirror.sinks.erase(name);
        if (mirror.server.defaultSinkName == name || mirror.server.defaultSinkName.empty())
            mirror.server.defaultSinkName = "hp";
        route();
    }
    /// Streams go to the output of their role, and without one to the default sink.
    void route() {
        if (!mirror.sinkNamed(mirror.server.defaultSinkName))
            mirror.server.defaultSinkName = mirror.sinkNamed("spk") ? "spk" : "hp";
        for (SinkInput& each : mirror.sinkInputs) {
            if (each.role == "filter") continue;
            const Device* own = each.role.empty() ? nullptr : deviceOf(roleSinkOf(each), mirror);
            each.sinkIndex = own ? own->index : mirror.defaultSink()->index;
        }
    }

    /// Takes at most that many steps, one after the other, and answers how many there were. `after`
    /// is called after each.
    int run(int most = 1000, const std::function<void()>& after = {}) {
        int count = 0;
        while (count < most) {
            const OutputSteps steps = nextSteps(mirror, journal, memory);
            observe(memory, mirror, journal);
            if (steps.empty()) return count;
            take(steps.front());
            ++count;
            if (after) after();
        }
        return count;
    }
    void expectNeverLouderThan(const std::map<std::uint32_t, double>& before) {
        for (const auto& [index, loudest] : before)
            EXPECT_LE(loudness(index), loudest + 0.0001) << index;
    }
    std::map<std::uint32_t, double> loudnesses() {
        return {{100, loudness(100)}, {101, loudness(101)}, {102, loudness(102)}};
    }

    ServerMirror mirror;
    OutputsJournal journal;
    OutputsMemory memory;
    double restoredFraction = 1;
    std::uint32_t lastIndex = 1000;
};

TEST_F(OutputsPlanTest, DoesNothingWithoutAChoice) {
    for (const Choice choice : {Choice::Undecided, Choice::Declined, Choice::Shared}) {
        journal.choice = choice;
        EXPECT_TRUE(nextSteps(mirror, journal, memory).empty());
    }
}

TEST_F(OutputsPlanTest, WaitsForARealOutput) {
    mirror.sinks = {{"auto_null", {.name = "auto_null", .index = 9}}};
    mirror.server.defaultSinkName = "auto_null";
    EXPECT_TRUE(nextSteps(mirror, journal, memory).empty());
}

TEST_F(OutputsPlanTest, ChangesNoLoudnessAndReachesTheSameWhereverItIsInterrupted) {
    for (const bool isPipeWire : {false, true})
        for (const double restored : {0.2, 1.0}) {
            int steps = 1;
            for (int interrupted = 0; interrupted < steps; ++interrupted) {
                reset(isPipeWire, restored);
                const auto before = loudnesses();
                const auto check = [&] { expectNeverLouderThan(before); };
                const int first = run(interrupted, check);
                memory = {};
                const int rest = run(1000, check);
                steps = std::max(steps, first + rest);
                EXPECT_EQ(journal.phase, Phase::Up);
                EXPECT_EQ(mirror.server.defaultSinkName, mediaSink.name());
                for (const auto& [index, loudness] : before)
                    EXPECT_NEAR(this->loudness(index), loudness, 0.0001) << index;
                EXPECT_NEAR(fractionOf(output("notification").volume), 0.5, 0.0001);
                EXPECT_EQ(output("call").mute, Mute::On);
                EXPECT_EQ(fractionOf(stream(101).volume), 1);
                EXPECT_EQ(fractionOf(sink("spk").volume), fractionOf(stereoVolume(0.8)));
            }
            EXPECT_GT(steps, 8);
        }
}

TEST_F(OutputsPlanTest, GivesTheRealOutputMediasVolumeBackWhereverItIsInterrupted) {
    int steps = 1;
    for (int interrupted = 0; interrupted < steps; ++interrupted) {
        reset(false, 1);
        run();
        output("multimedia").volume = stereoVolume(0.5);
        output("notification").volume = stereoVolume(0.25);
        output("call").mute = Mute::Off;
        journal.choice = Choice::Shared;
        auto before = loudnesses();
        const auto check = [&] { expectNeverLouderThan(before); };
        const int first = run(interrupted, check);
        memory = {};
        steps = std::max(steps, first + run(1000, check));
        EXPECT_EQ(journal.phase, Phase::Down);
        EXPECT_EQ(mirror.server.defaultSinkName, "spk");
        EXPECT_EQ(mirror.sinks.size(), 2U);
        EXPECT_NEAR(loudness(100), before[100], 0.0001);
        EXPECT_NEAR(loudness(101), before[101], 0.0001);
        EXPECT_NEAR(loudness(102), 0.4, 0.0001) << "a call cannot be louder than the real output";
        EXPECT_NEAR(fractionOf(sink("spk").volume), 0.4, 0.0001);
    }
    EXPECT_GT(steps, 6);
}

TEST_F(OutputsPlanTest, KeepsWhatWasSetForARolesStreamsMeanwhile) {
    run();
    setEntry("event", 0.4);
    const double before = loudness(101);
    journal.choice = Choice::Shared;
    run();
    EXPECT_NEAR(loudness(101), before, 0.0001);
    const RestoreEntry& entry = mirror.restoreEntries->at(roleEntryName("event"));
    EXPECT_NEAR(fractionOf(entry.volume), 0.5 * 0.4, 0.0001);
}

TEST_F(OutputsPlanTest, UndoesASwitchThatWasBegunAndChangesNoVolume) {
    for (int begun = 1; begun < 12; ++begun) {
        reset(false, 1);
        const auto before = loudnesses();
        run(begun);
        journal.choice = Choice::Shared;
        if (journal.phase == Phase::Up) break;
        run(1000, [&] { expectNeverLouderThan(before); });
        EXPECT_EQ(loudnesses(), before) << begun;
        EXPECT_EQ(fractionOf(sink("spk").volume), fractionOf(stereoVolume(0.8))) << begun;
        EXPECT_EQ(mirror.sinks.size(), 2U) << begun;
    }
}

// The server gives them their last volumes before anybody else can.
TEST_F(OutputsPlanTest, LeavesNoVolumeAboveFullForTheNextTime) {
    run();
    output("notification").volume = stereoVolume(1.5);
    journal.choice = Choice::Shared;
    double last = 0;
    run(1000, [&] {
        const Device* device = mirror.sinkNamed("input.loopback.sink.role.notification");
        if (device) last = fractionOf(device->volume);
    });
    EXPECT_EQ(last, 1);
}

TEST_F(OutputsPlanTest, GoesOnWithAnotherOutputWhenTheRealOneIsUnpluggedMeanwhile) {
    for (const Choice choice : {Choice::Apart, Choice::Shared})
        for (int taken = 0; taken < 16; ++taken) {
            reset(false, 1);
            if (choice == Choice::Shared) run();
            journal.choice = choice;
            run(taken);
            unplug("spk");
            sink("hp").volume = stereoVolume(0.6);
            run(1000, [&] {
                for (const std::uint32_t index : {100U, 101U, 102U})
                    EXPECT_LE(loudness(index), 0.6 + 0.0001) << taken;
            });
            EXPECT_EQ(journal.phase, choice == Choice::Apart ? Phase::Up : Phase::Down) << taken;
            EXPECT_NEAR(fractionOf(sink("hp").volume), 0.6, 0.0001);
            EXPECT_EQ(mirror.sinks.size(), choice == Choice::Apart ? 5U : 1U) << taken;
        }
}

TEST_F(OutputsPlanTest, FollowsTheOutputThatTheUserPicks) {
    run();
    mirror.server.defaultSinkName = "hp";
    route();
    run();
    EXPECT_EQ(mirror.server.defaultSinkName, mediaSink.name());
    for (const RoleSink& each : roleSinks)
        EXPECT_EQ(realSinkBehind(mirror, deviceOf(each, mirror))->name, "hp") << each.role;
}

// PipeWire's session manager links everything anew after another default, and may undo a move.
TEST_F(OutputsPlanTest, EndsOnThePickedOutputAlsoWhenMovesAreUndoneWhileThatSettles) {
    mirror.server.pipeWire = Version{1, 4, 0};
    run();
    mirror.server.defaultSinkName = "hp";
    route();
    bool wasSettled = memory.isSettled;
    run(1000, [&] {
        if (std::exchange(wasSettled, memory.isSettled) || !memory.isSettled) return;
        for (SinkInput& each : mirror.sinkInputs)
            if (each.role == "filter") each.sinkIndex = sink("spk").index;
    });
    EXPECT_TRUE(memory.isSettled) << "a program may end with the last step";
    EXPECT_EQ(journal.phase, Phase::Up);
    for (const RoleSink& each : roleSinks)
        EXPECT_EQ(realSinkBehind(mirror, deviceOf(each, mirror))->name, "hp") << each.role;
}

TEST_F(OutputsPlanTest, TakesRolesOutOfMediaWhereAnotherMixerMovedThem) {
    run();
    for (SinkInput& each : mirror.sinkInputs)
        if (each.role == "filter" && each.ownerModule != output("multimedia").ownerModule)
            each.sinkIndex = output("multimedia").index;
    run();
    for (const RoleSink& each : roleSinks)
        EXPECT_EQ(playbackOf(mirror, output(std::string(each.role)))->sinkIndex, 1U) << each.role;
}

TEST_F(OutputsPlanTest, FollowsHeadphonesThatArePluggedInWherePulseAudioLeavesThat) {
    run();
    for (const bool isPipeWire : {false, true}) {
        if (isPipeWire) mirror.server.pipeWire = Version{1, 4, 0};
        run();  // Wakes what may sleep.
        const std::string name = isPipeWire ? "usb" : "bt";
        addReal(name, isPipeWire ? 11 : 10);
        sink(name).bus = isPipeWire ? "usb" : "bluetooth";
        run();
        EXPECT_EQ(realSinkBehind(mirror, &output("call"))->name, "bt");
    }
}

TEST_F(OutputsPlanTest, BringsVanishedOutputsBackAtTheirVolumes) {
    run();
    output("multimedia").volume = stereoVolume(0.3);
    run();
    for (const RoleSink& each : roleSinks)
        apply(step::Unload{output(std::string(each.role)).ownerModule});
    mirror.sinks.erase("spk");
    mirror.server.defaultSinkName = "hp";
    route();
    run();
    EXPECT_EQ(mirror.server.defaultSinkName, mediaSink.name());
    EXPECT_NEAR(fractionOf(output("multimedia").volume), 0.3, 0.0001);
    EXPECT_NEAR(fractionOf(output("notification").volume), 0.5, 0.0001);
    EXPECT_EQ(realSinkBehind(mirror, &output("multimedia"))->name, "hp");
}

TEST_F(OutputsPlanTest, KeepsWhatTheServerRestoresWhenASessionBegins) {
    journal.phase = Phase::Up;
    journal.real = "spk";
    restoredFraction = 0.6;
    run();
    EXPECT_EQ(journal.phase, Phase::Up);
    EXPECT_NEAR(fractionOf(output("multimedia").volume), 0.6, 0.0001);
    EXPECT_NEAR(fractionOf(stream(101).volume), 0.5, 0.0001) << "entries are touched once";
}

TEST_F(OutputsPlanTest, LeavesASessionWithRoleOutputsOfItsOwnAlone) {
    mirror.sinks["input.loopback.sink.role.alert"] = {.name = "input.loopback.sink.role.alert"};
    EXPECT_TRUE(nextSteps(mirror, journal, memory).empty());
    journal.phase = Phase::Up;
    EXPECT_TRUE(nextSteps(mirror, journal, memory).empty());
}

TEST_F(OutputsPlanTest, OpensOutputsThatNoModuleOfTheSessionMade) {
    run();
    for (const RoleSink& each : roleSinks) {
        Device& device = output(std::string(each.role));
        for (SinkInput& playback : mirror.sinkInputs)
            if (playback.ownerModule == device.ownerModule)
                playback.nodeName = "output.loopback.sink.role." + std::string(each.role);
        device.ownerModule = PA_INVALID_INDEX;
    }
    output("notification").volume = stereoVolume(0.25);
    const double before = loudness(101);
    journal.choice = Choice::Shared;
    run(1000, [&] { EXPECT_LE(loudness(101), before + 0.0001); });
    EXPECT_EQ(mirror.server.defaultSinkName, "spk");
    EXPECT_EQ(journal.phase, Phase::Down);
    EXPECT_NEAR(loudness(101), before, 0.0001);
    EXPECT_EQ(fractionOf(output("notification").volume), 1);
}

TEST_F(OutputsPlanTest, GoesOnWithoutAStepThatHasNoEffect) {
    run(6);
    const OutputSteps steps = nextSteps(mirror, journal, memory);
    ASSERT_TRUE(std::holds_alternative<step::SetVolume>(steps.front()));
    memory.givenUp.insert(describe(steps.front()));
    for (const OutputStep& each : nextSteps(mirror, journal, memory))
        EXPECT_NE(describe(each), describe(steps.front()));
}
