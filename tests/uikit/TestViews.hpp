#pragma once

#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// How far a computed coordinate may be off: less than anybody sees, and what single precision
/// leaves of some hundred points.
inline constexpr double tolerance = sizeof(CGFloat) == sizeof(float) ? 1e-4 : 1e-9;

inline std::ostream& operator<<(std::ostream& out, const CGPoint& p) {
    return out << '{' << p.x << ", " << p.y << '}';
}
inline std::ostream& operator<<(std::ostream& out, const CGRect& r) {
    return out << '{' << r.origin << ", " << r.size.width << " x " << r.size.height << '}';
}

inline std::shared_ptr<UIWindow> makeWindow(CGFloat width = 320, CGFloat height = 270) {
    return std::make_shared<UIWindow>(CGRectMake(0, 0, width, height));
}

/// A view of the kind that stands in `parent`.
template <class View = UIView>
std::shared_ptr<View> add(const std::shared_ptr<UIView>& parent, const CGRect& frame) {
    auto view = std::make_shared<View>(frame);
    parent->addSubview(view);
    return view;
}

/// Keeps the touch messages it gets, and runs a function in each.
class TouchView : public UIView {
 public:
    using UIView::UIView;
    void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override {
        note("began", touches, event);
    }
    void touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override {
        note("moved", touches, event);
    }
    void touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override {
        note("ended", touches, event);
    }
    void touchesCancelled(const UITouchSet& touches,
                          const std::shared_ptr<UIEvent>& event) override {
        note("cancelled", touches, event);
    }

    std::vector<std::string> messages;
    std::shared_ptr<UITouch> last;
    std::shared_ptr<UIEvent> lastEvent;
    std::function<void()> onTouch;

 private:
    void note(const char* message, const UITouchSet& touches,
              const std::shared_ptr<UIEvent>& withEvent) {
        messages.emplace_back(message);
        last = touches.at(0);
        lastEvent = withEvent;
        if (onTouch) onTouch();
    }
};

class FocusableView : public TouchView {
 public:
    using TouchView::TouchView;
    bool canBecomeFocused() const override { return focusable; }
    bool keyPressed(UIKey key) override {
        keys.push_back(key);
        return usesKeys;
    }
    bool focusable = true;
    bool usesKeys = true;
    std::vector<UIKey> keys;
};

/// Counts how often it painted, and what it may paint on.
class PaintedView : public UIView {
 public:
    using UIView::UIView;
    void drawRect(Canvas& canvas) override {
        (void)canvas;
        ++paints;
        if (onPaint) onPaint();
    }
    CGRect paintBounds() const override {
        ++asked;
        return CGRectInset(bounds(), -overflow, -overflow);
    }
    void setOverflow(CGFloat points) {
        overflow = points;
        paintBoundsChanged();
    }
    CGFloat overflow = 0;
    int paints = 0;
    mutable int asked = 0;
    std::function<void()> onPaint;
};

/// Keeps the values that a slider's value-changed told of.
class ValueListener : public NSObject {
 public:
    void changed(const std::shared_ptr<UISlider>& slider) {
        values.push_back(slider->value());
        if (onChange) onChange();
    }
    std::vector<float> values;
    std::function<void()> onChange;
};

/// A slider from 0 to 100 in a window, as in a row: its thumb's centre goes from x 33.5 to 286.5
/// in the window, its middle is at y 35.
class SliderTest : public testing::Test {
 protected:
    SliderTest() {
        slider->setMaximumValue(100);
        slider->addTarget(listener, &ValueListener::changed, UIControlEventValueChanged);
        window->takeDamage();
    }
    static CGFloat xAt(double percent) { return 33.5 + 2.53 * percent; }
    void press(CGFloat x, int identifier = 0) {
        window->sendTouch(UITouchPhase::Began, {x, 35}, identifier);
    }
    void drag(CGFloat x, int identifier = 0) {
        window->sendTouch(UITouchPhase::Moved, {x, 35}, identifier);
    }
    void release(CGFloat x, int identifier = 0) {
        window->sendTouch(UITouchPhase::Ended, {x, 35}, identifier);
    }

    std::shared_ptr<UIWindow> window = makeWindow();
    std::shared_ptr<UISlider> slider = add<UISlider>(window, CGRectMake(20, 20, 280, 30));
    std::shared_ptr<ValueListener> listener = std::make_shared<ValueListener>();
};
