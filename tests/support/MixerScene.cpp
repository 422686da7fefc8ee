#include "tests/support/MixerScene.hpp"

#include "backends/cairo/CairoImageDecoder.hpp"
#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSPropertyList.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"

namespace {

constexpr CGFloat pointsPerRow = 50;
constexpr CGFloat margins = 20;  // points, above and below the rows together

std::string entry(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key>" + value;
}

std::string number(int value) {
    return "<integer>" + std::to_string(value) + "</integer>";
}

std::string fileEntries(const SceneSettings& settings) {
    return entry("selectedSkin", "<string>" + settings.skin + "</string>") +
           entry("thumbTintColor", number(settings.thumb)) +
           entry("textColor", number(settings.text)) +
           entry("minimumTrackTintColor", number(settings.minimumTrack)) +
           entry("maximumTrackTintColor", number(settings.maximumTrack)) + settings.more;
}

std::shared_ptr<SimulatedAudioDevice> newDevice() {
    auto device = std::make_shared<SimulatedAudioDevice>();
    device->changeVolume("Ringtone", 0.8F);
    device->changeVolume("Audio/Video", 0.35F);
    device->changeVolume("HeadsetBT", 0.62F);
    device->changeVolume("HeadphonesBT", 0);
    device->changeVolume("PhoneCall", 1);
    return device;
}

void setThePlatformUp() {
    MixerScene::device();
    NSPropertyList::setCodec(std::make_shared<PlistCodec>());
    UIImageDecoder::setDecoder(std::make_shared<painting::CairoImageDecoder>());
    setMachineModel("iPhone6,1");
}

}  // namespace

SimulatedAudioDevice& MixerScene::device() {
    static const std::shared_ptr<SimulatedAudioDevice> device = newDevice();
    AVSystemController::setSharedAVSystemController(device);
    return *device;
}

std::vector<test::CategoryEntry> MixerScene::fiveCategories() {
    return {{"Ringtone", "Ringtone"},
            {"Audio/Video", "Media"},
            {"HeadsetBT", "Bluetooth headset"},
            {"HeadphonesBT", "Bluetooth headphones"},
            {"PhoneCall", "Calls"}};
}

MixerScene::MixerScene(const SceneSettings& settings,
                       const std::vector<test::CategoryEntry>& categories, CGFloat width,
                       const UIColor& background) {
    setThePlatformUp();
    files_.writeSettings(fileEntries(settings));
    files_.writeCategories(categories);
    setPreferencesDirectory(files_.folder().string());
    const CGRect frame{{0, 0}, {width, pointsPerRow * CGFloat(categories.size()) + margins}};
    window_ = std::make_shared<UIWindow>(frame);
    window_->setBackgroundColor(background);
    mixer_ = std::make_shared<TarnwickView>(frame);
    window_->addSubview(mixer_);
    mixer_->loadFullViewWithResourcesBundle(NSBundle::bundleWithPath(TARNWICK_BUNDLE_DIR));
}

MixerScene::~MixerScene() {
    mixer_->removeAll();
    setPreferencesDirectory("");
}

std::shared_ptr<UISlider> MixerScene::slider(NSInteger number) {
    return std::dynamic_pointer_cast<UISlider>(window_->viewWithTag(2000 + number));
}

void MixerScene::holdThumb(NSInteger number) {
    const std::shared_ptr<UISlider> held = slider(number);
    const CGRect thumb = held->convertRectToView(held->thumbRect(), nullptr);
    window_->sendTouch(UITouchPhase::Began, {CGRectGetMidX(thumb), CGRectGetMidY(thumb)});
}
