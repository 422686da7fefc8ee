#pragma once

#include "shells/panel/PanelWidget.hpp"

#include <memory>
#include <vector>

namespace shell {

/// Several widgets stacked vertically as one, each in its preferred size: as wide as the widest
/// one, the others centred, separated by hairlines. Main thread.
class WidgetStack final : public PanelWidget {
 public:
    /// From top to bottom.
    explicit WidgetStack(std::vector<std::unique_ptr<PanelWidget>> widgets);
    ~WidgetStack() override;

    std::shared_ptr<UIView> view() override;
    /// Widths and heights beyond 10,000 points, and invalid ones, count as 0.
    CGSize preferredSize() override;
    void setParentWidth(CGFloat width) override;
    void present() override;
    void dismiss() override;
    bool isPresented() const override { return presented_; }
    void readAgain() override;
    void assembleAgain() override;
    NSString categoryOf(const UIView& view) const override;
    void setSizeHandler(std::function<void()> handler) override {
        sizeHandler_ = std::move(handler);
    }

 private:
    class StackView;

    /// Returns whether the size of the whole has changed.
    bool stack();

    std::vector<std::unique_ptr<PanelWidget>> widgets_;
    std::shared_ptr<StackView> view_;
    bool presented_ = false;
    bool presenting_ = false;  ///< Meanwhile, changes of size are reported once, at the end.
    std::function<void()> sizeHandler_;
};

}  // namespace shell
