#include "host/TarnwickViewControllerNew.hpp"

#include "config/WidgetIdentifier.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/uikit/SelectorTable.hpp"

namespace {

const ClassRegistration<TarnwickViewControllerNew> registration("TarnwickViewControllerNew");

// Points.
constexpr double verticalMargin = 20.0;
constexpr float wideThreshold = 768.0F;
constexpr float ipadWidgetWidth = 560.0F;

using Controller = TarnwickViewControllerNew;
constexpr Selector<Controller> selectors[] = {
    selector<&Controller::view, Controller>("view"),
    selector<&Controller::loadView, Controller>("loadView"),
    selector<&Controller::preferredViewSize, Controller>("preferredViewSize"),
    selector<&Controller::viewHeight, Controller>("viewHeight"),
    selector<&Controller::visibleCategoriesCount, Controller>("visibleCategoriesCount"),
    selector<&Controller::viewDidLoad, Controller>("viewDidLoad"),
    selector<&Controller::hostDidDismiss, Controller>("hostDidDismiss"),
    selector<&Controller::destroyMixer, Controller>("destroyMixer"),
    selector<&Controller::hostWillPresent, Controller>("hostWillPresent"),
    selector<&Controller::unloadView, Controller>("unloadView"),
    selector<&Controller::updateValues, Controller>("updateValues"),
    selector<&Controller::bundle, Controller>("bundle"),
    selector<&Controller::setBundle, Controller, std::shared_ptr<NSBundle>>("setBundle:"),
};

}  // namespace

bool TarnwickViewControllerNew::respondsToSelector(std::string_view name) const {
    return findSelector<Controller>(selectors, name) != nullptr;
}

std::optional<PropertyValue> TarnwickViewControllerNew::performSelector(
    std::string_view name, std::span<const PropertyValue> arguments) {
    const Selector<Controller>* found = findSelector<Controller>(selectors, name);
    return found ? found->send(*this, arguments) : std::nullopt;
}

bool TarnwickViewControllerNew::init() {
    if (!_SBUIWidgetViewController::init()) return false;
    setBundle(NSBundle::bundleForClass(NSClassFromString(className())));
    return true;
}

float TarnwickViewControllerNew::comfortableWidth(float width) const {
    return isIpad && width >= wideThreshold ? ipadWidgetWidth : width;
}

CGSize TarnwickViewControllerNew::preferredViewSize() {
    const auto parent = parentViewController();
    const auto parentView = parent ? parent->view() : nullptr;
    const float width = parentView ? static_cast<float>(parentView->frame().size.width) : 0.0F;
    const auto count = static_cast<double>(visibleCategoriesCount());
    const auto height = static_cast<float>(count * rowHeight + verticalMargin);
    return {comfortableWidth(width), height};
}

CGFloat TarnwickViewControllerNew::viewHeight() {
    NSLog("TW: viewHeight");
    return static_cast<CGFloat>(static_cast<double>(visibleCategoriesCount()) * rowHeight +
                                verticalMargin);
}

NSInteger TarnwickViewControllerNew::visibleCategoriesCount() {
    return visibleCategoriesInFile();
}

void TarnwickViewControllerNew::loadView() {
    isVisible = true;
    isIpad = currentDeviceKind().isIpad;
    CGSize size = preferredViewSize();
    size.width = comfortableWidth(static_cast<float>(size.width));
    auto container = std::make_shared<UIView>(CGRect{{0, 0}, size});
    setView(container);
    container->setBackgroundColor(UIColor::clearColor());
    if (!twview) buildMixer(size);
}

void TarnwickViewControllerNew::buildMixer(const CGSize& size) {
    twview = std::make_shared<TarnwickView>(CGRect{{0, 0}, size});
    if (const auto container = view()) container->addSubview(twview);
    twview->loadFullViewWithResourcesBundle(bundle());
}

void TarnwickViewControllerNew::viewDidLoad() {
    _SBUIWidgetViewController::viewDidLoad();
    postVisibleNotification();
}

void TarnwickViewControllerNew::hostWillPresent() {
    const auto host = widgetHost();  // Held until the widget is presented.
    const auto delegate = host ? host->delegate() : nullptr;
    if (delegate && delegate->respondsToSelector("widget:didUpdatePreferredSize:"))
        if (const auto told = host->delegate()) told->widget(widgetHost(), preferredViewSize());
    NSLog("TW: self.preferredViewSize: " + NSStringFromCGSize(preferredViewSize()));
    // Asked anew: the widget may have come to another host meanwhile, or to none.
    const auto current = widgetHost();
    if (current && current->respondsToSelector("invalidatePreferredViewSize"))
        current->invalidatePreferredViewSize();
    if (!twview && !isVisible) buildMixer(preferredViewSize());
    isVisible = true;
    postVisibleNotification();
    _SBUIWidgetViewController::hostWillPresent();
}

void TarnwickViewControllerNew::hostDidDismiss() {
    _SBUIWidgetViewController::hostDidDismiss();
    destroyMixer();
}

void TarnwickViewControllerNew::destroyMixer() {
    isVisible = false;
    postHiddenNotification();
    if (!twview) return;
    twview->removeFromSuperview();
    NSNotificationCenter::defaultCenter().removeObserver(twview.get());
    twview = nullptr;
}

void TarnwickViewControllerNew::unloadView() {
    NSLog("TW: unloadView");
    destroyMixer();
}

TarnwickViewControllerNew::~TarnwickViewControllerNew() {
    NSLog("TW: dealloc");
    destroyMixer();
}

void TarnwickViewControllerNew::updateValues() {
    if (twview) twview->updateValues();
}
