#include "tests/pulse/OutputsFixture.hpp"

// Switched on and off, and what is heard of that at the real output.

using rigs::OtherProgram;
using rigs::RecordingStream;

class PulseOutputs : public OutputsFixture {};
class PulseOutputsWithoutRouting : public OnPulseAudio {
 protected:
    using Choice = RoleOutputs::Choice;
    RoleOutputs& outputs() { return *controller_->roleOutputs(); }
};
INSTANTIATE_TEST_SUITE_P(On, PulseOutputs, bothServers, serverName);

TEST_P(PulseOutputs, ComeAndGoWithTheChoice) {
    startBoth();
    const std::string before = arrangement();
    EXPECT_EQ(outputs().state(), RoleOutputs::State::Shared);
    ASSERT_TRUE(choose(Choice::Apart));
    EXPECT_EQ(defaultSink(), outputOf("multimedia"));
    ASSERT_EQ(outputs().outputs().size(), 4U);
    for (const RoleOutputs::Output& output : outputs().outputs())
        EXPECT_EQ(output.real, "spk") << output.role;
    ASSERT_TRUE(choose(Choice::Shared));
    EXPECT_EQ(arrangement(), before);
}

TEST_F(PulseOutputsWithoutRouting, AreNotMadeAsRingtonesWouldBeLouder) {
    startBoth();
    outputs().choose(Choice::Apart);
    ASSERT_TRUE(waitUntil([&] { return !outputs().isBusy(); }));
    EXPECT_EQ(outputs().state(), RoleOutputs::State::Unsettled);
    EXPECT_NE(describe(outputs().failure()).find("module-intended-roles"), std::string::npos);
    EXPECT_EQ(server_->pactl({"list", "short", "modules"}).find("remap-sink"), std::string::npos);
}

// The wish behind it: the music is turned down, and nothing else is.
TEST_P(PulseOutputs, GiveEachCategoryAVolumeOfItsOwn) {
    startBoth();
    ASSERT_TRUE(choose(Choice::Apart));
    const std::map<std::string, std::string> roles = {{"Audio/Video", "music"},
                                                      {"Ringtone", "event"},
                                                      {"role:alarm", "alarm"},
                                                      {"PhoneCall", "phone"}};
    OtherProgram program(server_->address());
    const auto ear = program.record("spk.monitor");
    std::map<std::string, float> full;
    const auto levelOf = [&](const std::string& category) {
        EXPECT_TRUE(waitUntil([&] { return ear->left() == 0; })) << "the last one has ended";
        const auto stream = program.play({.role = roles.at(category), .level = 0.1F});
        return heard(*ear);
    };
    for (const auto& [category, role] : roles) {
        full[category] = levelOf(category);
        EXPECT_NEAR(full[category], 0.1F, 0.0001F) << category;
    }
    for (const auto& [moved, role] : roles) {
        ASSERT_TRUE(controller_->setVolumeTo(0.5F, moved));
        ASSERT_TRUE(waitToRead(moved, 0.5F) && isSettled());
        for (const auto& [category, ignored] : roles) {
            const double change = decibels(levelOf(category) / full[category]);
            EXPECT_NEAR(change, category == moved ? -18.06 : 0, 0.1) << category << " by " << moved;
        }
        ASSERT_TRUE(controller_->setVolumeTo(1, moved));
        ASSERT_TRUE(waitToRead(moved, 1) && isSettled());
    }
}

// Nobody's ears are surprised: with music and a ringtone at volumes of their own, switching is
// never louder than before. How long a sound is quieter depends on the machine's load too, which
// only adds to it: the shortest of some times counts, and of more on a machine that is busy.
TEST_P(PulseOutputs, AreNeverLouderWhileTheyComeAndGo) {
    startBoth();
    server_->pactl({"set-sink-volume", "spk", "40000"});
    ASSERT_TRUE(waitForVolume("Audio/Video", 40000.0F / 65536));
    OtherProgram program(server_->address());
    const auto ear = program.record("spk.monitor");
    for (const std::string role : {"music", "event"}) {
        const auto stream = program.play({.role = role, .level = 0.5F});
        ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Ringtone"));
        runFor(0.4);
        const float before = heard(*ear);
        std::map<Choice, double> shortestQuiet{{Choice::Apart, 1}, {Choice::Shared, 1}};
        constexpr double longestQuiet = 0.11;
        const auto isShort = [](const auto& each) { return each.second <= longestQuiet; };
        for (int round = 0;
             round < 4 || (round < 16 && !std::ranges::all_of(shortestQuiet, isShort)); ++round)
            for (auto& [choice, shortest] : shortestQuiet) {
                ear->listen();
                ASSERT_TRUE(choose(choice));
                runFor(0.3);
                const auto quiet = std::ranges::count_if(
                    ear->windows(), [&](float level) { return level < 0.5F * before; });
                shortest =
                    std::min(shortest, static_cast<double>(quiet) * RecordingStream::windowSeconds);
                EXPECT_LE(decibels(*std::ranges::max_element(ear->windows()) / before), 0.1)
                    << role;
                EXPECT_NEAR(decibels(heard(*ear) / before), 0, 0.1) << role;
            }
        for (const auto& [choice, shortest] : shortestQuiet) {
            RecordProperty(role + (choice == Choice::Apart ? "_on_ms" : "_off_ms"),
                           std::to_string(std::lround(shortest * 1000)));
            EXPECT_LE(shortest, longestQuiet) << role;
        }
    }
}

