#pragma once

#include "platform/foundation/NSObject.hpp"
#include "shells/panel/PanelWidget.hpp"

#include <utility>

/// What widgets with a controller of their own have in common, under either host. Main thread.
class ControllerWidget : public PanelWidget {
 public:
    bool isPresented() const final { return presented_; }
    /// By the message "updateValues" where the controller responds to that, else by presenting it
    /// anew.
    void readAgain() final;
    void setSizeHandler(std::function<void()> handler) final { sizeHandler_ = std::move(handler); }

 protected:
    virtual NSObject& controller() = 0;
    /// Both answer whether that is news.
    bool becomesPresented() { return !std::exchange(presented_, true); }
    bool becomesDismissed() { return std::exchange(presented_, false); }
    void sizeHasChanged() const {
        if (sizeHandler_) sizeHandler_();
    }

 private:
    bool presented_ = false;
    std::function<void()> sizeHandler_;
};
