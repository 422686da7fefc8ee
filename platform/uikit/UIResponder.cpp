#include "platform/uikit/UIResponder.hpp"

void UIResponder::touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    if (const auto next = nextResponder()) next->touchesBegan(touches, event);
}

void UIResponder::touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    if (const auto next = nextResponder()) next->touchesMoved(touches, event);
}

void UIResponder::touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) {
    if (const auto next = nextResponder()) next->touchesEnded(touches, event);
}

void UIResponder::touchesCancelled(const UITouchSet& touches,
                                   const std::shared_ptr<UIEvent>& event) {
    if (const auto next = nextResponder()) next->touchesCancelled(touches, event);
}
