#include "shells/panel/HostedWidget.hpp"

#include "platform/foundation/NSRunLoop.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace shell {

bool ControllerWidget::becomesDismissed() {
    rows_.follow(nullptr);
    isAssemblyWanted_ = false;
    return std::exchange(presented_, false);
}

void ControllerWidget::readAgain() {
    if (isPresented()) rows_.readAgain();
}

void ControllerWidget::assembleAgain() {
    if (!isPresented()) return;
    isAssemblyWanted_ = true;
    rows_.readAgain();
}

NSString ControllerWidget::categoryOf(const UIView& view) const {
    const auto row = std::ranges::find_if(
        rows_.rows(), [&](const auto& each) { return each.slider.lock().get() == &view; });
    return row == rows_.rows().end() ? std::nullopt : row->category;
}

void ControllerWidget::readRows() {
    constexpr const char* selector = "updateValues";
    if (!isAssemblyWanted_ && controller().respondsToSelector(selector))
        controller().performSelector(selector, {});
    else
        assemble();
}

void ControllerWidget::assemble() {
    const std::shared_ptr<UIWindow> window = view()->window();
    const std::shared_ptr<UIView> focused = window ? window->focusedView() : nullptr;
    const NSString category = focused ? categoryOf(*focused) : std::nullopt;
    dismiss();
    present();
    const auto row = std::ranges::find(rows_.rows(), category, &VolumeRow::category);
    if (category && row != rows_.rows().end()) window->setFocusedView(row->slider.lock());
}

CGFloat parentWidthForModel(const std::string& model, CGFloat room) {
    constexpr CGFloat handheld = 320;
    constexpr CGFloat larger = 768;
    // The mixer's width under the larger parent. On a screen between the two it is no wider.
    constexpr CGFloat comfortable = 560;
    const bool isHandheld = model.starts_with("iPhone") || model.starts_with("iPod");
    if (!isHandheld && room >= larger) return larger;
    return std::max<CGFloat>(1, std::min(std::floor(room), isHandheld ? handheld : comfortable));
}

/// The host that the widget talks to. The widget may outlive its shell, so this can be
/// disconnected.
class HostedWidget::Host : public SBUIWidgetHost {
 public:
    explicit Host(HostedWidget& owner)
        : owner_(&owner), delegate_(std::make_shared<Delegate>(*this)) {}

    std::shared_ptr<SBUIWidgetHostDelegate> delegate() override { return delegate_; }
    void invalidatePreferredViewSize() override {
        if (owner_) owner_->askForSizeLater();
    }
    bool respondsToSelector(std::string_view selector) const override {
        return selector == "invalidatePreferredViewSize" || selector == "delegate";
    }
    HostedWidget* owner() const { return owner_; }
    void silence() {
        owner_ = nullptr;
        delegate_->silence();
    }

 private:
    class Delegate : public SBUIWidgetHostDelegate {
     public:
        explicit Delegate(Host& host) : host_(&host) {}
        void widget(const std::shared_ptr<SBUIWidgetHost>& /*host*/,
                    const CGSize& preferredSize) override {
            if (host_) host_->owner_->preferredSizeIs(preferredSize);
        }
        bool respondsToSelector(std::string_view selector) const override {
            return selector == "widget:didUpdatePreferredSize:";
        }
        void silence() { host_ = nullptr; }

     private:
        Host* host_;
    };

    HostedWidget* owner_;
    std::shared_ptr<Delegate> delegate_;
};

HostedWidget::HostedWidget(std::shared_ptr<_SBUIWidgetViewController> controller,
                           CGFloat parentWidth)
    : controller_(std::move(controller)),
      parent_(std::make_shared<UIViewController>()),
      host_(std::make_shared<Host>(*this)) {
    parent_->view()->setFrame(CGRectMake(0, 0, parentWidth, 0));
    parent_->addChildViewController(controller_);
    controller_->setWidgetHost(host_);
}

HostedWidget::~HostedWidget() {
    setSizeHandler({});
    dismiss();
    host_->silence();
}

CGSize HostedWidget::preferredSize() {
    if (!size_) {
        view();  // The widget reads the machine model while it loads its view.
        size_ = controller_->preferredViewSize();
    }
    return *size_;
}

void HostedWidget::setParentWidth(CGFloat width) {
    const CGRect frame = parent_->view()->frame();
    if (frame.size.width == width) return;
    parent_->view()->setFrame({frame.origin, {width, frame.size.height}});
    if (!isPresented()) size_.reset();
}

void HostedWidget::present() {
    if (!becomesPresented()) return;
    view();
    // The widget reports its size before it has its rows: wait until it has both.
    const std::optional<CGSize> before = size_;
    presenting_ = true;
    controller_->hostWillPresent();
    presenting_ = false;
    rowsAreThere();
    if (size_ != before) sizeHasChanged();
}

void HostedWidget::dismiss() {
    if (becomesDismissed()) controller_->hostDidDismiss();
}

void HostedWidget::preferredSizeIs(const CGSize& size) {
    const std::shared_ptr<UIView> container = view();
    container->setFrame({container->frame().origin, size});
    const bool isNews = size_ != size;
    size_ = size;
    if (isNews && !presenting_) sizeHasChanged();
}

void HostedWidget::askForSizeLater() {
    NSRunLoop::mainRunLoop().performAfterDelay(0, [host = std::weak_ptr<Host>(host_)] {
        const std::shared_ptr<Host> strong = host.lock();
        HostedWidget* owner = strong ? strong->owner() : nullptr;
        if (owner) owner->preferredSizeIs(owner->controller_->preferredViewSize());
    });
}

}  // namespace shell
