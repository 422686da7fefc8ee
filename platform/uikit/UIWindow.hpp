#pragma once

#include "platform/foundation/NSRunLoop.hpp"
#include "platform/uikit/DamageRegion.hpp"
#include "platform/uikit/UIView.hpp"

#include <functional>
#include <map>

/// The root of a view tree: hands touches, wheel and keys to its views, knows the focus, and
/// gathers what must be painted.
///
/// Whoever shows it on a surface passes on the input and paints when the damage handler asks for a
/// frame:
///
///     auto window = std::make_shared<UIWindow>(CGRectMake(0, 0, 320, 270));
///     window->addSubview(content);
///     window->setDamageHandler([&] { surface.requestFrame(); });
///     ... in the frame:
///     for (const CGRect& rect : window->takeDamage())
///         window->layoutAndPaint(canvas, rect);
///
/// A shell owns it and resizes it by its frame. Main thread.
class UIWindow : public UIView, private UIViewTreeRoot {
 public:
    explicit UIWindow(const CGRect& frame = {});
    ~UIWindow() override;
    std::string_view className() const override { return "UIWindow"; }

    /// All windows there are, in no order.
    static std::vector<std::shared_ptr<UIWindow>> windows();

    /// The units of its surface per point of the window; 1 by default. The backend that shows the
    /// window applies it to painting and touches, the window's owner to its size.
    CGFloat zoom() const { return zoom_; }
    /// Ignored unless it is a positive number.
    void setZoom(CGFloat zoom);

    // Input -------------------------------------------------------------------------------------

    /// Delivers a touch. A touch that begins goes to the view that the hit test finds, which
    /// captures it: later phases of the same identifier go there too. If that view leaves the
    /// window or is destroyed, the rest of the touch is dropped. A second beginning of the same
    /// identifier cancels the first; other phases without a beginning are ignored. Points that are
    /// not finite begin and move nothing. A view that can have the focus gets it. The type counts
    /// at the beginning.
    ///
    /// A finger in a view that delays touches is not delivered until its receiver is known: if it
    /// moves up or down, the delaying view; if it moves sideways, rests for 150 ms or is lifted,
    /// the view that it began on. That view then gets the whole touch, from where it began.
    void sendTouch(UITouchPhase phase, const CGPoint& point, int identifier = 0,
                   UITouchType type = UITouchType::IndirectPointer);
    /// Cancels every touch under way, as when the window loses the pointer.
    void cancelTouches();
    /// Delivers the wheel at a point (window coordinates) to the view under it, then to its
    /// superviews. Returns whether one used it. Steps that follow within half a second at the same
    /// place go to the view that used the first, even if another view is there by then: scrolling a
    /// list does not end on a slider.
    bool sendScroll(const CGPoint& point, double steps);
    /// Tab and Shift-Tab move the focus in document order and wrap around; other keys go to the
    /// focused view. Returns whether the key was used.
    bool sendKey(UIKey key);

    // Focus -------------------------------------------------------------------------------------

    std::shared_ptr<UIView> focusedView() const { return focused_.lock(); }
    /// nullptr takes the focus away. Ignored for a view that cannot have it.
    void setFocusedView(const std::shared_ptr<UIView>& view);
    /// Whether the focus is shown: from the first key until the next touch.
    bool isFocusVisible() const { return focusVisible_; }

    // Painting ----------------------------------------------------------------------------------

    /// What must be painted again, in window coordinates, no rectangle overlapping another.
    const std::vector<CGRect>& damage() const { return damage_.rects(); }
    std::vector<CGRect> takeDamage() { return damage_.take(); }
    /// Called when a window without damage gets some: the shell requests a frame. The handler must
    /// not change views.
    void setDamageHandler(std::function<void()> handler);
    /// Called after views were added, removed, moved or renamed, once until the next paint.
    void setStructureHandler(std::function<void()> handler);
    /// Lays out what needs it, then paints the part `damage` of the tree.
    void layoutAndPaint(Canvas& canvas, const CGRect& damage);

 protected:
    void didResize() override;

 private:
    enum class Direction { Forward, Backward };
    /// The receiver of a delayed touch: not known yet, the delaying view, or the view that it began
    /// on.
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

    // UIViewTreeRoot
    std::shared_ptr<UIWindow> rootWindow() override;
    void addDamage(const CGRect& rect) override;
    void viewsChanged() override;
    void viewWasHidden(const UIView& view) override;
    void viewWasRemoved(const UIView& view) override;

    // Focus
    void setFocusVisible(bool visible);
    bool canFocus(const UIView& view) const;
    std::vector<std::shared_ptr<UIView>> focusableViews();
    bool moveFocus(Direction direction);

    // Touches
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
    std::map<int, DelayedTouch> delayed_;  ///< The touches of these that are kept back.
    Scroll lastScroll_;
    std::weak_ptr<UIView> focused_;
    bool focusVisible_ = false;
    CGFloat zoom_ = 1;
    bool viewsChangedSincePaint_ = false;
    DamageRegion damage_;
    std::function<void()> damageHandler_;
    std::function<void()> structureHandler_;
};
