#pragma once

#include "platform/foundation/PropertyValue.hpp"

/// One entry of the category list: a view of the file's own value, which is kept as it stands. An
/// entry that is no dictionary lacks all three.
class CategoryRecord {
 public:
    explicit CategoryRecord(PropertyValue value) : value_(std::move(value)) {}
    /// A visible record with both names.
    CategoryRecord(const char* categoryName, const char* prettyCategoryName);

    /// The volume service's name for the category.
    NSString categoryName() const { return value_.objectForKey("categoryName").string(); }
    /// The name on the screen.
    NSString prettyCategoryName() const {
        return value_.objectForKey("prettyCategoryName").string();
    }
    /// Whether it gets a row; false where the record does not say.
    bool visible() const { return value_.objectForKey("visible").boolValue(); }

    const PropertyValue& value() const { return value_; }

 private:
    PropertyValue value_;
};
