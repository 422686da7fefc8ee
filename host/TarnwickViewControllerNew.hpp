#pragma once

#include "mixer/TarnwickView.hpp"
#include "platform/uikit/SBUIWidgetViewController.hpp"

#include <memory>

/// The controller that the widget host instantiates from the bundle. It reports the widget's size,
/// builds the mixer when the widget is presented, destroys it when it is dismissed, and announces
/// both in the default notification centre. Main thread.
class TarnwickViewControllerNew : public _SBUIWidgetViewController {
 public:
    /// "dealloc": announces that the widget is hidden, whether or not it was shown.
    ~TarnwickViewControllerNew() override;
    std::string_view className() const override { return "TarnwickViewControllerNew"; }
    bool respondsToSelector(std::string_view selector) const override;
    std::optional<PropertyValue> performSelector(std::string_view selector,
                                                 std::span<const PropertyValue> arguments) override;

    bool init() override;
    void loadView() override;
    /// Points; as wide as the parent's view, but not wider than is comfortable on a large screen.
    /// Reads the category file at every call.
    CGSize preferredViewSize() override;
    /// Points.
    CGFloat viewHeight();
    NSInteger visibleCategoriesCount();
    void viewDidLoad() override;
    void hostDidDismiss() override;
    void destroyMixer();
    void hostWillPresent() override;
    void unloadView() override;
    /// Optional for a host: volumes may be known, or not be known any more, without a notification.
    /// Fills every row from the service.
    void updateValues();

    std::shared_ptr<NSBundle> bundle() const { return _bundle; }
    void setBundle(const std::shared_ptr<NSBundle>& bundle) { _bundle = bundle; }

 private:
    void buildMixer(const CGSize& size);
    float comfortableWidth(float width) const;

    std::shared_ptr<TarnwickView> twview;
    bool isVisible = false;
    bool isIpad = false;
    std::shared_ptr<NSBundle> _bundle;
};
