#include "platform/uikit/UIResponder.hpp"

// Whoever has no use for touches lets them pass.
void UIResponder::touchesBegan(const UITouchSet& /*touches*/,
                               const std::shared_ptr<UIEvent>& /*event*/) {}
void UIResponder::touchesMoved(const UITouchSet& /*touches*/,
                               const std::shared_ptr<UIEvent>& /*event*/) {}
void UIResponder::touchesEnded(const UITouchSet& /*touches*/,
                               const std::shared_ptr<UIEvent>& /*event*/) {}
void UIResponder::touchesCancelled(const UITouchSet& /*touches*/,
                                   const std::shared_ptr<UIEvent>& /*event*/) {}
