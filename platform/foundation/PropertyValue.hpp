#pragma once

#include "platform/foundation/NSString.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

/// One value of a property list: nil, a boolean, a number, a string, a date, data, an array or a
/// dictionary. Immutable and cheap to copy, since containers are shared.
///
///     const NSString skin = settings.objectForKey("selectedSkin").string();
///
/// Nothing here throws: an accessor of the wrong type returns nil, false, 0 or an empty list.
class PropertyValue {
 public:
    using Array = std::vector<PropertyValue>;
    /// Entries in file order. A key that stands twice counts once, with its last value.
    using Dictionary = std::vector<std::pair<std::string, PropertyValue>>;
    using Data = std::vector<std::byte>;
    /// Seconds since 1 January 2001, 00:00 GMT.
    struct Date {
        double secondsSinceReferenceDate = 0;
        bool operator==(const Date&) const = default;
    };

    PropertyValue() = default;
    explicit PropertyValue(bool value) : value_(value) {}
    explicit PropertyValue(std::int64_t value) : value_(value) {}
    explicit PropertyValue(std::uint64_t value) : value_(value) {}
    explicit PropertyValue(int value) : value_(std::int64_t{value}) {}
    explicit PropertyValue(double value) : value_(value) {}
    explicit PropertyValue(std::string value) : value_(std::move(value)) {}
    explicit PropertyValue(const char* value) : value_(std::string(value)) {}
    explicit PropertyValue(Date value) : value_(value) {}
    explicit PropertyValue(Data value);
    explicit PropertyValue(Array value);
    explicit PropertyValue(Dictionary value);

    bool isNil() const { return std::holds_alternative<std::monostate>(value_); }
    /// The text of a string; nil for every other kind.
    NSString string() const;
    /// nullptr unless this is an array. Valid as long as a copy of this value lives.
    const Array* array() const;
    /// nullptr unless this is a dictionary. Valid as long as a copy of this value lives.
    const Dictionary* dictionary() const;
    /// The entry of a dictionary; nil when it is missing or when this is not a dictionary.
    PropertyValue objectForKey(std::string_view key) const;

    /// A boolean or number other than 0 is true. A string is true when, after blanks, an optional
    /// sign and zeros, it goes on with one of Y, y, T, t, 1 to 9; what follows is ignored. Every
    /// other kind is false.
    bool boolValue() const;
    /// A number without its fraction; of a string the decimal number that it begins with after
    /// blanks (0 when there is none). Out of range gives the nearest limit; every other kind is 0.
    NSInteger integerValue() const;
    /// A number; of a string the decimal number (fraction and exponent allowed) that it begins
    /// with after blanks (0 when there is none), infinite if too large. Every other kind is 0.
    float floatValue() const;

    /// The same kind and contents. The order of a dictionary's entries does not count, nor whether
    /// an integer is kept as signed or unsigned.
    bool operator==(const PropertyValue& other) const;

    using Storage = std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double,
                                 std::string, Date, std::shared_ptr<const Data>,
                                 std::shared_ptr<const Array>, std::shared_ptr<const Dictionary>>;
    /// For readers and writers of the format, which need to see every kind.
    const Storage& storage() const { return value_; }

 private:
    Storage value_;
};
