#include "tests/pulse/ServiceFixture.hpp"

#include <cmath>

ServiceFixture::ServiceFixture(ServerKind kind) : server_(rigs::makeServer(kind, folder_)) {
    const auto record = [this](const NSNotification& notification) {
        const PropertyValue& info = notification.userInfo;
        const std::string category = describe(
            info.objectForKey(AVSystemController_EffectiveVolumeNotificationParameter_Category)
                .string());
        const float volume =
            info.objectForKey(AVSystemController_EffectiveVolumeNotificationParameter_Volume)
                .floatValue();
        posted_.push_back({category, volume, controller_ ? routeOf(category) : ""});
    };
    NSNotificationCenter::defaultCenter().add(
        observer_, record, AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
}

ServiceFixture::~ServiceFixture() {
    NSNotificationCenter::defaultCenter().removeObserver(observer_.get());
    if (HasFailure()) std::printf("The server's programs said:\n%s\n", folder_.logged().c_str());
}

void ServiceFixture::startController() {
    controller_ = pulse::connectToServer(server_->address());
}

void ServiceFixture::startBoth() {
    server_->startAndWait();
    startControllerAndWait();
}

void ServiceFixture::startControllerAndWait() {
    startController();
    ASSERT_TRUE(waitUntil([&] { return isReady() && !posted_.empty(); }));
}

float ServiceFixture::volumeOf(const std::string& category) {
    float volume = unreadable;
    return controller_->getVolume(volume, category) ? volume : unreadable;
}

testing::AssertionResult ServiceFixture::waitForVolume(const std::string& category, float volume) {
    const auto isIt = [&](float other) { return std::abs(other - volume) <= volumeTolerance; };
    const bool isShown = waitUntil([&] {
        const Posted* last = lastPosted(category);
        return isIt(volumeOf(category)) && last && isIt(last->volume);
    });
    if (isShown) return testing::AssertionSuccess();
    const Posted* last = lastPosted(category);
    return testing::AssertionFailure()
           << category << " reads " << volumeOf(category) << " and was last told as "
           << (last ? last->volume : unreadable) << ", not " << volume;
}

bool ServiceFixture::waitToRead(const std::string& category, float volume) {
    return waitUntil([&] { return std::abs(volumeOf(category) - volume) <= volumeTolerance; });
}

bool ServiceFixture::waitForRoute(const std::string& category, const std::string& route) {
    return waitUntil([&] { return routeOf(category) == route; });
}

bool ServiceFixture::waitForSink(const std::string& sink, const Channels& channels) {
    return waitUntil([&] { return server_->sinkVolumes(sink) == channels; });
}

bool ServiceFixture::waitForStream(const rigs::PlayingStream& stream, const Channels& channels) {
    return waitUntil([&] { return stream.volumes() == channels; });
}

std::unique_ptr<rigs::PlayingStream> ServiceFixture::play(const std::string& role,
                                                          const Channels& volume) {
    program_ = std::make_unique<rigs::OtherProgram>(server_->address());
    auto stream = program_->play({.role = role});
    EXPECT_TRUE(waitForStream(*stream, volume));
    return stream;
}

std::vector<float> ServiceFixture::volumesPosted(const std::string& category) const {
    std::vector<float> volumes;
    for (const Posted& each : posted_)
        if (each.category == category) volumes.push_back(each.volume);
    return volumes;
}

const ServiceFixture::Posted* ServiceFixture::lastPosted(const std::string& category) const {
    for (auto each = posted_.rbegin(); each != posted_.rend(); ++each)
        if (each->category == category) return &*each;
    return nullptr;
}
