#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "shells/sound/SoundService.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace {

class SoundServiceTest : public testing::Test {
 protected:
    SoundServiceTest() {
        NSRunLoop::mainRunLoop().setClock([this] { return now; });
    }
    ~SoundServiceTest() override {
        service.reset();
        advance(10);
        NSRunLoop::mainRunLoop().setClock({});
    }

    SoundService& make(SoundSource source, const std::string& module = FAKE_SOUND_SERVER) {
        service = std::make_unique<SoundService>(source, module);
        service->setChangeHandler([this] { ++changes; });
        return *service;
    }
    void advance(double seconds) {
        now += seconds;
        NSRunLoop::mainRunLoop().runDue();
    }
    static void tell(const char* function) {
        void* module = dlopen(FAKE_SOUND_SERVER, RTLD_NOW | RTLD_LOCAL);
        reinterpret_cast<void (*)()>(dlsym(module, function))();
    }
    static SoundServer* fakeServer() {
        void* module = dlopen(FAKE_SOUND_SERVER, RTLD_NOW | RTLD_LOCAL);
        return reinterpret_cast<SoundServer* (*)()>(dlsym(module, "fake_sound_server"))();
    }
    static std::shared_ptr<AVSystemController> installed() {
        return AVSystemController::sharedAVSystemController();
    }
    static bool canRead() {
        float volume = 0;
        return installed() && installed()->getVolume(volume, "Ringtone");
    }

    double now = 100;
    int changes = 0;
    std::unique_ptr<SoundService> service;
};

TEST_F(SoundServiceTest, SimulatedDeviceIsThereAtOnceAndLoadsNothing) {
    make(SoundSource::Simulated);
    EXPECT_TRUE(service->isSettled());
    EXPECT_TRUE(std::dynamic_pointer_cast<SimulatedAudioDevice>(installed()));
    service->connect();
    EXPECT_EQ(fakeServer(), nullptr);
    EXPECT_EQ(changes, 0);
}

TEST_F(SoundServiceTest, NothingCanBeReadBeforeItConnects) {
    make(SoundSource::Server);
    EXPECT_FALSE(service->isSettled());
    ASSERT_TRUE(installed());
    EXPECT_FALSE(canRead());
    EXPECT_FALSE(installed()->setVolumeTo(0.5F, "Ringtone"));
    EXPECT_EQ(installed()->routeForCategory("Audio/Video"), "Speaker");
}

TEST_F(SoundServiceTest, ConnectingInstallsTheServersService) {
    make(SoundSource::Server).connect();
    ASSERT_NE(fakeServer(), nullptr);
    EXPECT_EQ(installed(), fakeServer()->service());
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(service->isSettled());
    service->connect();
    EXPECT_EQ(changes, 1) << "connecting twice";
}

TEST_F(SoundServiceTest, ServerThatAnswersInTimeSettlesIt) {
    make(SoundSource::Server).connect();
    advance(0.9);
    tell("fake_sound_server_answers");
    EXPECT_TRUE(service->isSettled());
    EXPECT_EQ(changes, 1);
    advance(5);
    EXPECT_EQ(installed(), fakeServer()->service());
    EXPECT_EQ(changes, 1);
}

TEST_F(SoundServiceTest, ServerThatIsSilentForASecondIsSimulated) {
    make(SoundSource::Server).connect();
    testing::internal::CaptureStderr();
    advance(0.99);
    EXPECT_FALSE(service->isSettled());
    advance(0.02);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(service->isSettled());
    EXPECT_NE(installed(), fakeServer()->service());
    EXPECT_TRUE(canRead());
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(said, "tarnwick: no sound server answers: simulating one\n");
}

TEST_F(SoundServiceTest, ServerThatComesLaterTakesItsPlace) {
    make(SoundSource::Server).connect();
    advance(2);
    tell("fake_sound_server_answers");
    EXPECT_EQ(installed(), fakeServer()->service());
    EXPECT_EQ(changes, 3);
    tell("fake_sound_server_answers");
    EXPECT_EQ(changes, 3) << "it was there already";
}

TEST_F(SoundServiceTest, PassesOnThatRowsHaveToBeReadAgain) {
    make(SoundSource::Server).connect();
    tell("fake_sound_server_changes");
    EXPECT_EQ(changes, 2);
}

TEST_F(SoundServiceTest, ModuleThatIsMissingIsSimulated) {
    make(SoundSource::Server, "/nowhere/module.so");
    testing::internal::CaptureStderr();
    service->connect();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(service->isSettled());
    EXPECT_TRUE(canRead());
    EXPECT_NE(said.find("/nowhere/module.so"), std::string::npos) << said;
}

TEST_F(SoundServiceTest, NothingComesAfterItsEnd) {
    make(SoundSource::Server).connect();
    service.reset();
    EXPECT_EQ(installed(), nullptr);
    const int before = changes;
    advance(5);
    EXPECT_EQ(changes, before);
    EXPECT_EQ(installed(), nullptr);
}

}  // namespace
