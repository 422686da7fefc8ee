#pragma once

#include "platform/uikit/Canvas.hpp"
#include "platform/uikit/UIResponder.hpp"

#include <list>
#include <memory>
#include <optional>
#include <vector>

/// A rectangle on the screen with subviews: the later added lie above the earlier. Made with
/// std::make_shared; a superview owns its subviews, nobody else's pointer to a superview does.
/// Main thread only.
///
/// Every callback (touches, layout, painting, actions) may remove or destroy this view, its
/// superview or its siblings: the caller holds what it still needs.
class UIView : public UIResponder {
 public:
    explicit UIView(const CGRect& frame = {});
    ~UIView() override;
    std::string_view className() const override { return "UIView"; }

    /// In the superview's coordinates. A coordinate that is not finite counts as 0; a negative
    /// width or height is kept and has no area.
    const CGRect& frame() const { return frame_; }
    void setFrame(const CGRect& frame);
    /// The same rectangle in the view's own coordinates: its origin is {0, 0}.
    CGRect bounds() const { return {{0, 0}, frame_.size}; }

    std::shared_ptr<UIView> superview() const;
    /// The superview.
    std::shared_ptr<UIResponder> nextResponder() const override { return superview(); }
    /// Back to front, as they stand now.
    std::vector<std::shared_ptr<UIView>> subviews() const;
    /// Puts the view on top of the others, taking it from where it was before. nullptr, this view
    /// itself, one of its superviews and a window are ignored.
    void addSubview(const std::shared_ptr<UIView>& view);
    void removeFromSuperview();
    /// The window at the root of this tree; nullptr when there is none.
    std::shared_ptr<UIWindow> window() const;

    NSInteger tag() const { return tag_; }
    void setTag(NSInteger tag);
    /// The first view of this subtree, this view first, in document order (a view before its
    /// subviews, back to front) that has the tag; nullptr when none has. Repeated look-ups in an
    /// unchanged tree take the time of a search among the tags.
    std::shared_ptr<UIView> viewWithTag(NSInteger tag);

    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden);
    bool isUserInteractionEnabled() const { return userInteractionEnabled_; }
    void setUserInteractionEnabled(bool enabled) { userInteractionEnabled_ = enabled; }
    std::optional<UIColor> backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(const std::optional<UIColor>& color);
    bool clipsToBounds() const { return clipsToBounds_; }
    /// Yes: nothing of this view and its subviews is painted outside its bounds.
    void setClipsToBounds(bool clips);
    unsigned autoresizingMask() const { return autoresizingMask_; }
    /// Bit 1 (2): the width follows the superview's.
    void setAutoresizingMask(unsigned mask) { autoresizingMask_ = mask; }

    /// A point of this view in another view's coordinates; nullptr stands for the root of the
    /// tree (the window, where there is one).
    CGPoint convertPointToView(const CGPoint& point, const UIView* view) const;
    CGRect convertRectToView(const CGRect& rect, const UIView* view) const;

    virtual bool pointInside(const CGPoint& point) const;
    /// The frontmost view under the point (own coordinates) that takes touches: hidden and
    /// disabled views take none, and nothing outside its superviews' bounds does.
    virtual std::shared_ptr<UIView> hitTest(const CGPoint& point, const UIEvent* event);

    /// Whether a finger that comes down in that subview of its own may be meant for this view, as
    /// for one that scrolls: the window keeps it back until its direction is known.
    virtual bool delaysTouchesIn(const UIView& /*subview*/) const { return false; }

    /// The wheel over this view: positive steps away from the user. False passes it on to the
    /// superview.
    virtual bool scrolled(const CGPoint& point, double steps);
    /// A key while this view has the focus. False when it has no use for it.
    virtual bool keyPressed(UIKey key);
    /// Whether the Tab key stops here.
    virtual bool canBecomeFocused() const { return false; }
    bool isFocused() const;

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
    /// Paints the subtree, without what lies outside `damage` (own coordinates).
    void paint(Canvas& canvas, const CGRect& damage);

 protected:
    /// paintBounds() may have changed without the frame. The window calls it of a view on which the
    /// focus comes to be seen, or ceases to.
    void paintBoundsChanged();
    /// What this view says of itself to assistive technology has changed.
    void structureChanged();
    /// The view came to, left or changed its window.
    virtual void didMoveToWindow() {}

 private:
    friend class UIWindow;
    using Subviews = std::list<std::shared_ptr<UIView>>;
    struct TagEntry {
        NSInteger tag;
        UIView* view;
    };
    using TagIndex = std::vector<TagEntry>;  ///< By tag, each once.
    struct SubviewExtent {
        CGRect rect;
        UIView* view;
    };
    /// Where a view's subtree paints, and those of its subviews, in the view's coordinates.
    struct Extents {
        CGRect own;
        std::vector<SubviewExtent> visibleSubviews;  ///< Back to front.
    };

    static std::shared_ptr<UIView> strong(UIView* view);
    UIView* root();
    const UIView* root() const;
    UIWindow* rootWindow();
    virtual UIWindow* asWindow() { return nullptr; }
    bool isDescendantOf(const UIView* view) const;
    /// Neither hidden nor disabled, nor in a view that is.
    bool takesInput() const;
    CGPoint originInRoot() const;
    std::shared_ptr<UIView> detach();
    void movedToWindow();
    std::vector<std::shared_ptr<UIView>> subtree();
    std::optional<std::shared_ptr<UIView>> amongFewLeaves(NSInteger tag) const;
    TagIndex buildTagIndex();
    void fetchAhead(TagIndex::const_iterator found) const;
    void dropTagIndexes();

    const Extents& extents() const;
    const CGRect& extent() const { return extents().own; }
    void dropExtents();
    void damageRect(const CGRect& rect);
    void damageExtent();
    void drawSelf(Canvas& canvas, const CGRect& damage);
    void resizeSubviews(CGFloat oldWidth);
    void layoutNeededBelow();

    // What a search passes by comes first, beside the count of the owners.
    UIView* superview_ = nullptr;
    NSInteger tag_ = 0;
    Subviews subviews_;
    Subviews::iterator position_;  ///< In the superview's list, while there is a superview.
    CGRect frame_;
    bool hidden_ = false;
    bool userInteractionEnabled_ = true;
    bool clipsToBounds_ = false;
    bool needsLayout_ = true;
    bool layoutNeededBelow_ = false;  ///< Then it is so in all superviews too.
    std::optional<UIColor> backgroundColor_;
    unsigned autoresizingMask_ = 0;
    CGRect paintedBounds_;  ///< paintBounds() as they last went to the screen.

    /// What is known of the subtree; both are dropped along the superviews when it changes. Where
    /// the extents are known, those of the visible subviews are too.
    std::unique_ptr<TagIndex> tagIndex_;
    mutable std::optional<Extents> extents_;
};
