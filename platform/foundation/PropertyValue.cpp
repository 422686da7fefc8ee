#include "platform/foundation/PropertyValue.hpp"

#include "platform/foundation/NSString.hpp"

#include <cmath>
#include <limits>
#include <type_traits>
#include <unordered_map>

namespace {

/// Keeps the place of a key's first appearance and the value of its last.
PropertyValue::Dictionary withoutRepeatedKeys(PropertyValue::Dictionary&& entries) {
    std::unordered_map<std::string, std::size_t> places;
    PropertyValue::Dictionary unique;
    unique.reserve(entries.size());
    for (auto& [key, value] : entries) {
        const auto [place, isNew] = places.try_emplace(key, unique.size());
        if (isNew) {
            unique.emplace_back(std::move(key), std::move(value));
        } else {
            unique[place->second].second = std::move(value);
        }
    }
    return unique;
}

/// Equal whatever the order of the entries.
bool sameEntries(const PropertyValue::Dictionary& left, const PropertyValue::Dictionary& right) {
    if (left.size() != right.size()) return false;
    std::unordered_map<std::string_view, const PropertyValue*> byKey;
    for (const auto& [key, value] : right)
        byKey.emplace(key, &value);
    for (const auto& [key, value] : left) {
        const auto found = byKey.find(key);
        if (found == byKey.end() || !(*found->second == value)) return false;
    }
    return true;
}

template <class Pointer>
const typename Pointer::element_type* contained(const PropertyValue::Storage& storage) {
    const auto* pointer = std::get_if<Pointer>(&storage);
    return pointer ? pointer->get() : nullptr;
}

NSInteger clampedInteger(double number) {
    constexpr auto least = std::numeric_limits<NSInteger>::min();
    constexpr auto greatest = std::numeric_limits<NSInteger>::max();
    if (std::isnan(number)) return 0;
    if (number <= static_cast<double>(least)) return least;
    if (number >= static_cast<double>(greatest)) return greatest;
    return static_cast<NSInteger>(number);
}

template <class Integer>
NSInteger clampedInteger(Integer number) {
    if (std::in_range<NSInteger>(number)) return static_cast<NSInteger>(number);
    return std::cmp_less(number, 0) ? std::numeric_limits<NSInteger>::min()
                                    : std::numeric_limits<NSInteger>::max();
}

struct BoolReading {
    bool operator()(bool value) const { return value; }
    bool operator()(std::int64_t value) const { return value != 0; }
    bool operator()(std::uint64_t value) const { return value != 0; }
    bool operator()(double value) const { return value != 0; }
    bool operator()(const std::string& text) const { return boolValueOfText(text); }
    bool operator()(const auto&) const { return false; }
};

struct IntegerReading {
    NSInteger operator()(bool value) const { return value ? 1 : 0; }
    NSInteger operator()(std::int64_t value) const { return clampedInteger(value); }
    NSInteger operator()(std::uint64_t value) const { return clampedInteger(value); }
    NSInteger operator()(double value) const { return clampedInteger(value); }
    NSInteger operator()(const std::string& text) const { return integerValueOfText(text); }
    NSInteger operator()(const auto&) const { return 0; }
};

struct FloatReading {
    float operator()(bool value) const { return value ? 1.0F : 0.0F; }
    float operator()(std::int64_t value) const { return static_cast<float>(value); }
    float operator()(std::uint64_t value) const { return static_cast<float>(value); }
    float operator()(double value) const { return static_cast<float>(value); }
    float operator()(const std::string& text) const { return floatValueOfText(text); }
    float operator()(const auto&) const { return 0; }
};

}  // namespace

PropertyValue::PropertyValue(Data value) : value_(std::make_shared<const Data>(std::move(value))) {}

PropertyValue::PropertyValue(Array value)
    : value_(std::make_shared<const Array>(std::move(value))) {}

PropertyValue::PropertyValue(Dictionary value)
    : value_(std::make_shared<const Dictionary>(withoutRepeatedKeys(std::move(value)))) {}

NSString PropertyValue::string() const {
    const auto* text = std::get_if<std::string>(&value_);
    return text ? NSString(*text) : std::nullopt;
}

const PropertyValue::Array* PropertyValue::array() const {
    return contained<std::shared_ptr<const Array>>(value_);
}

const PropertyValue::Dictionary* PropertyValue::dictionary() const {
    return contained<std::shared_ptr<const Dictionary>>(value_);
}

PropertyValue PropertyValue::objectForKey(std::string_view key) const {
    const Dictionary* entries = dictionary();
    if (!entries) return {};
    for (const auto& [name, value] : *entries) {
        if (name == key) return value;
    }
    return {};
}

bool PropertyValue::boolValue() const {
    return std::visit(BoolReading{}, value_);
}

NSInteger PropertyValue::integerValue() const {
    return std::visit(IntegerReading{}, value_);
}

float PropertyValue::floatValue() const {
    return std::visit(FloatReading{}, value_);
}

bool PropertyValue::operator==(const PropertyValue& other) const {
    return std::visit(
        []<class L, class R>(const L& left, const R& right) {
            constexpr bool integers = std::is_integral_v<L> && std::is_integral_v<R> &&
                                      !std::is_same_v<L, bool> && !std::is_same_v<R, bool>;
            if constexpr (integers) {
                return std::cmp_equal(left, right);
            } else if constexpr (!std::is_same_v<L, R>) {
                return false;
            } else if constexpr (std::is_same_v<L, std::shared_ptr<const Dictionary>>) {
                return left == right || sameEntries(*left, *right);
            } else if constexpr (requires { *left == *right; }) {
                return left == right || *left == *right;
            } else {
                return left == right;
            }
        },
        value_, other.value_);
}
