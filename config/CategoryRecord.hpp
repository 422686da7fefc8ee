#pragma once

#include "platform/foundation/PropertyValue.hpp"

/// One entry of the category list: the file's own value, which is kept as it stands, and what the
/// mixer reads from it. An entry that is no dictionary lacks all three.
class CategoryRecord {
 public:
    explicit CategoryRecord(PropertyValue value);
    /// A visible record with both names.
    CategoryRecord(const char* categoryName, const char* prettyCategoryName);

    /// The volume service's name for the category.
    const NSString& categoryName() const { return categoryName_; }
    /// The name on the screen.
    const NSString& prettyCategoryName() const { return prettyCategoryName_; }
    /// Whether it gets a row; false where the record does not say.
    bool visible() const { return visible_; }

    const PropertyValue& value() const { return value_; }

 private:
    PropertyValue value_;
    NSString categoryName_;
    NSString prettyCategoryName_;
    bool visible_;
};
