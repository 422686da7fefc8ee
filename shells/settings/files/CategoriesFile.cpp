#include "shells/settings/files/CategoriesFile.hpp"

#include "config/WidgetIdentifier.hpp"
#include "shells/common/Translation.hpp"

#include <algorithm>
#include <functional>

namespace settings {
namespace {

Trouble rowIsGone() {
    return shell::translated("The row is no longer in the file");
}

PropertyValue initialList() {
    PropertyValue::Array records;
    for (const CategoryRecord& record : initialCategoryList(currentDeviceKind()))
        records.push_back(record.value());
    return PropertyValue(std::move(records));
}

std::size_t distance(std::size_t one, std::size_t other) {
    return one > other ? one - other : other - one;
}

/// The number of the record that fits and is nearest to another number.
std::optional<std::size_t> nearest(const PropertyValue::Array& records, std::size_t number,
                                   const std::function<bool(const PropertyValue&)>& fits) {
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < records.size(); ++i)
        if (fits(records[i]) && (!found || distance(i, number) < distance(*found, number)))
            found = i;
    return found;
}

/// A row that was shown, in the file as it is now.
std::optional<std::size_t> findRow(const PropertyValue::Array& records, const PropertyValue& row,
                                   std::size_t number) {
    const auto same = nearest(records, number, [&](const auto& each) { return each == row; });
    const NSString category = CategoryRecord(row).categoryName();
    if (same || !category) return same;
    return nearest(records, number, [&](const auto& each) {
        return CategoryRecord(each).categoryName() == category;
    });
}

/// The number, in the file as it is now, below the row that was shown above that number.
std::size_t findPlace(const PropertyValue::Array& records, const PropertyValue& above,
                      std::size_t number) {
    if (number == 0) return 0;
    const auto found = above.isNil() ? std::nullopt : findRow(records, above, number - 1);
    return std::min(found ? *found + 1 : number, records.size());
}

}  // namespace

CategoriesFile::CategoriesFile() : MixerFile(categoryFilePath(), Root::Array, initialList()) {}

CategoryList CategoriesFile::rows() const {
    CategoryList rows;
    for (const PropertyValue& record : *root().array())
        rows.emplace_back(record);
    return rows;
}

/// nil beyond the last one.
PropertyValue CategoriesFile::recordAt(std::size_t row) const {
    const PropertyValue::Array& records = *root().array();
    return row < records.size() ? records[row] : PropertyValue();
}

Trouble CategoriesFile::setInRow(std::size_t row, const char* key, const PropertyValue& value) {
    const PropertyValue shown = recordAt(row);
    return edit([&](PropertyListEditor& list) -> Trouble {
        const auto now = findRow(*list.root().array(), shown, row);
        if (!now) return rowIsGone();
        if (!(*list.root().array())[*now].dictionary())
            return shell::translated("This entry of the list is no row");
        return sentenceFor(list.set({std::to_string(*now)}, key, value));
    });
}

Trouble CategoriesFile::setCaption(std::size_t row, const std::string& caption) {
    return setInRow(row, "prettyCategoryName", PropertyValue(caption));
}

Trouble CategoriesFile::setVisible(std::size_t row, bool isVisible) {
    return setInRow(row, "visible", PropertyValue(isVisible));
}

Trouble CategoriesFile::move(std::size_t from, std::size_t to) {
    PropertyValue::Array others = *root().array();
    if (from >= others.size()) return rowIsGone();
    const PropertyValue shown = others[from];
    others.erase(others.begin() + static_cast<std::ptrdiff_t>(from));
    to = std::min(to, others.size());
    const PropertyValue above = to > 0 ? others[to - 1] : PropertyValue();
    return edit([&](PropertyListEditor& list) -> Trouble {
        PropertyValue::Array records = *list.root().array();
        const auto now = findRow(records, shown, from);
        if (!now) return rowIsGone();
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(*now));
        return sentenceFor(list.move({}, *now, findPlace(records, above, to)));
    });
}

Trouble CategoriesFile::add(const std::string& category, const std::string& caption,
                            std::size_t position) {
    const CategoryRecord record(category.c_str(), caption.c_str());
    position = std::min(position, root().array()->size());
    const PropertyValue above = position > 0 ? recordAt(position - 1) : PropertyValue();
    return edit([&](PropertyListEditor& list) -> Trouble {
        const std::size_t place = findPlace(*list.root().array(), above, position);
        return sentenceFor(list.insert({}, place, record.value()));
    });
}

Result<RemovedRow> CategoriesFile::remove(std::size_t row) {
    const PropertyValue shown = recordAt(row);
    RemovedRow removed;
    const Trouble trouble = edit([&](PropertyListEditor& list) -> Trouble {
        const PropertyValue::Array records = *list.root().array();
        const auto now = findRow(records, shown, row);
        if (!now) return rowIsGone();
        auto element = list.remove({}, *now);
        if (!element) return sentenceFor(element.error());
        const PropertyValue above = *now > 0 ? records[*now - 1] : PropertyValue();
        removed = {*std::move(element), *now, above};
        return std::nullopt;
    });
    if (trouble) return Failure{*trouble};
    return removed;
}

Trouble CategoriesFile::restore(const RemovedRow& removed) {
    return edit([&](PropertyListEditor& list) -> Trouble {
        const std::size_t place = findPlace(*list.root().array(), removed.above, removed.row);
        return sentenceFor(list.restore({}, place, removed.element));
    });
}

}  // namespace settings
