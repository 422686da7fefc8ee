#include "backends/pulse/writes/DeviceMemory.hpp"

#include <gtest/gtest.h>

using namespace pulse;

namespace {

constexpr pa_volume_t full = 65536;
constexpr pa_volume_t quarter = 16384;
constexpr pa_volume_t itsOwn = 26214;

class DeviceMemoryTest : public testing::Test {
 protected:
    DeviceMemoryTest() { mirror.server.pipeWire = Version{0, 3, 65}; }
    void connect(pa_volume_t raw, std::uint32_t index = 7) {
        mirror.sinks["headset"] = {.name = "headset",
                                   .volume = {2, {raw, raw}},
                                   .bus = "bluetooth",
                                   .bluetoothProfile = "a2dp_sink",
                                   .index = index};
    }
    /// The fractions that the headset has to be moved to.
    std::vector<float> observe() {
        std::vector<float> fractions;
        for (const auto& [device, fraction] :
             memory.observe(mirror, now, [this](const VolumeObject&) { return moving; }))
            fractions.push_back(fraction);
        return fractions;
    }
    void remember(float fraction) { memory.remember(headset, fraction, now); }

    const VolumeObject headset{VolumeObject::Kind::Sink, "headset"};
    ServerMirror mirror;
    DeviceMemory memory;
    double now = 100;
    bool moving = false;
};

using Fractions = std::vector<float>;

}  // namespace

TEST_F(DeviceMemoryTest, SetsRightOnceWhatUndoesTheUser) {
    connect(full);
    EXPECT_EQ(observe(), Fractions{});
    remember(0.25F);
    connect(quarter);
    EXPECT_EQ(observe(), Fractions{}) << "it is where the user moved it";
    connect(itsOwn);
    moving = true;
    EXPECT_EQ(observe(), Fractions{}) << "it is on its way";
    moving = false;
    EXPECT_EQ(observe(), Fractions{0.25F});
    EXPECT_EQ(observe(), Fractions{}) << "nobody is fought";
}

TEST_F(DeviceMemoryTest, TakesAStepOfTheHeadsetForWhatTheUserGave) {
    connect(full);
    observe();
    remember(0.25F);
    connect(quarter + full / 127);
    EXPECT_EQ(observe(), Fractions{});
}

TEST_F(DeviceMemoryTest, LeavesAloneWhatTheUserNeverMoved) {
    connect(full);
    observe();
    connect(itsOwn);
    EXPECT_EQ(observe(), Fractions{});
}

TEST_F(DeviceMemoryTest, LeavesAloneWhatHasBeenThereForAWhile) {
    connect(full);
    observe();
    now += DeviceMemory::newSeconds;
    remember(0.25F);
    connect(itsOwn);
    EXPECT_EQ(observe(), Fractions{});
}

TEST_F(DeviceMemoryTest, EndsWhenTheDeviceIsNotNewAnyMore) {
    connect(full);
    observe();
    remember(0.25F);
    now += DeviceMemory::newSeconds;
    connect(itsOwn);
    EXPECT_EQ(observe(), Fractions{});
}

TEST_F(DeviceMemoryTest, TakesAnotherProfileForANewDevice) {
    connect(full);
    observe();
    now += DeviceMemory::newSeconds;
    connect(full, 8);
    EXPECT_EQ(observe(), Fractions{});
    remember(0.25F);
    connect(itsOwn, 8);
    EXPECT_EQ(observe(), Fractions{0.25F});
}

TEST_F(DeviceMemoryTest, IsOfPipeWireAlone) {
    mirror.server.pipeWire.reset();
    connect(full);
    observe();
    remember(0.25F);
    connect(itsOwn);
    EXPECT_EQ(observe(), Fractions{});
}

TEST_F(DeviceMemoryTest, IsOfBluetoothAlone) {
    connect(full);
    mirror.sinks["headset"].bus = "usb";
    observe();
    remember(0.25F);
    mirror.sinks["headset"].volume = {2, {itsOwn, itsOwn}};
    EXPECT_EQ(observe(), Fractions{});
}
