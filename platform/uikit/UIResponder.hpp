#pragma once

#include "platform/foundation/NSObject.hpp"
#include "platform/uikit/UIEvent.hpp"

#include <memory>

/// What can be handed touches and can hand itself to others. Always owned by a std::shared_ptr.
class UIResponder : public NSObject, public std::enable_shared_from_this<UIResponder> {
 public:
    std::string_view className() const override { return "UIResponder"; }

    /// Who is handed what this has no use for. nullptr at the end of the chain.
    virtual std::shared_ptr<UIResponder> nextResponder() const { return nullptr; }

    /// These four hand the touches on to the next responder. Who overrides one and still wants them
    /// handed on calls this one too.
    virtual void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event);
    virtual void touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event);
    virtual void touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event);
    virtual void touchesCancelled(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event);

 protected:
    /// This object as its own class, for handing it to observers and controls. Null while it is
    /// being constructed or destroyed.
    template <class T>
    std::shared_ptr<T> strongSelf() {
        return std::dynamic_pointer_cast<T>(weak_from_this().lock());
    }
};
