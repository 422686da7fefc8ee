#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "shells/sound/SoundService.hpp"
#include "tests/support/FakeRoleOutputs.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

using namespace shell;

namespace {

/// A copy of the module, which nobody has loaded yet: what is loaded stays.
class ModuleOfItsOwn {
 public:
    ModuleOfItsOwn() { std::filesystem::copy_file(FAKE_SOUND_SERVER, path_); }
    ~ModuleOfItsOwn() { std::filesystem::remove(path_); }
    ModuleOfItsOwn(const ModuleOfItsOwn&) = delete;
    ModuleOfItsOwn& operator=(const ModuleOfItsOwn&) = delete;

    const std::string& path() const { return path_; }
    bool isLoaded() const { return dlopen(path_.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr; }

 private:
    std::string path_ = testing::TempDir() + "sound_module_" + std::to_string(getpid()) + ".so";
};

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
        service->setAvailabilityHandler([this] { ++rereads; });
        service->setSilenceHandler([this] { ++silences; });
        service->setOutputsHandler([this] { ++outputChanges; });
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
    static test::FakeRoleOutputs& fakeOutputs() {
        void* module = dlopen(FAKE_SOUND_SERVER, RTLD_NOW | RTLD_LOCAL);
        using Entry = test::FakeRoleOutputs* (*)();
        return *reinterpret_cast<Entry>(dlsym(module, "fake_sound_server_outputs"))();
    }
    static std::shared_ptr<AVSystemController> installed() {
        return AVSystemController::sharedAVSystemController();
    }
    static bool canRead() {
        float volume = 0;
        return installed() && installed()->getVolume(volume, "Ringtone");
    }

    void waitUntilSettled(double patienceSeconds) {
        service->whenSettled(patienceSeconds, [this] { ++settlings; });
    }

