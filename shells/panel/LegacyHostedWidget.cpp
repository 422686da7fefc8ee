#include "shells/panel/LegacyHostedWidget.hpp"

#include <utility>

namespace {
// Points. Such a widget's height counts its rows alone, and the last one reaches past it.
constexpr CGFloat roomBelow = 20;
}  // namespace

LegacyHostedWidget::LegacyHostedWidget(std::shared_ptr<BBWeeAppController> controller)
    : controller_(std::move(controller)) {
    container_->setTapHandler([controller = std::weak_ptr(controller_)](const CGPoint& place) {
        const auto strong = controller.lock();
        if (strong && strong->respondsToSelector("launchURLForTapLocation:"))
            strong->launchURLForTapLocation(place);
    });
}

LegacyHostedWidget::~LegacyHostedWidget() {
    setSizeHandler({});
    dismiss();
}

std::shared_ptr<UIView> LegacyHostedWidget::view() {
    if (!container_->subviews().empty()) return container_;
    container_->addSubview(controller_->view());
    measure();
    if (responds("loadFullView")) controller_->loadFullView();
    return container_;
}

CGSize LegacyHostedWidget::preferredSize() {
    return view()->frame().size;
}

// The view says how wide it is, the controller how tall.
void LegacyHostedWidget::measure() {
    const auto loaded = controller_->view();
    const CGFloat height = responds("viewHeight") ? static_cast<CGFloat>(controller_->viewHeight())
                                                  : loaded->frame().size.height;
    const CGFloat width = loaded->frame().size.width;
    // In this order: a view of flexible width would follow its container.
    container_->setFrame({container_->frame().origin, {width, height + roomBelow}});
    loaded->setFrame(CGRectMake(0, 0, width, height));
}

void LegacyHostedWidget::present() {
    if (!becomesPresented()) return;
    const CGSize before = container_->frame().size;
    view();
    if (responds("viewWillAppear")) controller_->viewWillAppear();
    measure();
    if (responds("viewDidAppear")) controller_->viewDidAppear();
    rowsAreThere();
    if (container_->frame().size != before) sizeHasChanged();
}

void LegacyHostedWidget::dismiss() {
    if (!becomesDismissed()) return;
    if (responds("viewWillDisappear")) controller_->viewWillDisappear();
    if (responds("viewDidDisappear")) controller_->viewDidDisappear();
    if (responds("unloadView")) controller_->unloadView();
    for (const auto& shown : container_->subviews())
        shown->removeFromSuperview();
}
