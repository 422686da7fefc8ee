#include "platform/foundation/NSClassRegistry.hpp"
#include "platform/uikit/SBUIWidgetViewController.hpp"
#include "platform/uikit/UILabel.hpp"

namespace {

constexpr CGFloat width = 200;
constexpr CGFloat darkHeight = 40;
constexpr CGFloat litHeight = 90;

/// A widget of another maker: one line of text, taller while it is lit. A tap switches it.
class LampController : public _SBUIWidgetViewController {
 public:
    std::string_view className() const override { return "LampController"; }
    void loadView() override;
    CGSize preferredViewSize() override { return {width, lit_ ? litHeight : darkHeight}; }
    void hostWillPresent() override { label_->setText("Lamp is shown"); }
    void hostDidDismiss() override { label_->setText("Lamp is hidden"); }

    void switchOver() {
        lit_ = !lit_;
        if (const auto host = widgetHost()) host->invalidatePreferredViewSize();
    }

 private:
    std::shared_ptr<UILabel> label_;
    bool lit_ = false;
};

class LampView : public UIView {
 public:
    explicit LampView(LampController& controller)
        : UIView(CGRectMake(0, 0, width, darkHeight)), controller_(controller) {}
    void touchesEnded(const UITouchSet&, const std::shared_ptr<UIEvent>&) override {
        controller_.switchOver();
    }

 private:
    LampController& controller_;
};

void LampController::loadView() {
    const auto view = std::make_shared<LampView>(*this);
    label_ = std::make_shared<UILabel>(CGRectMake(0, 0, width, darkHeight));
    label_->setText("Lamp is hidden");
    label_->setUserInteractionEnabled(false);
    view->addSubview(label_);
    setView(view);
}

const ClassRegistration<LampController> registration("LampController");

}  // namespace
