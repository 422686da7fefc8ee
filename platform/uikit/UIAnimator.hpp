#pragma once

#include <memory>
#include <vector>

/// An animation. The object that starts it owns it.
class UIAnimation {
 public:
    virtual ~UIAnimation() = default;
    /// Shows the state at that time (seconds on the main loop's clock); false when it is over.
    virtual bool step(double time) = 0;
};

/// The animations under way.
///
///     UIAnimator::shared().add(animation);                   // who moves
///     if (animator.isActive()) animator.advance(now);        // the shell, before each frame
///
/// Without animations nothing wakes up. Main thread.
class UIAnimator {
 public:
    static UIAnimator& shared();
    /// Steps the animation at every advance() until it is over or gone. It is not owned; adding it
    /// twice counts once.
    void add(const std::shared_ptr<UIAnimation>& animation);
    void advance(double time);
    bool isActive() const;
    /// No: an animation ends with its first step, as on desktops that ask for none.
    void setEnabled(bool enabled) { enabled_ = enabled; }
    bool isEnabled() const { return enabled_; }

 private:
    std::vector<std::weak_ptr<UIAnimation>> animations_;
    bool enabled_ = true;
};
