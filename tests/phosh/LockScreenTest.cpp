#include "tests/phosh/PhoneShell.hpp"
#include "tests/phosh/Rows.hpp"
#include "tests/rigs/OtherProgram.hpp"
#include "tests/rigs/PulseAudioServer.hpp"
#include "tests/rigs/Waiting.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

namespace test {
namespace {

/// Of a full volume, from the server's unit.
double fractionOf(unsigned volume) {
    return static_cast<double>(volume) / 65536;
}

/// The order of the rows that have a value where there is no Bluetooth.
constexpr std::size_t ringtone = 0;
constexpr std::size_t media = 1;
constexpr std::size_t call = 2;

/// The phone's shell on its compositor, and a sound server behind it.
class LockScreenTest : public testing::Test {
 protected:
    void startSound() { sound.startAndWait(); }
    void startShell(const Environment& variables = {},
                    PhoneShell::Pages pages = PhoneShell::Pages::Mixer) {
        Environment all = {{"PULSE_SERVER", folder.address()}};
        all.insert(variables.begin(), variables.end());
        shell = std::make_unique<PhoneShell>(compositor, all, pages);
    }
    std::vector<FilledTrack> rows() { return filledTracks(compositor.screenshot()); }
    /// Waits until that many sliders are seen away from their left ends.
    bool waitForRows(std::size_t count) {
        return rigs::waitUntil([&] { return rows().size() == count; });
    }
    /// Of the length that the row had at its full volume.
    bool waitForValue(std::size_t row, double fraction, int fullLength, double tolerance = 0.01) {
        return rigs::waitUntil([&] {
            const std::vector<FilledTrack> seen = rows();
            if (seen.size() <= row) return false;
            return std::abs(seen[row].length - fraction * fullLength) <= tolerance * fullLength;
        });
    }
    /// Drags the thumb of a row at its full volume to that fraction of its way, by the pointer.
    void dragFromFull(const FilledTrack& row, double fraction) {
        constexpr int scale = 2;
        constexpr int thumbRadius = 13;  // Points.
        const int begin = (row.left + row.length) / scale + thumbRadius;
        const int end = begin - static_cast<int>((1 - fraction) * row.length) / scale;
        compositor.drag(begin, row.y / scale, end, row.y / scale);
        park();
    }
    void park() { compositor.moveTo(compositor.width() - 1, compositor.height() - 1); }
    void keepPicture(const std::string& name) {
        compositor.saveScreenshot(std::filesystem::path(TEST_PICTURES) / (name + ".png"));
    }

    rigs::ServerFolder folder;
    rigs::PulseAudioServer sound{folder};
    HeadlessPhoc compositor{folder};
    std::unique_ptr<PhoneShell> shell;
};

TEST_F(LockScreenTest, MovesTheServersVolumesAndFollowsThem) {
    startSound();
    rigs::OtherProgram other(folder.address());
    const auto ringing = other.play({.role = "event"});
    startShell();
    shell->swipeToWidgets();
    ASSERT_TRUE(waitForRows(3)) << folder.logged();
    const std::vector<FilledTrack> full = rows();
    keepPicture("locked");

    dragFromFull(full[ringtone], 0.5);
    const auto value = [&ringing] { return fractionOf(ringing->volumes().front()); };
    EXPECT_TRUE(rigs::waitUntil([&] { return std::abs(value() - 0.5) < 0.05; })) << value();
    EXPECT_TRUE(waitForValue(ringtone, value(), full[ringtone].length));
    EXPECT_EQ(fractionOf(sound.sinkVolumes("spk").front()), 1) << "the ringtone alone";
    keepPicture("dragged");

    sound.pactl({"set-sink-input-volume", ringing->index(), "80%"});
    EXPECT_TRUE(waitForValue(ringtone, 0.8, full[ringtone].length));
    // As the volume keys do, which are the shell's while it is locked.
    sound.pactl({"set-sink-volume", "@DEFAULT_SINK@", "30%"});
    EXPECT_TRUE(waitForValue(media, 0.3, full[media].length));
    keepPicture("followed");
}

TEST_F(LockScreenTest, ShowsTheSameAfterUnlockingAndLockingAgain) {
    startSound();
    startShell();
    shell->swipeToWidgets();
    ASSERT_TRUE(waitForRows(3)) << folder.logged();
    sound.pactl({"set-sink-volume", "@DEFAULT_SINK@", "40%"});
    const int fullLength = rows()[call].length;
    ASSERT_TRUE(waitForValue(media, 0.4, fullLength));
    const Screenshot before = compositor.screenshot();
    shell->unlock();
    EXPECT_FALSE(shell->isLocked());
    shell->lock();
    shell->swipeToWidgets();
    ASSERT_TRUE(waitForValue(media, 0.4, fullLength)) << folder.logged();
    EXPECT_TRUE(rigs::waitUntil([&] { return compositor.screenshot() == before; }));
}

TEST_F(LockScreenTest, TurnsThePageByADragThatBeginsOnNoSlider) {
    startSound();
    startShell({}, PhoneShell::Pages::MixerAndEmptyOne);
    shell->swipeToWidgets();
    ASSERT_TRUE(waitForRows(3)) << folder.logged();
    const FilledTrack track = rows()[media];
    compositor.drag(250, track.y / 2, 130, track.y / 2);
    park();
    EXPECT_TRUE(waitForValue(media, 0.3, track.length, 0.1)) << "on a slider it moves that";
    compositor.drag(340, 160, 20, 160);
    park();
    EXPECT_TRUE(waitForRows(0)) << "the next page has no sliders";
    compositor.drag(20, 160, 340, 160);
    park();
    EXPECT_TRUE(waitForRows(3));
}

TEST_F(LockScreenTest, ShowsAShortTextInPlaceOfABundleThatIsNotThere) {
    startShell({{"TARNWICK_BUNDLE", "/nowhere/Mixer.bundle"}});
    shell->swipeToWidgets();
    keepPicture("missing");
    EXPECT_TRUE(shell->isRunning());
    EXPECT_NE(folder.logged().find("/nowhere/Mixer.bundle"), std::string::npos);
    shell->unlock();
    shell->lock();
    EXPECT_TRUE(shell->isRunning()) << folder.logged();
}

TEST_F(LockScreenTest, SaysThatNoSoundServerAnswers) {
    startShell();
    shell->swipeToWidgets();
    EXPECT_TRUE(rigs::waitUntil([this] {
        return folder.logged().find("no sound server answers") != std::string::npos;
    })) << folder.logged();
    keepPicture("silent");
    EXPECT_EQ(rows().size(), 0U) << "nothing is pretended";
    startSound();
    EXPECT_TRUE(waitForRows(3)) << folder.logged();
}

TEST_F(LockScreenTest, LeavesNothingInTheShellLockByLock) {
    startSound();
    startShell();
    const auto once = [this] {
        shell->swipeToWidgets();
        ASSERT_TRUE(waitForRows(3)) << folder.logged();
        shell->unlock();
        shell->lock();
    };
    constexpr int warmingUp = 2;
    constexpr int locks = 5;
    for (int i = 0; i < warmingUp; ++i)
        once();
    const std::size_t descriptors = shell->descriptors();
    for (int i = 0; i < locks; ++i)
        once();
    EXPECT_TRUE(rigs::waitUntil([&] { return shell->descriptors() <= descriptors; }))
        << descriptors << " have become " << shell->descriptors();
}

}  // namespace
}  // namespace test
