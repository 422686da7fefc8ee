#pragma once

#include "platform/foundation/NSObject.hpp"
#include "platform/uikit/Geometry.hpp"

#include <array>
#include <concepts>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

// Messages by name, for a class that answers NSObject::performSelector(). It lists its functions in
// a table and looks selectors up there:
//
//     constexpr Selector<Controller> selectors[] = {
//         selector<&Controller::viewHeight, Controller>("viewHeight"),
//         selector<&Controller::launchURLForTapLocation, Controller, CGPoint>(
//             "launchURLForTapLocation:"),
//     };
//
//     bool Controller::respondsToSelector(std::string_view name) const {
//         return findSelector<Controller>(selectors, name) != nullptr;
//     }
//     std::optional<PropertyValue> Controller::performSelector(
//         std::string_view name, std::span<const PropertyValue> arguments) {
//         const auto* entry = findSelector<Controller>(selectors, name);
//         return entry ? entry->send(*this, arguments) : std::nullopt;
//     }

// Values ------------------------------------------------------------------------------------------

/// How results of messages travel through NSObject::performSelector().
inline PropertyValue selectorResult(const CGSize& size) {
    return PropertyValue(
        PropertyValue::Dictionary{{"width", PropertyValue(static_cast<double>(size.width))},
                                  {"height", PropertyValue(static_cast<double>(size.height))}});
}
inline PropertyValue selectorResult(std::integral auto count) {
    return PropertyValue(static_cast<std::int64_t>(count));
}
inline PropertyValue selectorResult(std::floating_point auto number) {
    return PropertyValue(static_cast<double>(number));
}
template <class T>
requires std::derived_from<T, NSObject> PropertyValue
selectorResult(const std::shared_ptr<T>& object) {
    return object ? PropertyValue(std::string(object->className())) : PropertyValue();
}

/// How an argument of a message comes out of a value; nullopt when it does not fit. A point's
/// coordinates are single precision, and of objects only nil can travel.
template <class T>
std::optional<T> selectorArgument(const PropertyValue& value) {
    if constexpr (std::is_same_v<T, CGPoint>) {
        const PropertyValue x = value.objectForKey("x");
        const PropertyValue y = value.objectForKey("y");
        if (x.isNil() || y.isNil()) return std::nullopt;
        return CGPoint{x.floatValue(), y.floatValue()};
    } else {
        return value.isNil() ? std::optional<T>(T()) : std::nullopt;
    }
}

// The table ---------------------------------------------------------------------------------------

/// A message of T under its selector. Answers nullopt when the arguments do not fit.
template <class T>
struct Selector {
    std::string_view name;
    std::optional<PropertyValue> (*send)(T& object, std::span<const PropertyValue> arguments);
};

/// Calls the member function and turns its result into a value, nil for none.
template <auto method, class T, class... Arguments>
PropertyValue sendSelector(T& object, const Arguments&... arguments) {
    if constexpr (std::is_void_v<decltype((object.*method)(arguments...))>) {
        (object.*method)(arguments...);
        return {};
    } else {
        return selectorResult((object.*method)(arguments...));
    }
}

/// Makes the entry for a member function without arguments or with one:
/// selector<&T::viewHeight, T>("viewHeight").
template <auto method, class T>
constexpr Selector<T> selector(std::string_view name) requires requires(T& object) {
    (object.*method)();
}
{
    return {name, [](T& object, std::span<const PropertyValue> arguments) {
                if (!arguments.empty()) return std::optional<PropertyValue>();
                return std::optional(sendSelector<method>(object));
            }};
}
template <auto method, class T, class Argument>
constexpr Selector<T> selector(std::string_view name) {
    return {name, [](T& object, std::span<const PropertyValue> arguments) {
                if (arguments.size() != 1) return std::optional<PropertyValue>();
                const auto argument = selectorArgument<Argument>(arguments[0]);
                if (!argument) return std::optional<PropertyValue>();
                return std::optional(sendSelector<method>(object, *argument));
            }};
}

/// The entry with that name; nullptr when there is none.
template <class T>
const Selector<T>* findSelector(std::span<const Selector<T>> table, std::string_view name) {
    for (const Selector<T>& entry : table)
        if (entry.name == name) return &entry;
    return nullptr;
}
