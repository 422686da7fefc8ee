#include "config/CategoryRecord.hpp"

CategoryRecord::CategoryRecord(const char* categoryName, const char* prettyCategoryName)
    : value_(PropertyValue::Dictionary{{"categoryName", PropertyValue(categoryName)},
                                       {"prettyCategoryName", PropertyValue(prettyCategoryName)},
                                       {"visible", PropertyValue(true)}}) {}
