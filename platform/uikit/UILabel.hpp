#pragma once

#include "platform/uikit/UIView.hpp"

/// One line of text, centred vertically, with an ellipsis where it does not fit.
///
///     auto label = std::make_shared<UILabel>(CGRectMake(20, 5, 280, 15));
///     label->setText("Ringtone: 40%");
///     row->addSubview(label);
///
/// The text keeps as far from the superview's right edge as the frame lies from its left one, also
/// where the frame reaches farther.
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

    /// Whether screen readers announce it as a notice as soon as it appears or changes. False by
    /// default.
    void setAnnounced(bool announced) { announced_ = announced; }

    /// Black; a shell sets the colour that goes with its own background. Labels that are shown
    /// and have no colour of their own are painted again.
    static UIColor defaultTextColor();
    static void setDefaultTextColor(const UIColor& color);

    void drawRect(Canvas& canvas) override;
    UIAccessibilityRole accessibilityRole() const override {
        return announced_ ? UIAccessibilityRole::Notice : UIAccessibilityRole::Label;
    }
    /// Its text.
    NSString accessibilityLabel() const override { return text_; }

 private:
    static void repaintLabels(UIView& root);
    CGRect textRect() const;

    NSString text_;
    UIFont font_;
    std::optional<UIColor> textColor_;
    bool announced_ = false;
};
