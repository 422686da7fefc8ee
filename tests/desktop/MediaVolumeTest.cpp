#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/desktop/tray/MediaVolume.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>

using namespace desktop;

namespace test {
namespace {

class MediaVolumeTest : public testing::Test {
 protected:
    MediaVolumeTest() { AVSystemController::setSharedAVSystemController(device); }
    ~MediaVolumeTest() override {
        AVSystemController::setSharedAVSystemController(nullptr);
        NSRunLoop::mainRunLoop().runDue();
    }

    std::shared_ptr<SimulatedAudioDevice> device = std::make_shared<SimulatedAudioDevice>();
    MediaVolume volume;
};

TEST_F(MediaVolumeTest, IsThatOfTheMediaCategory) {
    device->changeVolume("Audio/Video", 0.3F);
    device->changeVolume("Ringtone", 0.9F);
    ASSERT_TRUE(volume.fraction());
    EXPECT_FLOAT_EQ(*volume.fraction(), 0.3F);
}

TEST_F(MediaVolumeTest, IsCalledAsItsRowIs) {
    shell::installBackends();
    const MixerFiles files;
    setPreferencesDirectory(files.folder().string());
    volume.readName();
    EXPECT_EQ(volume.title(), "Audio/Video (Speaker)") << "as long as there is no list";
    files.writeCategories({{"Ringtone", "Bell"}, {"Audio/Video", "Music"}});
    EXPECT_EQ(volume.title(), "Audio/Video (Speaker)");
    volume.readName();
    EXPECT_EQ(volume.title(), "Music (Speaker)");
    files.writeCategories({{"Ringtone", "Bell"}});
    volume.readName();
    EXPECT_EQ(volume.title(), "Audio/Video (Speaker)") << "it has no row";
    AVSystemController::setSharedAVSystemController(nullptr);
    EXPECT_EQ(volume.title(), "Audio/Video") << "nobody knows where it sounds";
    setPreferencesDirectory("");
}

TEST_F(MediaVolumeTest, ChangesGoThroughTheServiceAndStopAtTheEnds) {
    device->changeVolume("Audio/Video", 0.92F);
    volume.changeBy(0.05F);
    EXPECT_FLOAT_EQ(*volume.fraction(), 0.97F);
    volume.changeBy(0.05F);
    EXPECT_FLOAT_EQ(*volume.fraction(), 1);
    volume.changeBy(-2);
    EXPECT_FLOAT_EQ(*volume.fraction(), 0);
    volume.changeBy(-0.05F);
    EXPECT_FLOAT_EQ(*volume.fraction(), 0);
}

TEST_F(MediaVolumeTest, TellsOfChangesMadeElsewhere) {
    int told = 0;
    volume.setChangeHandler([&told] { ++told; });
    device->changeVolume("Audio/Video", 0.3F);
    NSRunLoop::mainRunLoop().runDue();
    EXPECT_GE(told, 1);
}

TEST_F(MediaVolumeTest, SilenceReturnsToWhereItWas) {
    device->changeVolume("Audio/Video", 0.3F);
    volume.toggleSilence();
    EXPECT_FLOAT_EQ(*volume.fraction(), 0);
    volume.toggleSilence();
    EXPECT_FLOAT_EQ(*volume.fraction(), 0.3F);
}

TEST_F(MediaVolumeTest, SilenceIsTheDevicesOwnMuteWhoeverBeganIt) {
    device->changeVolume("Audio/Video", 0.3F);
    volume.toggleSilence();
    const AVSystemController::Level muted{0.3F, AVSystemController::Mute::On};
    EXPECT_EQ(device->levelOf("Audio/Video"), muted);
    MediaVolume another;  // As after a restart.
    another.toggleSilence();
    EXPECT_FLOAT_EQ(*volume.fraction(), 0.3F);
}

TEST_F(MediaVolumeTest, StepOutOfSilenceBeginsWhereTheVolumeWas) {
    device->changeVolume("Audio/Video", 0.8F);
    volume.toggleSilence();
    volume.changeBy(0.05F);
    EXPECT_FLOAT_EQ(*volume.fraction(), 0.85F);
    volume.toggleSilence();
    volume.changeBy(-0.05F);
    EXPECT_FLOAT_EQ(*volume.fraction(), 0.8F);
    device->changeVolume("Audio/Video", 1);
    volume.toggleSilence();
    volume.changeBy(0.05F);
    EXPECT_FLOAT_EQ(*volume.fraction(), 1);
}

TEST_F(MediaVolumeTest, UnmutingAfterSilenceSetElsewhereGoesToTheMiddle) {
    device->changeVolume("Audio/Video", 0);
    volume.toggleSilence();
    EXPECT_FLOAT_EQ(*volume.fraction(), 0.5F);
}

TEST_F(MediaVolumeTest, WithoutAServiceThereIsNothingToReadOrChange) {
    AVSystemController::setSharedAVSystemController(nullptr);
    EXPECT_EQ(volume.fraction(), std::nullopt);
    volume.changeBy(0.5F);
    volume.toggleSilence();
    AVSystemController::setSharedAVSystemController(device);
    EXPECT_FLOAT_EQ(*volume.fraction(), 0.5F);
}

}  // namespace
}  // namespace test