    double now = 100;
    int changes = 0;
    int rereads = 0;
    int silences = 0;
    int outputChanges = 0;
    int settlings = 0;
    std::unique_ptr<SoundService> service;
};

TEST_F(SoundServiceTest, TellsTheServerWhetherTheMixerIsShown) {
    void* module = dlopen(FAKE_SOUND_SERVER, RTLD_NOW | RTLD_LOCAL);
    const auto rests = reinterpret_cast<bool (*)()>(dlsym(module, "fake_sound_server_rests"));
    make(SoundSource::Server).setAttention(SoundServer::Attention::Resting);
    service->connect();
    EXPECT_TRUE(rests()) << "also one that comes later";
    service->setAttention(SoundServer::Attention::Watched);
    EXPECT_FALSE(rests());
    service->setAttention(SoundServer::Attention::Resting);
    EXPECT_TRUE(rests());
}

TEST_F(SoundServiceTest, FollowsTheOutputsForRolesWhenItIsToldTo) {
    make(SoundSource::Server).followOutputs();
    service->connect();
    tell("fake_sound_server_answers");
    EXPECT_EQ(service->outputs(), nullptr);
    EXPECT_FALSE(fakeOutputs().follows) << "before the picture";
    service->followOutputs();
    EXPECT_TRUE(fakeOutputs().follows);
    EXPECT_EQ(service->outputs(), &fakeOutputs());
    const int before = outputChanges;
    EXPECT_GT(before, 0);
    fakeOutputs().settle(RoleOutputs::State::Apart);
    EXPECT_EQ(outputChanges, before + 1);
}

TEST_F(SoundServiceTest, HasNoOutputsWhileNoServerAnswers) {
    make(SoundSource::Server).connect();
    service->followOutputs();
    EXPECT_EQ(service->outputs(), nullptr);
    EXPECT_TRUE(fakeOutputs().follows);
    const int before = outputChanges;
    tell("fake_sound_server_answers");
    EXPECT_EQ(service->outputs(), &fakeOutputs());
    EXPECT_EQ(outputChanges, before + 1);
    tell("fake_sound_server_falls_silent");
    advance(1.01);
    EXPECT_EQ(service->outputs(), nullptr);
    EXPECT_EQ(outputChanges, before + 2);
}

TEST_F(SoundServiceTest, WritesWhileTheOutputsAreBeingSwitched) {
    make(SoundSource::Server).connect();
    tell("fake_sound_server_answers");
    service->followOutputs();
    EXPECT_FALSE(service->isWriting());
    service->outputs()->choose(RoleOutputs::Choice::Apart);
    EXPECT_TRUE(service->isWriting());
    fakeOutputs().settle(RoleOutputs::State::Apart);
    EXPECT_FALSE(service->isWriting());
}

TEST_F(SoundServiceTest, SimulatedDeviceHasNoOutputsForRoles) {
    make(SoundSource::Simulated).followOutputs();
    EXPECT_EQ(service->outputs(), nullptr);
    EXPECT_EQ(outputChanges, 0);
}

TEST_F(SoundServiceTest, SimulatedDeviceIsThereAtOnceAndLoadsNothing) {
    make(SoundSource::Simulated);
    EXPECT_TRUE(service->isSettled());
    EXPECT_TRUE(std::dynamic_pointer_cast<SimulatedAudioDevice>(installed()));
    service->connect();
    EXPECT_EQ(fakeServer(), nullptr);
    EXPECT_EQ(changes, 0);
}

TEST_F(SoundServiceTest, SimulatedDeviceLoadsNothingAhead) {
    const ModuleOfItsOwn module;
    make(SoundSource::Simulated, module.path()).loadAhead();
    service.reset();
    EXPECT_FALSE(module.isLoaded());
}

TEST_F(SoundServiceTest, LoadsAheadWithoutConnecting) {
    const ModuleOfItsOwn module;
    make(SoundSource::Server, module.path()).loadAhead();
    service->loadAhead();
    service.reset();  // Waits for the thread.
    EXPECT_TRUE(module.isLoaded());
    EXPECT_EQ(silences, 0);
    EXPECT_EQ(changes, 0);
}

TEST_F(SoundServiceTest, ConnectsToWhatWasLoadedAhead) {
    make(SoundSource::Server).loadAhead();
    service->connect();
    ASSERT_NE(fakeServer(), nullptr);
    EXPECT_EQ(installed().get(), fakeServer());
    EXPECT_EQ(changes, 1);
    service->loadAhead();
    service->connect();
    EXPECT_EQ(changes, 1) << "connecting twice";
}

TEST_F(SoundServiceTest, ModuleThatIsMissingIsSilenceAlsoWhenLoadedAhead) {
    make(SoundSource::Server, "/nowhere/module.so").loadAhead();
    EXPECT_EQ(silences, 0);
    testing::internal::CaptureStderr();
    service->connect();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(service->isSilent());
    EXPECT_NE(said.find("/nowhere/module.so"), std::string::npos) << said;
}

TEST_F(SoundServiceTest, TellsOnceThatItIsSettled) {
    make(SoundSource::Server).connect();
    waitUntilSettled(0.5);
    advance(0.49);
    EXPECT_EQ(settlings, 0);
    tell("fake_sound_server_answers");
    EXPECT_EQ(settlings, 1);
    tell("fake_sound_server_falls_silent");
    tell("fake_sound_server_answers");
    advance(5);
    EXPECT_EQ(settlings, 1);
}

TEST_F(SoundServiceTest, TellsAtOnceWhatIsSettledAlready) {
    make(SoundSource::Simulated);
    waitUntilSettled(0.5);
    EXPECT_EQ(settlings, 1);
    advance(1);
    EXPECT_EQ(settlings, 1);
}

TEST_F(SoundServiceTest, WaitsNoLongerThanItsPatienceForTheServer) {
    make(SoundSource::Server).connect();
    waitUntilSettled(0.5);
    advance(0.51);
    EXPECT_EQ(settlings, 1);
    EXPECT_FALSE(service->isSettled());
    tell("fake_sound_server_answers");
    EXPECT_EQ(settlings, 1);
}

TEST_F(SoundServiceTest, SilenceEndsTheWaitToo) {
    make(SoundSource::Server).connect();
    waitUntilSettled(5);
    advance(1.01);
    EXPECT_EQ(settlings, 1);
    EXPECT_TRUE(service->isSilent());
}

TEST_F(SoundServiceTest, DoesNotCallAForgottenHandler) {
    make(SoundSource::Server).connect();
    waitUntilSettled(0.5);
    service->forgetWhenSettled();
    tell("fake_sound_server_answers");
    advance(1);
    EXPECT_EQ(settlings, 0);
}

TEST_F(SoundServiceTest, CallsOnlyTheLastHandler) {
    make(SoundSource::Server).connect();
    int earlier = 0;
    service->whenSettled(0.1, [&] { ++earlier; });
    waitUntilSettled(0.5);
    advance(0.2);
    EXPECT_EQ(settlings, 0) << "the patience of the one before";
    tell("fake_sound_server_answers");
    EXPECT_EQ(settlings, 1);
    EXPECT_EQ(earlier, 0);
}

TEST_F(SoundServiceTest, VolumesCanBeReadOnceItTellsThatItIsSettled) {
    make(SoundSource::Server).connect();
    bool readable = false;
    service->whenSettled(0.5, [&] { readable = canRead(); });
    tell("fake_sound_server_answers");
    EXPECT_TRUE(readable);
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
    EXPECT_EQ(installed().get(), fakeServer());
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
    EXPECT_FALSE(service->isSilent());
    EXPECT_EQ(changes, 1);
    advance(5);
    EXPECT_EQ(installed().get(), fakeServer());
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(silences, 0);
}

TEST_F(SoundServiceTest, ServerThatDoesNotAnswerForASecondIsSilentAndNothingStandsIn) {
    make(SoundSource::Server).connect();
    advance(0.99);
    EXPECT_FALSE(service->isSettled());
    EXPECT_FALSE(service->isSilent());
    testing::internal::CaptureStderr();
    advance(0.02);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "tarnwick: no sound server answers\n");
    EXPECT_TRUE(service->isSettled());
    EXPECT_TRUE(service->isSilent());
    EXPECT_EQ(silences, 1);
    EXPECT_EQ(installed().get(), fakeServer());
    EXPECT_EQ(changes, 1);
}

