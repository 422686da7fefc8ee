#pragma once

#include "platform/foundation/PropertyValue.hpp"

#include <memory>
#include <optional>
#include <span>
#include <string_view>

/// The root of the classes that are passed by reference, observe notifications, are targets of
/// controls or are found by name. Always owned by a std::shared_ptr. It consists of the class
/// pointer alone, so that what a derived class declares first lies right behind it.
class NSObject {
 public:
    NSObject() = default;
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;
    virtual ~NSObject() = default;

    virtual std::string_view className() const { return "NSObject"; }

    /// Whether performSelector() knows the message. How a caller asks for an optional method.
    virtual bool respondsToSelector(std::string_view selector) const {
        (void)selector;
        return false;
    }

    /// Sends a message by its selector ("viewHeight", "launchURLForTapLocation:"). nullopt when
    /// the object does not respond or the arguments do not fit; else the result, nil for none.
    /// Sizes and points travel as dictionaries (width, height; x, y), objects as their class names.
    virtual std::optional<PropertyValue> performSelector(std::string_view selector,
                                                         std::span<const PropertyValue> arguments) {
        (void)selector;
        (void)arguments;
        return std::nullopt;
    }
};
