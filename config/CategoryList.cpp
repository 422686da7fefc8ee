#include "config/CategoryList.hpp"

#include "config/WidgetIdentifier.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSPropertyList.hpp"

#include <algorithm>
#include <string>
#include <utility>

std::optional<CategoryList> categoryListFromFile() {
    const PropertyValue root = NSPropertyList::arrayWithContentsOfFile(categoryFilePath());
    const PropertyValue::Array* records = root.array();
    if (!records) return std::nullopt;
    CategoryList list;
    list.reserve(records->size());
    for (const PropertyValue& record : *records)
        list.emplace_back(record);
    return list;
}

CategoryList initialCategoryList(const DeviceKind& device) {
    CategoryList list = {
        {AudioCategory::ringtone, "Ringtone"},
        {AudioCategory::audioVideo, "Audio/Video"},
        {AudioCategory::headsetBT, "BT Headset"},
        {AudioCategory::headphonesBT, "BT Headphones"},
    };
    if (device.isIpad || device.isIpod)
        list.emplace_back(AudioCategory::videoConference, "Video Conference");
    else
        list.emplace_back(AudioCategory::phoneCall, "Phone Call");
    return list;
}

bool isInitialCategoryList(const PropertyValue& root) {
    const auto isOf = [&](const DeviceKind& device) {
        PropertyValue::Array records;
        for (const CategoryRecord& record : initialCategoryList(device))
            records.push_back(record.value());
        return root == PropertyValue(std::move(records));
    };
    return isOf({}) || isOf({.isIpad = true});
}

CategoryList presentCategoryList() {
    std::optional<CategoryList> list = categoryListFromFile();
    return list ? *std::move(list) : initialCategoryList(currentDeviceKind());
}

void writeCategoryFile(const CategoryList& list) {
    PropertyValue::Array records;
    records.reserve(list.size());
    for (const CategoryRecord& record : list)
        records.push_back(record.value());
    NSPropertyList::writeToFileAtomically(PropertyValue(std::move(records)), categoryFilePath());
}

NSInteger visibleCategoriesInFile() {
    constexpr NSInteger initialListSize = 5;
    const std::optional<CategoryList> list = categoryListFromFile();
    if (!list) return initialListSize;
    return std::ranges::count_if(*list, &CategoryRecord::visible);
}

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

DeviceKind currentDeviceKind() {
    const std::string model = machineModel();
    if (model.starts_with("iPad")) return {.isIpad = true};
    return {.isIpod = model.starts_with("iPod")};
}