TEST_F(SoundServiceTest, ServerThatComesLaterEndsTheSilence) {
    make(SoundSource::Server).connect();
    advance(2);
    tell("fake_sound_server_falls_silent");  // As after each attempt.
    EXPECT_EQ(silences, 1);
    tell("fake_sound_server_answers");
    EXPECT_FALSE(service->isSilent());
    EXPECT_EQ(silences, 2);
    EXPECT_EQ(changes, 1) << "its notifications fill the rows";
}

TEST_F(SoundServiceTest, SaysWhatTheServerRefusesAndWhy) {
    make(SoundSource::Server).connect();
    testing::internal::CaptureStderr();
    tell("fake_sound_server_refuses");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "tarnwick: the sound server refuses to change 'sink:spk': Access denied\n");
}

TEST_F(SoundServiceTest, ServerThatComesBackWithinASecondWasNeverSilent) {
    make(SoundSource::Server).connect();
    tell("fake_sound_server_answers");
    tell("fake_sound_server_falls_silent");
    advance(0.99);
    EXPECT_FALSE(service->isSilent());
    tell("fake_sound_server_answers");
    advance(5);
    EXPECT_FALSE(service->isSilent());
    EXPECT_EQ(silences, 0);
}

TEST_F(SoundServiceTest, ServerThatStaysAwayFallsSilentASecondAfterItsEnd) {
    make(SoundSource::Server).connect();
    tell("fake_sound_server_answers");
    advance(7);
    tell("fake_sound_server_falls_silent");
    advance(0.5);
    tell("fake_sound_server_falls_silent");
    EXPECT_FALSE(service->isSilent());
    advance(0.51);
    EXPECT_TRUE(service->isSilent());
    EXPECT_EQ(silences, 1);
}

TEST_F(SoundServiceTest, PassesOnThatRowsHaveToBeReadAgain) {
    make(SoundSource::Server).connect();
    tell("fake_sound_server_changes");
    EXPECT_EQ(rereads, 1);
    EXPECT_EQ(changes, 1) << "the widget stays as it is";
}

TEST_F(SoundServiceTest, ModuleThatIsMissingIsSilence) {
    make(SoundSource::Server, "/nowhere/module.so");
    testing::internal::CaptureStderr();
    service->connect();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(service->isSettled());
    EXPECT_TRUE(service->isSilent());
    EXPECT_EQ(silences, 1);
    EXPECT_FALSE(canRead());
    EXPECT_NE(said.find("/nowhere/module.so"), std::string::npos) << said;
}

TEST_F(SoundServiceTest, ModuleThatIsNoneIsSilence) {
    make(SoundSource::Server, "libc.so.6").connect();
    EXPECT_TRUE(service->isSilent());
    EXPECT_FALSE(canRead());
}

TEST(SoundModule, ThatProvidesNoServerIsAFailure) {
    const SoundServerEntry entry = [](const char*, std::shared_ptr<SoundServer>&) {};
    const auto server = openSoundServer(entry, std::nullopt);
    ASSERT_FALSE(server);
    EXPECT_EQ(server.error(), "the sound server's module provides no server");
}

TEST_F(SoundServiceTest, NothingComesAfterItsEnd) {
    make(SoundSource::Server).connect();
    service.reset();
    EXPECT_EQ(installed(), nullptr);
    const int before = changes;
    advance(5);
    EXPECT_EQ(changes, before);
    EXPECT_EQ(silences, 0);
    EXPECT_EQ(installed(), nullptr);
}

}  // namespace
