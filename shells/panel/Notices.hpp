#pragma once

#include "platform/uikit/UILabel.hpp"
#include "platform/uikit/UIView.hpp"
#include "shells/panel/PanelWidget.hpp"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

namespace shell {

/// Text centred in its bounds. Its lines (separated by "\n") share the height equally.
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

/// The columns of a line in a notice below the rows; most letters take one, those of East Asia two.
inline constexpr std::size_t noticeColumns = 44;

/// Breaks a sentence into lines of at most that many columns, three at most, at blanks and between
/// the letters of East Asia. The last one may be longer than fits.
std::string wrapped(const std::string& sentence, std::size_t columns = noticeColumns);

/// The panel's content when the widget has no rows: it says so and names the file in which rows are
/// chosen, with a button that calls `openSettings` where there is one. `width` is in points; the
/// height follows from the content.
std::shared_ptr<UIView> makeEmptyNotice(CGFloat width, std::function<void()> openSettings = {});

/// The panel's content and its preferred size, in points.
struct PanelContent {
    std::shared_ptr<UIView> view;
    CGSize size;
};

/// The presented widget's view, or a notice if it is empty.
PanelContent panelContent(PanelWidget& widget, const std::function<void()>& openSettings = {});

/// Replaces a widget that could not be loaded with one line of text. Main thread.
class MissingWidget final : public PanelWidget {
 public:
    /// `name` is shown unchanged.
    explicit MissingWidget(const std::string& name);

    std::shared_ptr<UIView> view() override { return view_; }
    CGSize preferredSize() override;
    void present() override { presented_ = true; }
    void dismiss() override { presented_ = false; }
    bool isPresented() const override { return presented_; }
    void readAgain() override {}
    /// Never calls the handler: the line never changes its size.
    void setSizeHandler(std::function<void()> /*handler*/) override {}

 private:
    std::shared_ptr<UIView> view_;
    bool presented_ = false;
};

}  // namespace shell
