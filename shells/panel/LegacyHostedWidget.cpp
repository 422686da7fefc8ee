#include "shells/panel/LegacyHostedWidget.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace shell {
namespace {

constexpr CGFloat farthestForATap = 10;  // Points.

// Points. Such a widget's height covers only its rows, and the last one extends below it.
constexpr CGFloat roomBelow = 20;

}  // namespace

std::shared_ptr<UIView> TapView::hitTest(const CGPoint& point, const UIEvent* event) {
    if (telling_) return UIView::hitTest(point, event);
    const bool takes = !isHidden() && isUserInteractionEnabled() && pointInside(point);
    return takes ? strongSelf<UIView>() : nullptr;
}

void TapView::touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    if (telling_) return;
    UIView::touchesBegan(touches, event);  // What is not a tap may be a drag of the panel.
    if (!touch_.expired() || touches.empty()) return;  // One finger at a time.
    touch_ = touches.front();
    began_ = touches.front()->locationInView(this);
}

void TapView::touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    if (telling_) return;
    forgetIfFar(touches);
    UIView::touchesMoved(touches, event);
}

void TapView::forgetIfFar(const UITouchSet& touches) {
    const auto touch = touch_.lock();
    if (!touch || std::ranges::count(touches, touch) == 0) return;
    const CGPoint now = touch->locationInView(this);
    if (std::hypot(now.x - began_.x, now.y - began_.y) > farthestForATap) touch_.reset();
}

void TapView::touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    if (telling_) return;
    forgetIfFar(touches);
    UIView::touchesEnded(touches, event);
    const auto touch = touch_.lock();
    if (!touch || std::ranges::count(touches, touch) == 0) return;
    touch_.reset();
    if (!tapHandler_) return;
    const auto self = strongSelf<TapView>();
    const auto handler = tapHandler_;
    telling_ = true;
    handler(touch->locationInView(this));
    telling_ = false;
}

void TapView::touchesCancelled(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    UIView::touchesCancelled(touches, event);
    if (std::ranges::count(touches, touch_.lock()) > 0) touch_.reset();
}

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

// The view has the width, the controller the height.
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

}  // namespace shell
