#include "host/TarnwickViewController.hpp"

#include "config/WidgetIdentifier.hpp"
#include "host/Tarnwick__TouchFix.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/uikit/SelectorTable.hpp"
#include "platform/uikit/UIEvent.hpp"
#include "platform/uikit/UIWindow.hpp"

namespace {

const ClassRegistration<TarnwickViewController> registration("TarnwickViewController");

// Points.
constexpr float ipadWidth = 480.0F;
constexpr float otherDevicesWidth = 320.0F;
constexpr unsigned flexibleWidth = 2;

using Controller = TarnwickViewController;
constexpr Selector<Controller> selectors[] = {
    selector<&Controller::loadFullView, Controller>("loadFullView"),
    selector<&Controller::view, Controller>("view"),
    selector<&Controller::loadView, Controller>("loadView"),
    selector<&Controller::loadPlaceholderView, Controller>("loadPlaceholderView"),
    selector<&Controller::unloadView, Controller>("unloadView"),
    selector<&Controller::viewHeight, Controller>("viewHeight"),
    selector<&Controller::preferredViewSize, Controller>("preferredViewSize"),
    selector<&Controller::visibleCategoriesCount, Controller>("visibleCategoriesCount"),
    selector<&Controller::updateValues, Controller>("updateValues"),
    selector<&Controller::viewWillAppear, Controller>("viewWillAppear"),
    selector<&Controller::viewDidAppear, Controller>("viewDidAppear"),
    selector<&Controller::viewWillDisappear, Controller>("viewWillDisappear"),
    selector<&Controller::viewDidDisappear, Controller>("viewDidDisappear"),
    selector<&Controller::launchURLForTapLocation, Controller, CGPoint>("launchURLForTapLocation:"),
    selector<&Controller::setView, Controller, std::shared_ptr<TarnwickView>>("setView:"),
    selector<&Controller::bundle, Controller>("bundle"),
    selector<&Controller::setBundle, Controller, std::shared_ptr<NSBundle>>("setBundle:"),
};

// Sends the touch in its present phase straight to the view under the finger, past the window's
// own delivery.
void forward(const std::shared_ptr<UITouch>& touch) {
    const auto event = Tarnwick__TouchFix::initWithTouch(std::make_shared<UIEvent>(), touch);
    const UITouchSet touches = event ? event->allTouches() : UITouchSet();
    UITouchMessage{touch->view(), touch->phase(), touches, event}.send();
}

}  // namespace

bool TarnwickViewController::respondsToSelector(std::string_view name) const {
    return findSelector<Controller>(selectors, name) != nullptr;
}

std::optional<PropertyValue> TarnwickViewController::performSelector(
    std::string_view name, std::span<const PropertyValue> arguments) {
    const Selector<Controller>* found = findSelector<Controller>(selectors, name);
    return found ? found->send(*this, arguments) : std::nullopt;
}

bool TarnwickViewController::init() {
    setBundle(NSBundle::bundleForClass(NSClassFromString(className())));
    return true;
}

void TarnwickViewController::loadFullView() {
    loadedView()->loadFullViewWithResourcesBundle(bundle());
}

std::shared_ptr<UIView> TarnwickViewController::view() {
    return loadedView();
}

std::shared_ptr<TarnwickView> TarnwickViewController::loadedView() {
    if (!_view) loadView();
    return _view;
}

void TarnwickViewController::loadView() {
    NSLog("TW: old loadView");
    postVisibleNotification();
    twview = std::make_shared<TarnwickView>(CGRect{{0, 0}, preferredViewSize()});
    setView(twview);
    _view->setAutoresizingMask(flexibleWidth);
}

void TarnwickViewController::unloadView() {
    loadedView()->removeFromSuperview();
    setView(nullptr);
}

float TarnwickViewController::viewHeight() {
    return static_cast<float>(visibleCategoriesCount() * rowHeight);
}

CGSize TarnwickViewController::preferredViewSize() {
    const std::int32_t count = visibleCategoriesCount();  // First: it also decides isIpad.
    const float width = isIpad ? ipadWidth : otherDevicesWidth;
    return {width, static_cast<float>(count * rowHeight)};
}

std::int32_t TarnwickViewController::visibleCategoriesCount() {
    isIpad = currentDeviceKind().isIpad;
    return static_cast<std::int32_t>(visibleCategoriesInFile());
}

void TarnwickViewController::viewWillDisappear() {
    if (twview) twview->removeAll();
}

void TarnwickViewController::viewDidDisappear() {
    postHiddenNotification();
}

// The tap is used up here: whatever happens, the host has nothing to open.
std::shared_ptr<NSObject> TarnwickViewController::launchURLForTapLocation(const CGPoint& location) {
    const std::shared_ptr<UIView> touched = loadedView();
    const auto window = touched->window();
    const CGPoint point = window ? touched->convertPointToView(location, window.get()) : CGPoint{};
    const auto touch = std::make_shared<Tarnwick__TouchFix::Touch>();
    if (!touch->initWithPoint(point, touched)) return nullptr;
    forward(touch);
    touch->setPhase(UITouchPhase::Ended);
    forward(touch);
    return nullptr;
}

void TarnwickViewController::updateValues() {
    if (_view) _view->updateValues();
}
