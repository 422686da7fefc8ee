#include "shells/desktop/tray/MediaVolume.hpp"

#include "config/CategoryList.hpp"
#include "mixer/Caption.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace desktop {
namespace {

constexpr const char* category = AudioCategory::audioVideo;
constexpr float volumeOutOfSilence = 0.5F;

class Observer : public NSObject {
 public:
    std::string_view className() const override { return "MediaVolumeObserver"; }
};

constexpr float oneThird = 1.0F / 3;
constexpr float twoThirds = 2.0F / 3;

const char* iconFor(float fraction) {
    if (!(fraction > 0)) return "audio-volume-muted-symbolic";
    if (fraction <= oneThird) return "audio-volume-low-symbolic";
    if (fraction <= twoThirds) return "audio-volume-medium-symbolic";
    return "audio-volume-high-symbolic";
}

constexpr float changeOfANotch = 0.05F;
// One family of hosts counts eighths of a degree, positive away from the user; the other counts
// notches, positive towards the user. No turn has so many notches or so few eighths between two
// messages that the two could be confused.
constexpr int eighthsOfANotch = 120;
constexpr int leastEighths = 15;

bool isHorizontal(std::string_view orientation) {
    return orientation.starts_with('h') || orientation.starts_with('H');
}

}  // namespace

MediaVolume::MediaVolume() : record_(category, category), observer_(std::make_shared<Observer>()) {
    readName();
    NSNotificationCenter::defaultCenter().add(
        observer_,
        [this](const NSNotification&) {
            if (changeHandler_) changeHandler_();
        },
        AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
}

MediaVolume::~MediaVolume() {
    NSNotificationCenter::defaultCenter().removeObserver(observer_.get());
}

std::string MediaVolume::title() const {
    const auto service = AVSystemController::sharedAVSystemController();
    const bool hasRoute = service && service->routeForCategory(category);
    return hasRoute ? captionTitle(record_, service.get()) : *record_.prettyCategoryName();
}

void MediaVolume::readName() {
    record_ = CategoryRecord(category, category);
    const std::optional<CategoryList> list = categoryListFromFile();
    if (!list) return;
    const auto found = std::ranges::find(*list, category, &CategoryRecord::categoryName);
    if (found != list->end() && found->prettyCategoryName()) record_ = *found;
}

std::optional<float> MediaVolume::fraction() const {
    const auto service = AVSystemController::sharedAVSystemController();
    float volume = 0;
    if (!service || !service->getVolume(volume, category)) return std::nullopt;
    return std::clamp(volume, 0.0F, 1.0F);
}

void MediaVolume::changeBy(float fraction) {
    const auto service = AVSystemController::sharedAVSystemController();
    if (service) service->stepVolumeBy(fraction, category);
}

void MediaVolume::toggleSilence() {
    const auto service = AVSystemController::sharedAVSystemController();
    const auto level = service ? service->levelOf(category) : std::nullopt;
    if (!level) return;
    if (level->volume > 0)
        service->toggleMute(category);
    else
        service->setVolumeTo(volumeOutOfSilence, category);
}

TrayLook trayLook(const std::string& title, std::optional<float> fraction) {
    if (!fraction) return {iconFor(0), unknownCaptionText(title)};
    const float percent = std::fmax(0.0F, std::fmin(1.0F, *fraction)) * 100;
    return {iconFor(*fraction), captionText(title, percent, Percentage::Shown)};
}

float volumeChangeByScroll(int delta, std::string_view orientation) {
    if (isHorizontal(orientation)) return 0;
    const bool inEighths = delta >= leastEighths || delta <= -leastEighths;
    const auto turn = static_cast<float>(delta);
    const float notchesAway = inEighths ? turn / eighthsOfANotch : -turn;
    return std::clamp(notchesAway * changeOfANotch, -1.0F, 1.0F);
}

}  // namespace desktop
