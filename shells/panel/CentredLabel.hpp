#pragma once

#include "platform/uikit/UILabel.hpp"

/// A line of text in the middle of its bounds.
class CentredLabel : public UILabel {
 public:
    using UILabel::UILabel;
    void drawRect(Canvas& canvas) override {
        if (text())
            canvas.drawText(*text(), font(), textColor(), bounds(), NSTextAlignment::Center);
    }
};
