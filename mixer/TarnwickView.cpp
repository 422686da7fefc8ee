#include "mixer/TarnwickView.hpp"

#include "config/Settings.hpp"
#include "platform/foundation/NSClassRegistry.hpp"
#include "platform/foundation/NSLog.hpp"

namespace {
const ClassRegistration<TarnwickView> registration("TarnwickView");

constexpr double firstRowY = 10.0;  // points
}  // namespace

void TarnwickView::setBackgroundImage(const std::shared_ptr<const UIImage>& /*image*/) {}

void TarnwickView::layoutSubviews() {
    UIView::layoutSubviews();
}

void TarnwickView::loadSettings() {
    const Settings settings = loadedSettings();
    enableDebugLogging = settings.enableDebugLogging;
    bindRingerAndAVVolumes = settings.bindRingerAndAVVolumes;
    displayPercentage = settings.displayPercentage;
    selectedSkin = settings.selectedSkin;
    thumbTintColor = settings.thumbTintColor;
    textColor = settings.textColor;
    minimumTrackTintColor = settings.minimumTrackTintColor;
    maximumTrackTintColor = settings.maximumTrackTintColor;

    const DeviceKind device = currentDeviceKind();
    isIpad = device.isIpad;
    isIpod = device.isIpod;
}

void TarnwickView::loadCategories() {
    const std::optional<CategoryList> list = categoryListFromFile();
    categories = list.value_or(CategoryList());
    debugLog("TW: got " + std::to_string(categories.size()) + " categories");
    if (list) return;
    NSLog("TW: creating initial category config file...");
    categories = initialCategoryList({.isIpad = isIpad, .isIpod = isIpod});
    writeCategoryFile(categories);
}

void TarnwickView::loadFullViewWithResourcesBundle(const std::shared_ptr<NSBundle>& bundle) {
    // Before the settings are read: the flag is still that of the previous assembly.
    debugLog("TW: loadFullViewWithResourcesBundle");
    resourcesBundle = bundle;
    loadSettings();
    loadCategories();
    if (!avs) avs = AVSystemController::sharedAVSystemController();
    const std::shared_ptr<UIView> parent = superview();
    widgetWidth = parent ? static_cast<float>(parent->frame().size.width) : 0.0F;
    placeRows();
    updateValues();
    debugLog("TW: adding volume observer...");
    NSNotificationCenter::defaultCenter().addObserver(
        strongSelf<TarnwickView>(), &TarnwickView::receiveVolumeChangedNotification,
        AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
}

void TarnwickView::placeRows() {
    int placed = 0;
    for (std::size_t i = 0; i < categories.size(); ++i) {
        const CategoryRecord& record = categories[i];
        if (!record.visible()) continue;
        const CGRect frame = CGRectMake(0, static_cast<CGFloat>(firstRowY + rowHeight * placed),
                                        widgetWidth, rowHeight);
        addSubview(
            singleCategoryView(static_cast<NSInteger>(i), frame, record.prettyCategoryName()));
        ++placed;
    }
}

void TarnwickView::removeAll() {
    for (const std::shared_ptr<UIView>& view : subviews())
        view->removeFromSuperview();
    debugLog("TW: removing volume observer...");
    NSNotificationCenter::defaultCenter().removeObserver(this);
}

TarnwickView::~TarnwickView() {
    if (_backgroundImageView) {
        _backgroundImageView->removeFromSuperview();
        _backgroundImageView = nullptr;
    }
    debugLog("TW: view dealloc");
}

void TarnwickView::debugLog(const std::string& line) const {
    if (enableDebugLogging) NSLog(line);
}
