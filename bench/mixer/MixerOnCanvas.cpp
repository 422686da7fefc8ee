#include "bench/mixer/MixerOnCanvas.hpp"

#include "backends/cairo/CairoCanvas.hpp"
#include "backends/cairo/CairoImageDecoder.hpp"
#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSPropertyList.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"

#include <stdlib.h>

#include <algorithm>
#include <fstream>

namespace {

constexpr int width = 320;        // Points, and pixels.
constexpr int bandHeight = 4000;  // A mixer taller than any surface is painted in bands.

std::string categoryName(int number) {
    return "C" + std::to_string(number);
}

std::filesystem::path newFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "tarnwick-XXXXXX").string();
    return mkdtemp(name.data()) ? name : "";
}

/// Leaves out display names, so that a file with 10,000 records stays below the size limit.
void writeCategories(const std::filesystem::path& folder, int categories) {
    std::ofstream file(folder / "org.tarnwick.mixer.categories.plist");
    file << "<plist version=\"1.0\"><array>";
    for (int i = 0; i < categories; ++i)
        file << "<dict><key>categoryName</key><string>" << categoryName(i)
             << "</string><key>visible</key><true/></dict>";
    file << "</array></plist>";
}

}  // namespace

MixerOnCanvas::MixerOnCanvas(int categories)
    : folder_(newFolder()),
      categories_(categories),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, bandHeight)) {
    NSPropertyList::setCodec(std::make_shared<PlistCodec>());
    UIImageDecoder::setDecoder(std::make_shared<painting::CairoImageDecoder>());
    NSRunLoop::mainRunLoop().setClock([] { return 0.0; });
    setMachineModel("iPhone6,1");
    setPreferencesDirectory(folder_.string());
    writeCategories(folder_, categories);
    device_ = std::make_shared<SimulatedAudioDevice>();
    for (int i = 0; i < categories; ++i)
        device_->setReadable(categoryName(i), true);
    AVSystemController::setSharedAVSystemController(device_);
    bundle_ = NSBundle::bundleWithPath(TARNWICK_BUNDLE_DIR);

    const CGRect frame = CGRectMake(0, 0, width, 50.0 * categories + 20);
    window_ = std::make_shared<UIWindow>(frame);
    mixer_ = std::make_shared<TarnwickView>(frame);
    window_->addSubview(mixer_);
    mixer_->loadFullViewWithResourcesBundle(bundle_);
    paintDamage();
}

MixerOnCanvas::~MixerOnCanvas() {
    mixer_->removeAll();
    setPreferencesDirectory("");
    std::filesystem::remove_all(folder_);
}

void MixerOnCanvas::assemble() {
    mixer_->removeAll();
    mixer_->loadFullViewWithResourcesBundle(bundle_);
}

std::string MixerOnCanvas::nameInTheMiddle() const {
    return categoryName(categories_ / 2);
}

void MixerOnCanvas::announce() {
    step_ = (step_ + 1) % 100;
    postEffectiveVolumeDidChange(nameInTheMiddle(), static_cast<float>(step_) / 100);
}

void MixerOnCanvas::press() {
    finger_ = {width / 2.0, 10 + 50.0 * (categories_ / 2) + 35};
    window_->sendTouch(UITouchPhase::Began, finger_);
}

void MixerOnCanvas::dragStep() {
    finger_.x += ++step_ % 100 < 50 ? 1 : -1;
    window_->sendTouch(UITouchPhase::Moved, finger_);
    NSRunLoop::mainRunLoop().runDue();
}

double MixerOnCanvas::paintDamage() {
    double area = 0;
    for (const CGRect& damage : window_->takeDamage()) {
        paint(damage);
        area += damage.size.width * damage.size.height;
    }
    return area;
}

void MixerOnCanvas::paint(const CGRect& damage) {
    for (CGFloat top = damage.origin.y; top < CGRectGetMaxY(damage); top += bandHeight) {
        const CGFloat height = std::min<CGFloat>(bandHeight, CGRectGetMaxY(damage) - top);
        const painting::CairoContext context(cairo_create(surface_.get()));
        painting::CairoCanvas canvas(context.get(), 1);
        canvas.translate(0, -top);
        window_->layoutAndPaint(canvas,
                                CGRectMake(damage.origin.x, top, damage.size.width, height));
    }
}
