#include "config/CategoryList.hpp"

#include "config/WidgetIdentifier.hpp"
#include "platform/foundation/NSPropertyList.hpp"

#include <algorithm>

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
        {"Ringtone", "Ringtone"},
        {"Audio/Video", "Audio/Video"},
        {"HeadsetBT", "BT Headset"},
        {"HeadphonesBT", "BT Headphones"},
    };
    if (device.isIpad || device.isIpod)
        list.emplace_back("VideoConference", "Video Conference");
    else
        list.emplace_back("PhoneCall", "Phone Call");
    return list;
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
