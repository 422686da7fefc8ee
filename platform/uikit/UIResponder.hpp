#pragma once

#include "platform/foundation/NSObject.hpp"
#include "platform/uikit/UIEvent.hpp"

#include <memory>

/// Receives touches, and passes on those that it has no use for. Override what it handles:
///
///     void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event)
///     override;
///
/// Always owned by a std::shared_ptr. Main thread.
class UIResponder : public NSObject, public std::enable_shared_from_this<UIResponder> {
 public:
    std::string_view className() const override { return "UIResponder"; }

    /// Who receives what this object has no use for; nullptr at the end of the chain.
    virtual std::shared_ptr<UIResponder> nextResponder() const { return nullptr; }

    /// These four pass the touches on to the next responder. An override that wants that too calls
    /// the base class.
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
