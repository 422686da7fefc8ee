#pragma once

#include "platform/foundation/NSString.hpp"
#include "platform/uikit/Canvas.hpp"
#include "platform/uikit/TagIndex.hpp"
#include "platform/uikit/UIResponder.hpp"

#include <list>
#include <memory>
#include <optional>
#include <vector>

/// What a view tells the root of its tree. Coordinates are the root's.
class UIViewTreeRoot {
 public:
    virtual ~UIViewTreeRoot() = default;
    virtual std::shared_ptr<UIWindow> rootWindow() = 0;
    virtual void addDamage(const CGRect& rect) = 0;
    /// Views were added, removed, moved or renamed.
    virtual void viewsChanged() = 0;
    virtual void viewWasHidden(const UIView& view) = 0;
    virtual void viewWasRemoved(const UIView& view) = 0;
};

/// The kind of element that a view is for assistive technology; None for a view that it skips.
enum class UIAccessibilityRole { None, Label, Notice, Button, Slider };

/// A rectangle on the screen with content of its own and subviews; those added later lie above the
/// earlier ones.
///
/// Make one with std::make_shared, add it to a superview, and override what it does:
///
///     class Dot : public UIView {
///      public:
///         using UIView::UIView;
///         void drawRect(Canvas& canvas) override {
///             canvas.fillRounded(bounds(), bounds().size.width / 2, UIColor::redColor());
///         }
///     };
///     window->addSubview(std::make_shared<Dot>(CGRectMake(10, 10, 8, 8)));
///
/// Where its look changes, it calls setNeedsDisplay(), and is painted with the next frame.
///
/// A superview owns its subviews; a pointer to a superview owns nothing. Every callback (touches,
/// layout, painting, actions) may remove or destroy this view, its superview or its siblings: the
/// caller holds what it still needs. Main thread only.
class UIView : public UIResponder {
 public:
    explicit UIView(const CGRect& frame = {});
    ~UIView() override;
    std::string_view className() const override { return "UIView"; }

    // Geometry ----------------------------------------------------------------------------------

    /// In the superview's coordinates. A coordinate that is not finite counts as 0; a negative
    /// width or height is kept and has no area.
    const CGRect& frame() const { return frame_; }
    void setFrame(const CGRect& frame);
    /// The same rectangle in the view's own coordinates: its origin is {0, 0}.
    CGRect bounds() const { return {{0, 0}, frame_.size}; }
    unsigned autoresizingMask() const { return autoresizingMask_; }
    /// Bit 1 (2): the width follows the superview's.
    void setAutoresizingMask(unsigned mask) { autoresizingMask_ = mask; }

    /// A point of this view in another view's coordinates; nullptr stands for the root of the
    /// tree (the window, where there is one).
    CGPoint convertPointToView(const CGPoint& point, const UIView* view) const;
    CGRect convertRectToView(const CGRect& rect, const UIView* view) const;

    // Hierarchy ---------------------------------------------------------------------------------

    std::shared_ptr<UIView> superview() const;
    /// The superview.
    std::shared_ptr<UIResponder> nextResponder() const override { return superview(); }
    /// A copy, back to front.
    std::vector<std::shared_ptr<UIView>> subviews() const;
    /// Puts the view on top of the others, taking it out of its former superview. nullptr, this
    /// view itself, one of its superviews and a window are ignored.
    void addSubview(const std::shared_ptr<UIView>& view);
    void removeFromSuperview();
    /// The window at the root of this tree; nullptr when there is none.
    std::shared_ptr<UIWindow> window() const;
    /// True of the view itself, too.
    bool isDescendantOfView(const UIView& view) const;

    NSInteger tag() const { return tag_; }
    void setTag(NSInteger tag);
    /// The first view of this subtree in document order (a view before its subviews, back to
    /// front) that has the tag; nullptr when none has. Repeated searches in an unchanged tree take
    /// the time of a binary search.
    std::shared_ptr<UIView> viewWithTag(NSInteger tag);

