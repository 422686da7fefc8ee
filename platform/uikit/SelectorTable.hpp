#pragma once

#include "platform/foundation/NSObject.hpp"
#include "platform/uikit/Geometry.hpp"

#include <array>
#include <concepts>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

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

/// A message of T without arguments, under its selector.
template <class T>
struct Selector {
    std::string_view name;
    PropertyValue (*send)(T& object);
};

/// Makes the entry for a member function: selector<&T::viewHeight, T>("viewHeight").
template <auto method, class T>
constexpr Selector<T> selector(std::string_view name) {
    return {name, [](T& object) -> PropertyValue {
                if constexpr (std::is_void_v<decltype((object.*method)())>) {
                    (object.*method)();
                    return {};
                } else {
                    return selectorResult((object.*method)());
                }
            }};
}

/// The entry with that name; nullptr when there is none.
template <class T>
const Selector<T>* findSelector(std::span<const Selector<T>> table, std::string_view name) {
    for (const Selector<T>& entry : table)
        if (entry.name == name) return &entry;
    return nullptr;
}
