#include "platform/uikit/UIAnimator.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {
class CountedAnimation : public UIAnimation {
 public:
    explicit CountedAnimation(int steps) : stepsLeft(steps) {}
    bool step(double time) override {
        lastTime = time;
        ++stepped;
        if (onStep) onStep();
        return --stepsLeft > 0;
    }
    int stepsLeft;
    int stepped = 0;
    double lastTime = 0;
    std::function<void()> onStep;
};
}  // namespace

TEST(UIAnimator, StepsUntilTheAnimationIsOver) {
    UIAnimator animator;
    const auto animation = std::make_shared<CountedAnimation>(2);
    EXPECT_FALSE(animator.isActive());
    animator.add(animation);
    EXPECT_TRUE(animator.isActive());
    animator.advance(3);
    EXPECT_EQ(animation->lastTime, 3);
    EXPECT_TRUE(animator.isActive());
    animator.advance(4);
    EXPECT_FALSE(animator.isActive());
    animator.advance(5);
    EXPECT_EQ(animation->stepped, 2);
}

TEST(UIAnimator, CountsAnAnimationAddedTwiceOnce) {
    UIAnimator animator;
    const auto animation = std::make_shared<CountedAnimation>(9);
    animator.add(animation);
    animator.add(animation);
    animator.advance(1);
    EXPECT_EQ(animation->stepped, 1);
}

TEST(UIAnimator, DoesNotOwnItsAnimations) {
    UIAnimator animator;
    auto animation = std::make_shared<CountedAnimation>(9);
    animator.add(animation);
    animator.add(nullptr);
    animation.reset();
    EXPECT_FALSE(animator.isActive());
    animator.advance(1);
}

TEST(UIAnimator, StepsOneAddedInAStepFromTheNextTimeOn) {
    UIAnimator animator;
    const auto first = std::make_shared<CountedAnimation>(9);
    const auto second = std::make_shared<CountedAnimation>(9);
    first->onStep = [&] { animator.add(second); };
    animator.add(first);
    animator.advance(1);
    EXPECT_EQ(second->stepped, 0);
    animator.advance(2);
    EXPECT_EQ(second->stepped, 1);
    EXPECT_EQ(first->stepped, 2);
}

TEST(UIAnimator, ForgetsOneDestroyedInAnothersStep) {
    UIAnimator animator;
    auto second = std::make_shared<CountedAnimation>(9);
    const auto first = std::make_shared<CountedAnimation>(1);
    first->onStep = [&] { second.reset(); };
    animator.add(first);
    animator.add(second);
    animator.advance(1);
    EXPECT_FALSE(animator.isActive());
}

TEST(UIAnimator, EndsWithTheFirstStepWhenOff) {
    UIAnimator animator;
    const auto animation = std::make_shared<CountedAnimation>(9);
    animator.add(animation);
    animator.setEnabled(false);
    animator.advance(1);
    EXPECT_TRUE(std::isinf(animation->lastTime));
    EXPECT_FALSE(animator.isActive());
}
