#pragma once

#include "mixer/TarnwickView.hpp"
#include "platform/uikit/BBWeeAppController.hpp"

#include <memory>

/// The controller that the legacy widget host instantiates from the bundle. It provides the mixer
/// itself as its view, fills it when the host wants the full view, empties it when it disappears,
/// and turns taps into touches. Main thread.
class TarnwickViewController : public BBWeeAppController {
 public:
    std::string_view className() const override { return "TarnwickViewController"; }
    bool respondsToSelector(std::string_view selector) const override;
    std::optional<PropertyValue> performSelector(std::string_view selector,
                                                 std::span<const PropertyValue> arguments) override;

    bool init();
    void loadFullView() override;
    /// Loads an empty one if there is none. nullptr never.
    std::shared_ptr<UIView> view() override;
    /// Makes a new view, whether or not there is one, and announces it.
    void loadView() override;
    void loadPlaceholderView() override {}
    /// Loads a view first if there is none.
    void unloadView() override;
    /// Points.
    float viewHeight() override;
    /// Points. Reads the category file at every call.
    CGSize preferredViewSize();
    /// Also finds out what kind of device this is.
    std::int32_t visibleCategoriesCount();
    /// Optional for a host: volumes may be known, or not be known any more, without a notification.
    /// Fills every row from the service.
    void updateValues();
    void viewWillAppear() override {}
    void viewDidAppear() override {}
    void viewWillDisappear() override;
    void viewDidDisappear() override;
    /// Hands the view under the point a press and its release. Always nil: nothing is opened.
    std::shared_ptr<NSObject> launchURLForTapLocation(const CGPoint& location) override;

    void setView(const std::shared_ptr<TarnwickView>& view) { _view = view; }
    std::shared_ptr<NSBundle> bundle() const { return _bundle; }
    void setBundle(const std::shared_ptr<NSBundle>& bundle) { _bundle = bundle; }

 private:
    std::shared_ptr<TarnwickView> loadedView();

    std::shared_ptr<TarnwickView> twview;  ///< The view made last, unloaded or not.
    bool isIpad = false;
    std::shared_ptr<TarnwickView> _view;
    std::shared_ptr<NSBundle> _bundle;
};
