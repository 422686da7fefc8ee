#pragma once

#include "shells/panel/PanelWidget.hpp"

#include <memory>
#include <vector>

/// Several widgets one below the other, each in the size that it prefers, as one widget: as wide as
/// the widest, which the others lie in the middle of. A hairline parts them. Main thread.
class WidgetStack final : public PanelWidget {
 public:
    /// From top to bottom.
    explicit WidgetStack(std::vector<std::unique_ptr<PanelWidget>> widgets);
    ~WidgetStack() override;

    std::shared_ptr<UIView> view() override;
    /// What a widget asks for beyond 10,000 points, and sizes that are none, count as nothing.
    CGSize preferredSize() override;
    void setParentWidth(CGFloat width) override;
    void present() override;
    void dismiss() override;
    bool isPresented() const override { return presented_; }
    void readAgain() override;
    NSString categoryOf(const UIView& view) const override;
    void setSizeHandler(std::function<void()> handler) override {
        sizeHandler_ = std::move(handler);
    }

 private:
    class StackView;

    /// Answers whether the whole has become another size.
    bool stack();

    std::vector<std::unique_ptr<PanelWidget>> widgets_;
    std::shared_ptr<StackView> view_;
    bool presented_ = false;
    bool presenting_ = false;  ///< Then several sizes may change, and are told of once.
    std::function<void()> sizeHandler_;
};
