#pragma once

#include "shells/panel/PanelWidget.hpp"

#include <string>

/// Stands where a widget would that could not be loaded, and says so in one quiet line. Main
/// thread.
class MissingWidget final : public PanelWidget {
 public:
    /// The name is shown as it is.
    explicit MissingWidget(const std::string& name);

    std::shared_ptr<UIView> view() override { return view_; }
    CGSize preferredSize() override;
    void present() override { presented_ = true; }
    void dismiss() override { presented_ = false; }
    bool isPresented() const override { return presented_; }
    void readAgain() override {}
    /// Never called: the line stays as it is.
    void setSizeHandler(std::function<void()> /*handler*/) override {}

 private:
    std::shared_ptr<UIView> view_;
    bool presented_ = false;
};
