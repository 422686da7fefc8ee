#pragma once

#include "platform/uikit/UIView.hpp"

#include <memory>
#include <vector>

/// Owns a view and loads it when it is first asked for. Override loadView() to make the view, or
/// viewDidLoad() to fill the empty one:
///
///     class Clock : public UIViewController {
///      public:
///         void viewDidLoad() override { view()->addSubview(face_); }
///     };
///     auto clock = std::make_shared<Clock>();
///     parent->addChildViewController(clock);
///     parent->view()->addSubview(clock->view());  // Loads it.
///
/// A parent owns its child controllers; a child does not own its parent. Main thread.
class UIViewController : public UIResponder {
 public:
    std::string_view className() const override { return "UIViewController"; }

    virtual bool init() { return true; }
    /// Runs loadView() and viewDidLoad() first if there is no view. nullptr from inside loadView()
    /// until that has set one, and for good (without viewDidLoad()) if it sets none.
    std::shared_ptr<UIView> view();
    bool isViewLoaded() const { return view_ != nullptr; }
    void setView(const std::shared_ptr<UIView>& view) { view_ = view; }
    /// Makes the view; this one makes an empty one.
    virtual void loadView();
    virtual void viewDidLoad() {}

    std::shared_ptr<UIViewController> parentViewController() const { return parent_.lock(); }
    /// Owns the child from now on, taking it from its former parent. Views are not moved.
    void addChildViewController(const std::shared_ptr<UIViewController>& child);
    void removeFromParentViewController();

 private:
    std::shared_ptr<UIView> view_;
    bool loading_ = false;
    std::weak_ptr<UIViewController> parent_;
    std::vector<std::shared_ptr<UIViewController>> children_;
};