TEST_P(PulseOutputs, LeaveEachCategoryAtItsLoudnessWhenTheyGo) {
    startBoth();
    ASSERT_TRUE(choose(Choice::Apart));
    ASSERT_TRUE(controller_->setVolumeTo(0.5F, "Audio/Video"));
    ASSERT_TRUE(controller_->setVolumeTo(0.25F, "Ringtone"));
    ASSERT_TRUE(controller_->setVolumeTo(0.75F, "PhoneCall"));
    ASSERT_TRUE(isSettled());
    OtherProgram program(server_->address());
    const auto ear = program.record("spk.monitor");
    const auto music = program.play({.role = "music", .level = 0.5F});
    runFor(0.4);
    const float before = heard(*ear);
    EXPECT_NEAR(before, 0.0625F, 0.0001F);
    ear->listen();
    ASSERT_TRUE(choose(Choice::Shared));
    runFor(0.2);
    EXPECT_LE(decibels(*std::ranges::max_element(ear->windows()) / before), 0.1);
    EXPECT_NEAR(decibels(heard(*ear) / before), 0, 0.1);
    EXPECT_EQ(server_->sinkVolumes("spk"), (Channels{32768, 32768}));
    EXPECT_NEAR(volumeOf("Ringtone"), 0.5F, volumeTolerance);
    EXPECT_NEAR(volumeOf("PhoneCall"), 1, volumeTolerance) << "it cannot exceed the music now";
}

TEST_P(PulseOutputs, ComeAndGoAHundredTimesWithoutATrace) {
    startBoth();
    server_->pactl({"set-sink-volume", "spk", "40000"});
    ASSERT_TRUE(controller_->setVolumeTo(0.3F, "Ringtone"));
    ASSERT_TRUE(waitForVolume("Audio/Video", 40000.0F / 65536) && isSettled());
    OtherProgram program(server_->address());
    const auto music = program.play({.role = "music"});
    const auto event = program.play({.role = "event"});
    runFor(0.4);
    ASSERT_TRUE(choose(Choice::Apart));
    ASSERT_TRUE(choose(Choice::Shared));
    const std::string before = arrangement();
    const auto eventBefore = event->volumes();
    for (int round = 0; round < 100; ++round) {
        ASSERT_TRUE(choose(Choice::Apart)) << round;
        ASSERT_TRUE(choose(Choice::Shared)) << round;
    }
    EXPECT_EQ(arrangement(), before);
    EXPECT_EQ(event->volumes(), eventBefore);
    EXPECT_EQ(music->volumes(), (Channels{65536, 65536}));
    EXPECT_NEAR(volumeOf("Ringtone"), 0.3F, 0.0001F);
}

TEST_P(PulseOutputs, ListAndAdoptTheStreamsThatPlayPastThem) {
    startBoth();
    ASSERT_TRUE(choose(Choice::Apart));
    OtherProgram program(server_->address(), {.name = "Player"});
    const auto sound = program.play({.sink = "spk"});
    ASSERT_TRUE(waitUntil([&] { return outputs().strays().size() == 1; }));
    EXPECT_EQ(outputs().strays().front().program, "Player");
    EXPECT_EQ(outputs().strays().front().role, "multimedia");
    EXPECT_EQ(outputs().strays().front().sink, "spk");
    outputs().adopt();
    EXPECT_TRUE(waitUntil([&] { return !outputs().isBusy(); }));
    EXPECT_TRUE(outputs().strays().empty());
}

// A session manager that is busy with a stream loses its move, while the server says that it is
// done. Here the stream is sent back at once.
TEST_P(PulseOutputs, AdoptAStreamWhoseFirstMoveIsLost) {
    if (!isPipeWire()) return;
    startBoth();
    ASSERT_TRUE(choose(Choice::Apart));
    OtherProgram program(server_->address());
    const auto sound = program.play({.sink = "spk"});
    ASSERT_TRUE(waitUntil([&] { return outputs().strays().size() == 1; }));
    outputs().adopt();
    ASSERT_TRUE(waitUntil([&] { return outputs().strays().empty(); }));
    server_->pactl({"move-sink-input", sound->index(), "spk"});
    EXPECT_TRUE(waitUntil([&] { return !outputs().isBusy(); }));
    const std::string media = std::to_string(sound->sinkIndex()) + "\t" + outputOf("multimedia");
    EXPECT_NE(server_->pactl({"list", "short", "sinks"}).find(media), std::string::npos);
}

// Whoever comes next finishes what was begun, and until then nothing is louder than it was.
TEST_P(PulseOutputs, AreFinishedByTheNextMixerWhereverTheLastOneWasKilled) {
    server_->startAndWait();
    OtherProgram program(server_->address());
    program.writeRoleEntry("event", {32768, 32768});
    const auto ear = program.record("spk.monitor");
    const auto music = program.play({.role = "music", .level = 0.3F});
    const auto event = program.play({.role = "event", .level = 0.6F});
    runFor(0.4);
    const float before = heard(*ear);
    for (const Choice choice : {Choice::Apart, Choice::Shared})
        for (const int milliseconds : {0, 1, 2, 4, 8, 16, 32, 64, 128}) {
            startControllerAndWait();
            ear->listen();
            outputs().choose(choice);
            runFor(milliseconds / 1000.0);
            controller_.reset();
            posted_.clear();
            runFor(0.1);
            startFollower();
            const bool isApart = choice == Choice::Apart;
            EXPECT_TRUE(isApart ? waitForOutputs("spk") : waitUntil([&] { return modules() == 0; }))
                << milliseconds;
            runFor(0.2);
            EXPECT_LE(decibels(*std::ranges::max_element(ear->windows()) / before), 0.1)
                << milliseconds;
            EXPECT_NEAR(decibels(heard(*ear) / before), 0, 0.1) << milliseconds;
            EXPECT_EQ(modules(), isApart ? 4 : 0);
            ASSERT_TRUE(choose(isApart ? Choice::Shared : Choice::Apart));
            controller_.reset();
            posted_.clear();
        }
}
