#pragma once

#include "platform/uikit/UILabel.hpp"

#include <algorithm>

/// Text in the middle of its bounds, each of its lines ("\n" parts them) as high as the others.
class CentredLabel : public UILabel {
 public:
    using UILabel::UILabel;

    /// 0 without a text.
    int lines() const {
        return text() ? 1 + static_cast<int>(std::ranges::count(*text(), '\n')) : 0;
    }
    void drawRect(Canvas& canvas) override {
        if (!text()) return;
        CGRect place = bounds();
        place.size.height /= static_cast<CGFloat>(lines());
        std::size_t start = 0;
        for (int line = 0; line < lines(); ++line) {
            const std::size_t end = std::min(text()->find('\n', start), text()->size());
            canvas.drawText(text()->substr(start, end - start), font(), textColor(), place,
                            NSTextAlignment::Center);
            place.origin.y += place.size.height;
            start = end + 1;
        }
    }
};
