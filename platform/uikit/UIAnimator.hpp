#pragma once

#include <memory>
#include <vector>

/// Something that moves by itself for a while.
class UIAnimation {
 public:
    virtual ~UIAnimation() = default;
    /// Shows the state at that time (seconds on the main loop's clock); false when it is over.
    virtual bool step(double time) = 0;
};

/// The animations under way. The shell calls advance() before each frame while isActive(); without
/// animations nothing wakes up. Main thread.
class UIAnimator {
 public:
    static UIAnimator& shared();
    /// Steps it at every advance() until it is over or gone; it is not owned. Twice counts once.
    void add(const std::shared_ptr<UIAnimation>& animation);
    void advance(double time);
    bool isActive() const;
    /// Off: an animation ends with its first step, for desktops that ask for none.
    void setEnabled(bool enabled) { enabled_ = enabled; }
    bool isEnabled() const { return enabled_; }

 private:
    std::vector<std::weak_ptr<UIAnimation>> animations_;
    bool enabled_ = true;
};
