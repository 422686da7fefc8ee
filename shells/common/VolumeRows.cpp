#include "shells/common/VolumeRows.hpp"

#include "config/CategoryList.hpp"
#include "platform/uikit/UIAccessibility.hpp"

#include <algorithm>
#include <optional>

namespace shell {
namespace {

// A mixer's tags: these and the category's number.
constexpr NSInteger firstSlider = 2000;
constexpr NSInteger firstCaption = 1000;

bool mayBeRow(const std::shared_ptr<UISlider>& slider) {
    return slider->tag() >= firstSlider;
}

CategoryList presentCategories() {
    std::optional<CategoryList> list = categoryListFromFile();
    return list ? *std::move(list) : initialCategoryList(currentDeviceKind());
}

/// Whether the caption in the slider's own row begins with the record's name: other widgets may use
/// the same tags, and a file may be another by now.
bool isRowOf(const UISlider& slider, NSInteger number, const CategoryRecord& record) {
    const std::shared_ptr<UIView> row = slider.superview();
    const std::shared_ptr<UIView> caption = row ? row->viewWithTag(firstCaption + number) : nullptr;
    const NSString text = caption ? accessibilityLabel(*caption) : std::nullopt;
    return text && text->starts_with(describe(record.prettyCategoryName()));
}

}  // namespace

std::vector<VolumeRow> volumeRows(const std::vector<std::shared_ptr<UISlider>>& sliders) {
    if (std::ranges::none_of(sliders, mayBeRow)) return {};
    const CategoryList categories = presentCategories();
    std::vector<VolumeRow> rows;
    for (const auto& slider : sliders) {
        if (!mayBeRow(slider)) continue;
        const NSInteger number = slider->tag() - firstSlider;
        if (number >= static_cast<NSInteger>(categories.size())) continue;
        const CategoryRecord& record = categories[static_cast<std::size_t>(number)];
        if (isRowOf(*slider, number, record)) rows.push_back({slider, record.categoryName()});
    }
    std::ranges::stable_sort(rows, {}, &VolumeRow::category);
    return rows;
}

}  // namespace shell
