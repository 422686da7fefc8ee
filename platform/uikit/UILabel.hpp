#pragma once

#include "platform/uikit/UIView.hpp"

/// One line of text, centred vertically, with an ellipsis where it does not fit. The margin that
/// its frame leaves on the left of the superview is kept free of text on the right, too, also where
/// the frame reaches into it.
class UILabel : public UIView {
 public:
    explicit UILabel(const CGRect& frame = {});
    std::string_view className() const override { return "UILabel"; }

    const NSString& text() const { return text_; }
    void setText(const NSString& text);
    const UIFont& font() const { return font_; }
    void setFont(const UIFont& font);
    /// The default colour unless one was set.
    UIColor textColor() const { return textColor_.value_or(defaultTextColor()); }
    /// An empty one leaves the colour as it is.
    void setTextColor(const std::optional<UIColor>& color);

    /// Whether what it says is read out to those who do not see it as soon as it appears or says
    /// something else. Not at first.
    void setAnnounced(bool announced) { announced_ = announced; }
    bool isAnnounced() const { return announced_; }

    /// Black; a shell sets the colour that goes with its own background. Labels that are shown
    /// and have no colour of their own are painted again.
    static UIColor defaultTextColor();
    static void setDefaultTextColor(const UIColor& color);

    void drawRect(Canvas& canvas) override;

 private:
    static void repaintLabels(UIView& root);
    CGRect textRect() const;

    NSString text_;
    UIFont font_;
    std::optional<UIColor> textColor_;
    bool announced_ = false;
};
