#pragma once

#include "platform/foundation/PropertyValue.hpp"

#include <memory>
#include <optional>
#include <span>
#include <string_view>

/// The base of classes that are passed by reference, observe notifications, are targets of controls
/// or are found by name. Always owned by a std::shared_ptr. It has no data members, so the first
/// member of a derived class directly follows the class pointer.
class NSObject {
 public:
    NSObject() = default;
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;
    virtual ~NSObject() = default;

    virtual std::string_view className() const { return "NSObject"; }

    /// Whether performSelector() handles the message. Callers check optional methods with it.
    virtual bool respondsToSelector(std::string_view selector) const {
        (void)selector;
        return false;
    }

    /// Sends a message by its selector ("viewHeight", "launchURLForTapLocation:"). Returns nullopt
    /// if the object does not respond or the arguments do not fit; otherwise the result, nil for
    /// none. Sizes and points are passed as dictionaries (width, height; x, y), objects as their
    /// class names.
    virtual std::optional<PropertyValue> performSelector(std::string_view selector,
                                                         std::span<const PropertyValue> arguments) {
        (void)selector;
        (void)arguments;
        return std::nullopt;
    }
};
