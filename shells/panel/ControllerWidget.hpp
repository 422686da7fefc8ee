#pragma once

#include "platform/foundation/NSObject.hpp"
#include "shells/common/RowKeeper.hpp"
#include "shells/panel/PanelWidget.hpp"

#include <utility>

/// What widgets with a controller of their own have in common, under either host. Main thread.
class ControllerWidget : public PanelWidget {
 public:
    bool isPresented() const final { return presented_; }
    /// By the message "updateValues" where the controller responds to that, else by presenting it
    /// anew. At once, or when no slider of the widget is held any more.
    void readAgain() final;
    NSString categoryOf(const UIView& view) const final;
    void setSizeHandler(std::function<void()> handler) final { sizeHandler_ = std::move(handler); }

 protected:
    virtual NSObject& controller() = 0;
    /// Both answer whether that is news.
    bool becomesPresented() { return !std::exchange(presented_, true); }
    bool becomesDismissed();
    /// The widget has assembled its rows, in its view.
    void rowsAreThere() { rows_.follow(view()); }
    void sizeHasChanged() const {
        if (sizeHandler_) sizeHandler_();
    }

 private:
    void readRows();

    bool presented_ = false;
    std::function<void()> sizeHandler_;
    shell::RowKeeper rows_{[this] { readRows(); }};
};
