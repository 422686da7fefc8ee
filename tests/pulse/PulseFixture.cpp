#include "tests/pulse/PulseFixture.hpp"

#include "platform/foundation/NSRunLoop.hpp"

#include <glib.h>

#include <cmath>

PulseFixture::PulseFixture() {
    const auto record = [this](const NSNotification& notification) {
        const PropertyValue& info = notification.userInfo;
        posted_.push_back(
            {describe(
                 info.objectForKey(AVSystemController_EffectiveVolumeNotificationParameter_Category)
                     .string()),
             info.objectForKey(AVSystemController_EffectiveVolumeNotificationParameter_Volume)
                 .floatValue()});
    };
    NSNotificationCenter::defaultCenter().add(
        observer_, record, AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
}

PulseFixture::~PulseFixture() {
    NSNotificationCenter::defaultCenter().removeObserver(observer_.get());
}

void PulseFixture::startController() {
    controller_ = std::make_shared<PulseAudioController>(server_.address());
}

void PulseFixture::startBoth() {
    server_.start();
    startController();
    ASSERT_TRUE(waitUntil([&] { return isReady() && !posted_.empty(); }));
}

bool PulseFixture::waitUntil(const std::function<bool()>& condition, double seconds) {
    const NSRunLoop& loop = NSRunLoop::mainRunLoop();
    const double end = loop.currentTime() + seconds;
    // Wakes the loop now and then, for conditions that no event of the loop announces.
    constexpr guint wakeMilliseconds = 1;
    const guint waker = g_timeout_add(
        wakeMilliseconds, [](gpointer) { return gboolean{TRUE}; }, nullptr);
    bool holds = condition();
    while (!holds && loop.currentTime() < end) {
        g_main_context_iteration(nullptr, TRUE);
        holds = condition();
    }
    g_source_remove(waker);
    return holds;
}

void PulseFixture::runFor(double seconds) {
    waitUntil([] { return false; }, seconds);
}

float PulseFixture::volumeOf(const std::string& category) {
    float volume = unreadable;
    return controller_->getVolume(volume, category) ? volume : unreadable;
}

bool PulseFixture::waitForVolume(const std::string& category, float volume) {
    return waitUntil([&] {
        const Posted* last = lastPosted(category);
        return std::abs(volumeOf(category) - volume) <= volumeTolerance && last &&
               std::abs(last->volume - volume) <= volumeTolerance;
    });
}

const PulseFixture::Posted* PulseFixture::lastPosted(const std::string& category) const {
    for (auto each = posted_.rbegin(); each != posted_.rend(); ++each)
        if (each->category == category) return &*each;
    return nullptr;
}
