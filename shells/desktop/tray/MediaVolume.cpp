#include "shells/desktop/tray/MediaVolume.hpp"

#include "config/CategoryList.hpp"
#include "mixer/Caption.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"

#include <algorithm>
#include <string_view>

namespace {

constexpr const char* category = "Audio/Video";
constexpr float volumeOutOfSilence = 0.5F;

class Observer : public NSObject {
 public:
    std::string_view className() const override { return "MediaVolumeObserver"; }
};

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
