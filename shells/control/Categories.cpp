#include "shells/control/Categories.hpp"

#include "platform/foundation/MachineModel.hpp"

#include <algorithm>

namespace control {

CategoryList mixerCategories() {
    if (auto list = categoryListFromFile()) return *std::move(list);
    // As the mixer's window takes a machine that says nothing of itself.
    if (machineModel().empty()) setMachineModel("iPad");
    return initialCategoryList(currentDeviceKind());
}

FoundCategory categoryCalled(const std::string& name, const CategoryList& categories) {
    const auto named = std::ranges::find(categories, name, &CategoryRecord::categoryName);
    if (named != categories.end()) return {*named, ""};

    CategoryList captioned;
    std::ranges::copy_if(categories, std::back_inserter(captioned),
                         [&](const CategoryRecord& record) {
                             return record.categoryName() && record.prettyCategoryName() == name;
                         });
    if (captioned.empty()) return {CategoryRecord(name.c_str(), name.c_str()), ""};
    if (captioned.size() == 1) return {captioned.front(), ""};
    std::string names;
    for (const CategoryRecord& record : captioned)
        names += (names.empty() ? "" : ", ") + *record.categoryName();
    return {std::nullopt, "'" + name + "' is the caption of several categories: " + names};
}

}  // namespace control