    // Appearance and painting -------------------------------------------------------------------

    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden);
    std::optional<UIColor> backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(const std::optional<UIColor>& color);
    bool clipsToBounds() const { return clipsToBounds_; }
    /// Yes: nothing of this view and its subviews is painted outside its bounds.
    void setClipsToBounds(bool clips);

    /// Asks for layoutSubviews() before the next paint.
    void setNeedsLayout();
    /// Lays out what needs it in this subtree, superviews first. What asks again meanwhile waits
    /// for the next time.
    void layoutIfNeeded();
    virtual void layoutSubviews() {}

    /// Marks the view, or a part of it (own coordinates), as to be painted again.
    void setNeedsDisplay();
    void setNeedsDisplayInRect(const CGRect& rect);
    /// Paints the view's own content over its background, without its subviews, clipped to
    /// paintBounds().
    virtual void drawRect(Canvas& canvas) { (void)canvas; }
    /// What drawRect() may paint on, own coordinates: the bounds, or more for a view whose
    /// content reaches past them.
    virtual CGRect paintBounds() const { return bounds(); }
    /// To be called when paintBounds() may have changed without the frame. The window calls it of
    /// a view that begins or ceases to show the focus.
    void paintBoundsChanged();
    /// Paints the subtree, without what lies outside `damage` (own coordinates).
    void paint(Canvas& canvas, const CGRect& damage);

    // Input -------------------------------------------------------------------------------------

    bool isUserInteractionEnabled() const { return userInteractionEnabled_; }
    void setUserInteractionEnabled(bool enabled) { userInteractionEnabled_ = enabled; }
    /// Whether the view and all of its superviews are neither hidden nor disabled.
    bool takesInput() const;
    virtual bool pointInside(const CGPoint& point) const;
    /// The frontmost view under the point (own coordinates) that takes touches: hidden and
    /// disabled views take none, and nothing outside its superviews' bounds does.
    virtual std::shared_ptr<UIView> hitTest(const CGPoint& point, const UIEvent* event);

    /// Whether a finger on the given subview may be meant for this view, as in a scrolling view:
    /// the window delays the touch until its direction is known.
    virtual bool delaysTouchesIn(const UIView& /*subview*/) const { return false; }

    /// The wheel over this view: positive steps away from the user. False passes it on to the
    /// superview.
    virtual bool scrolled(const CGPoint& point, double steps);
    /// A key while this view has the focus. False when it has no use for it.
    virtual bool keyPressed(UIKey key);
    /// Whether the Tab key stops here.
    virtual bool canBecomeFocused() const { return false; }
    bool isFocused() const;

    // Accessibility -----------------------------------------------------------------------------

    virtual UIAccessibilityRole accessibilityRole() const { return UIAccessibilityRole::None; }
    /// The view's accessible name: the text of the last label before it among its siblings; nil if
    /// there is none.
    virtual NSString accessibilityLabel() const;
    /// The label without the view's value, so that it stays the same while the value changes and is
    /// announced separately.
    virtual NSString accessibilityName() const { return accessibilityLabel(); }
    /// Whether the user can operate the element and what it shows means anything.
    virtual bool isAccessibilityEnabled() const { return true; }

 protected:
    /// What assistive technology is told of this view has changed.
    void structureChanged();
    /// The view came to, left or changed its window.
    virtual void didMoveToWindow() {}
    virtual void didResize() {}
    /// For a view that is the root of its tree: whom the views below it tell what has changed. Not
    /// owned.
    void setTreeRoot(UIViewTreeRoot* root) { ownTreeRoot_ = root; }

 private:
    using Subviews = std::list<std::shared_ptr<UIView>>;
    struct SubviewExtent {
        CGRect rect;
        UIView* view;
    };
    /// The rectangles in which the view's subtree and its visible subviews paint, in the view's
    /// coordinates. The subviews' rectangles are stored side by side, since a repaint tests all of
    /// them and fetching each subview from memory is slow in a long list.
    struct Extents {
        CGRect own;
        std::vector<SubviewExtent> visibleSubviews;  ///< Back to front.
    };

    static std::shared_ptr<UIView> strong(UIView* view);
    UIViewTreeRoot* treeRoot() const;
    CGPoint originInRoot() const;
    std::shared_ptr<UIView> detach();
    void movedToWindow();
    std::vector<std::shared_ptr<UIView>> subtree();
    TagIndex newTagIndex();
    void dropTagIndexes();
    void resizeSubviews(CGFloat oldWidth);

    const Extents& extents() const;
    void dropExtents();
    void damageRect(const CGRect& rect);
    void damageExtent();
    void drawSelf(Canvas& canvas, const CGRect& damage);
    void layoutNeededBelow();

    UIView* superview_ = nullptr;
    CGRect frame_;
    bool hidden_ = false;
    bool userInteractionEnabled_ = true;
    bool clipsToBounds_ = false;
    bool needsLayout_ = true;
    bool layoutNeededBelow_ = false;  ///< If so, also in all superviews.
    unsigned autoresizingMask_ = 0;
    NSInteger tag_ = 0;
    /// Known only while those of all visible subviews are known; dropped along the superviews when
    /// something changes.
    mutable std::optional<Extents> extents_;
    Subviews subviews_;
    Subviews::iterator position_;  ///< In the superview's list, while there is a superview.
    std::optional<UIColor> backgroundColor_;
    CGRect paintedBounds_;                ///< paintBounds() at the last paint.
    std::unique_ptr<TagIndex> tagIndex_;  ///< Of the subtree; dropped along the superviews.
    UIViewTreeRoot* ownTreeRoot_ = nullptr;
};

/// The visible views of a subtree that have a role for assistive technology, in reading order: of
/// sibling views the higher ones first, otherwise in document order. Main thread.
std::vector<std::shared_ptr<UIView>> accessibilityElements(const std::shared_ptr<UIView>& root);
