#pragma once

#include "platform/foundation/OneShotTimer.hpp"
#include "platform/uikit/UIView.hpp"

#include <functional>
#include <map>

/// The root of a view tree: hands touches, wheel and keys to its views, knows the focus, and
/// gathers what must be painted. A shell owns it and puts it on a screen. Main thread.
class UIWindow : public UIView {
 public:
    explicit UIWindow(const CGRect& frame = {});
    ~UIWindow() override;
    std::string_view className() const override { return "UIWindow"; }

    /// How many units of the surface that shows the window a point of it takes; 1 at first. What
    /// shows it heeds that, in painting and in touches, and the window's owner in its size.
    CGFloat zoom() const { return zoom_; }
    /// Ignored unless it is a positive number.
    void setZoom(CGFloat zoom);

    /// All that there are, in no order.
    static std::vector<std::shared_ptr<UIWindow>> windows();

    /// Delivers a touch. A began touch goes to the view that the hit test finds and is captured by
    /// it; the following phases of the same identifier go there too. When that view leaves the
    /// window or goes away, the rest of the touch goes nowhere. A second beginning of the same
    /// identifier cancels the first; other phases without a beginning are ignored. A point that is
    /// not finite begins nothing and moves nothing. A view that can have the focus gets it. The
    /// type counts at the beginning.
    ///
    /// A finger in a view that delays touches is kept back, and nobody hears of it, until it is
    /// known whom it is meant for: one that goes up or down is the delaying view's, one that goes
    /// sideways, rests for 150 ms or is lifted is that of the view it began on. That one is then
    /// handed all of it, from where it came down.
    void sendTouch(UITouchPhase phase, const CGPoint& point, int identifier = 0,
                   UITouchType type = UITouchType::IndirectPointer);
    /// Cancels every touch under way, as when the window loses the pointer.
    void cancelTouches();
    /// The wheel over a point (window coordinates): to the view under it, then its superviews.
    /// Answers whether one took it. Steps that follow soon and at the same place go to the one that
    /// took the first, whatever comes to lie there meanwhile: scrolling a list does not end on a
    /// slider.
    bool sendScroll(const CGPoint& point, double steps);
    /// Tab and Shift-Tab move the focus in document order, round the ends; other keys go to the
    /// focused view. Answers whether the key was used.
    bool sendKey(UIKey key);

    std::shared_ptr<UIView> focusedView() const { return focused_.lock(); }
    /// nullptr takes the focus away. Ignored for a view that cannot have it.
    void setFocusedView(const std::shared_ptr<UIView>& view);
    /// Whether the focus is to be seen: from the first key until the next touch.
    bool isFocusVisible() const { return focusVisible_; }

    /// What is to be painted again, in window coordinates, none overlapping another.
    const std::vector<CGRect>& damage() const { return damage_; }
    std::vector<CGRect> takeDamage();
    /// Called when damage comes to a window that had none: the shell asks for a frame. It must not
    /// change views from inside.
    void setDamageHandler(std::function<void()> handler);
    /// Called after views were added, removed, moved or renamed, once until the next paint.
    void setStructureHandler(std::function<void()> handler);
    /// Lays out what needs it, then paints the part `damage` of the tree.
    void layoutAndPaint(Canvas& canvas, const CGRect& damage);

 private:
    friend class UIView;
    enum class Direction { Forward, Backward };
    /// What a touch that is kept back is: not known yet, the delaying view's, or that of the view
    /// it began on.
    enum class Meaning { Open, Scroll, Content };
    struct DelayedTouch {
        std::weak_ptr<UIView> scroller;
        OneShotTimer patience;
    };
    struct Scroll {
        std::weak_ptr<UIView> taker;
        CGPoint point;
        double time = 0;
    };

    UIWindow* asWindow() override { return this; }
    void addDamage(const CGRect& rect);
    void includeDamage(const CGRect& rect);
    void mergeIntoNearest(CGRect rect);
    void resized();
    void viewsChanged();
    void forget(const UIView& subtree);
    void forgetFocus(const UIView& subtree);
    void setFocusVisible(bool visible);
    bool canFocus(const UIView& view) const;
    std::vector<std::shared_ptr<UIView>> focusableViews();
    bool moveFocus(Direction direction);
    void beginTouch(const CGPoint& point, int identifier, UITouchType type);
    std::shared_ptr<UIView> viewDelaying(const UITouch& touch) const;
    void delayTouch(int identifier, const std::shared_ptr<UIView>& scroller);
    Meaning meaningOf(const UITouch& touch, UITouchPhase phase) const;
    bool endsDelay(int identifier, UITouchPhase phase);
    bool handOver(int identifier, Meaning meaning);
    void patienceEnded(int identifier);
    void beginOnView(const std::shared_ptr<UITouch>& touch);
    void deliver(UITouchPhase phase, const std::shared_ptr<UITouch>& touch);

    std::map<int, std::shared_ptr<UITouch>> touches_;
    std::map<int, DelayedTouch> delayed_;  ///< Those of the touches that are kept back.
    Scroll lastScroll_;
    std::weak_ptr<UIView> focused_;
    bool focusVisible_ = false;
    CGFloat zoom_ = 1;
    bool viewsChangedSincePaint_ = false;
    std::vector<CGRect> damage_;
    std::function<void()> damageHandler_;
    std::function<void()> structureHandler_;
};
