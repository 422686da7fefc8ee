#pragma once

#include "platform/uikit/UIEvent.hpp"

#include <functional>
#include <memory>
#include <string_view>

class UIView;

/// A touch message on its way: what is sent to whom with what.
struct UITouchMessage {
    std::shared_ptr<UIView> receiver;  ///< Nobody: the message does nothing.
    UITouchPhase phase = UITouchPhase::Began;
    UITouchSet touches;
    std::shared_ptr<UIEvent> event;  ///< May be nil.

    /// "touchesBegan:withEvent:" and so on. Empty for the stationary phase, which has no message.
    std::string_view selector() const;
    /// Sends it. The receiver lives until it has been dealt with.
    void send() const;
};

/// Told of every touch message to a view, before the view. nullptr ends it. Main thread.
void setTouchMessageObserver(std::function<void(const UITouchMessage&)> observer);
