#include "config/CategoryRecord.hpp"

#include <utility>

CategoryRecord::CategoryRecord(PropertyValue value)
    : value_(std::move(value)),
      categoryName_(value_.objectForKey("categoryName").string()),
      prettyCategoryName_(value_.objectForKey("prettyCategoryName").string()),
      visible_(value_.objectForKey("visible").boolValue()) {}

CategoryRecord::CategoryRecord(const char* categoryName, const char* prettyCategoryName)
    : CategoryRecord(PropertyValue(
          PropertyValue::Dictionary{{"categoryName", PropertyValue(categoryName)},
                                    {"prettyCategoryName", PropertyValue(prettyCategoryName)},
                                    {"visible", PropertyValue(true)}})) {}
