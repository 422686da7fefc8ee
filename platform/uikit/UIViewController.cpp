#include "platform/uikit/UIViewController.hpp"

#include <algorithm>

std::shared_ptr<UIView> UIViewController::view() {
    if (view_ || loading_) return view_;
    const auto self = weak_from_this().lock();
    {
        struct Loading {
            bool& flag;
            explicit Loading(bool& loading) : flag(loading) { flag = true; }
            ~Loading() { flag = false; }
            Loading(const Loading&) = delete;
            Loading& operator=(const Loading&) = delete;
        };
        const Loading loading(loading_);
        loadView();
    }
    if (view_) viewDidLoad();
    return view_;
}

void UIViewController::loadView() {
    setView(std::make_shared<UIView>());
}

void UIViewController::addChildViewController(const std::shared_ptr<UIViewController>& added) {
    const std::shared_ptr<UIViewController> child = added;  // May lie in the former parent's list.
    const auto self = strongSelf<UIViewController>();
    if (!child || !self) return;
    for (auto above = self; above; above = above->parent_.lock())
        if (above == child) return;
    child->removeFromParentViewController();
    child->parent_ = self;
    children_.push_back(child);
}

void UIViewController::removeFromParentViewController() {
    const auto self = strongSelf<UIViewController>();
    const auto parent = parent_.lock();
    parent_.reset();
    if (parent) std::erase(parent->children_, self);
}
