#include "tests/pulse/LiveMixer.hpp"

#include "backends/cairo/CairoImageDecoder.hpp"
#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSPropertyList.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"

namespace {

constexpr CGFloat width = 320;  // points
constexpr CGFloat pointsPerRow = 50;

std::vector<test::CategoryEntry> entriesOf(const std::vector<std::string>& categories) {
    std::vector<test::CategoryEntry> entries;
    for (const std::string& category : categories)
        entries.push_back({category, category});
    return entries;
}

}  // namespace

LiveMixer::LiveMixer(std::shared_ptr<AVSystemController> service,
                     const std::vector<std::string>& categories, const std::string& moreSettings) {
    AVSystemController::setSharedAVSystemController(std::move(service));
    NSPropertyList::setCodec(std::make_shared<PlistCodec>());
    UIImageDecoder::setDecoder(std::make_shared<painting::CairoImageDecoder>());
    setMachineModel("iPhone6,1");
    files_.writeSettings("<key>displayPercentage</key><true/>" + moreSettings);
    files_.writeCategories(entriesOf(categories));
    setPreferencesDirectory(files_.folder().string());
    const CGRect frame{{0, 0}, {width, pointsPerRow * (CGFloat(categories.size()) + 1)}};
    window_ = std::make_shared<UIWindow>(frame);
    mixer_ = std::make_shared<TarnwickView>(frame);
    window_->addSubview(mixer_);
    mixer_->loadFullViewWithResourcesBundle(NSBundle::bundleWithPath(TARNWICK_BUNDLE_DIR));
}

LiveMixer::~LiveMixer() {
    mixer_->removeAll();
    setPreferencesDirectory("");
    setMachineModel("");
    AVSystemController::setSharedAVSystemController(nullptr);
}

std::string LiveMixer::caption(NSInteger row) const {
    const auto label = std::dynamic_pointer_cast<UILabel>(window_->viewWithTag(1000 + row));
    return label ? describe(label->text()) : "no row";
}

float LiveMixer::sliderValue(NSInteger row) const {
    return slider(row)->value();
}

std::shared_ptr<UISlider> LiveMixer::slider(NSInteger row) const {
    return std::dynamic_pointer_cast<UISlider>(window_->viewWithTag(2000 + row));
}

void LiveMixer::press(NSInteger row) {
    const auto pressed = slider(row);
    const CGRect thumb = pressed->convertRectToView(pressed->thumbRect(), nullptr);
    finger_ = {CGRectGetMidX(thumb), CGRectGetMidY(thumb)};
    window_->sendTouch(UITouchPhase::Began, finger_);
}

void LiveMixer::dragTo(NSInteger row, double fraction) {
    const CGRect whole = slider(row)->convertRectToView(slider(row)->bounds(), nullptr);
    finger_.x = whole.origin.x + fraction * whole.size.width;
    window_->sendTouch(UITouchPhase::Moved, finger_);
}

void LiveMixer::lift() {
    window_->sendTouch(UITouchPhase::Ended, finger_);
}
