#include "shells/headless/Stage.hpp"

#include "shells/common/WidgetBundle.hpp"

namespace headless {

Stage::Stage(EventSink& events, std::string bundlePath)
    : bundlePath_(std::move(bundlePath)), host_(std::make_shared<WidgetHost>(events)) {}

Stage::~Stage() {
    release();
}

Problem Stage::create(const std::optional<std::string>& className) {
    if (controller_) return "there is a controller: release it first";
    const auto bundle = shell::loadBundle(bundlePath_);
    if (!bundle) return bundle.error();
    const auto object =
        className ? shell::createObject(*className) : shell::createPrincipalObject(**bundle);
    if (!object) return object.error();
    controller_ = *object;
    if (const auto widget = std::dynamic_pointer_cast<_SBUIWidgetViewController>(controller_))
        widget->setWidgetHost(host_);
    adopt();
    return std::nullopt;
}

Problem Stage::release() {
    if (!controller_) return "there is no controller";
    if (const auto controller = viewController()) controller->removeFromParentViewController();
    if (shown_) shown_->removeFromSuperview();
    shown_ = nullptr;
    controller_ = nullptr;
    rows_.follow(nullptr);
    updateWindow();
    return std::nullopt;
}

void Stage::readRows() {
    constexpr const char* selector = "updateValues";
    const auto controller = controller_;  // The call may release it.
    if (controller && controller->respondsToSelector(selector))
        controller->performSelector(selector, {});
}

void Stage::setParentWidth(const std::optional<double>& width) {
    if (const auto controller = viewController()) controller->removeFromParentViewController();
    parent_ = nullptr;
    if (!width) return;
    parent_ = std::make_shared<UIViewController>();
    parent_->setView(std::make_shared<UIView>(CGRectMake(0, 0, static_cast<CGFloat>(*width), 0)));
    adopt();
}

void Stage::takeLegacyView() {
    const auto controller = std::dynamic_pointer_cast<BBWeeAppController>(controller_);
    if (!controller) return;
    if (shown_) shown_->removeFromSuperview();
    shown_ = controller->view();
    if (shown_) window_->addSubview(shown_);
}

std::shared_ptr<UIView> Stage::viewToShow() const {
    if (const auto controller = viewController())
        return controller->isViewLoaded() ? controller->view() : nullptr;
    return shown_ && shown_->superview() == window_ ? shown_ : nullptr;
}

void Stage::updateWindow() {
    const auto view = viewToShow();
    if (view != shown_) {
        if (shown_) shown_->removeFromSuperview();
        shown_ = view;
    }
    const CGRect frame{{0, 0}, view ? view->frame().size : CGSize{}};
    if (window_->frame() != frame) window_->setFrame(frame);
    if (!view) return;
    if (view->frame() != frame) view->setFrame(frame);
    if (view->superview() != window_) window_->addSubview(view);
}

std::shared_ptr<UIViewController> Stage::viewController() const {
    return std::dynamic_pointer_cast<UIViewController>(controller_);
}

void Stage::adopt() {
    const auto controller = viewController();
    if (parent_ && controller) parent_->addChildViewController(controller);
}

}  // namespace headless
