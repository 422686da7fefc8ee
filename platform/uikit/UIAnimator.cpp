#include "platform/uikit/UIAnimator.hpp"

#include <algorithm>
#include <limits>

UIAnimator& UIAnimator::shared() {
    static UIAnimator animator;
    return animator;
}

void UIAnimator::add(const std::shared_ptr<UIAnimation>& animation) {
    if (!animation) return;
    std::erase_if(animations_, [&animation](const auto& other) {
        return other.expired() || other.lock() == animation;
    });
    animations_.push_back(animation);
}

void UIAnimator::advance(double time) {
    const double shown = enabled_ ? time : std::numeric_limits<double>::infinity();
    const auto animations = animations_;  // A step may add or end others.
    for (const auto& weak : animations) {
        const auto animation = weak.lock();
        if (!animation || (animation->step(shown) && enabled_)) continue;
        std::erase_if(animations_,
                      [&animation](const auto& other) { return other.lock() == animation; });
    }
    std::erase_if(animations_, [](const auto& weak) { return weak.expired(); });
}

bool UIAnimator::isActive() const {
    return std::any_of(animations_.begin(), animations_.end(),
                       [](const auto& animation) { return !animation.expired(); });
}
