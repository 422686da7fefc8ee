#pragma once

#include "platform/foundation/PropertyValue.hpp"

#include <optional>
#include <vector>

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

/// What the machine model says of the device; at most one is true, neither for a telephone.
struct DeviceKind {
    bool isIpad = false;
    bool isIpod = false;
};

/// From the machine model's first letters, as it stands now.
DeviceKind currentDeviceKind();

/// The categories in screen order, hidden ones included. A record's position is its number.
using CategoryList = std::vector<CategoryRecord>;

/// The category file's list as it stands there; nullopt when there is no readable list.
std::optional<CategoryList> categoryListFromFile();

/// The list that a new user begins with: a telephone has phone calls, an iPad or iPod video
/// conferences.
CategoryList initialCategoryList(const DeviceKind& device);

/// Whether the root of a list is one of those, which the mixer itself wrote on some machine.
bool isInitialCategoryList(const PropertyValue& root);

/// The file's list; while there is no readable one, the list that a new user begins with on this
/// machine. Never writes the file.
CategoryList presentCategoryList();

/// Replaces the category file as a whole; a failure leaves the old one and is silent, the next
/// load tries again.
void writeCategoryFile(const CategoryList& list);

/// How many categories the file shows at this moment; that of the initial list, all of which are
/// visible, while there is no readable file. Never creates it.
NSInteger visibleCategoriesInFile();
