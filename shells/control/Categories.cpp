#include "shells/control/Categories.hpp"

#include "mixer/Caption.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "shells/common/Translation.hpp"

#include <algorithm>

namespace control {

CategoryList mixerCategories() {
    // As in the mixer's window, a machine that does not report its form is a large one.
    if (machineModel().empty()) setMachineModel("iPad");
    return presentCategoryList();
}

Result<CategoryRecord> categoryCalled(const std::string& name, const CategoryList& categories) {
    const auto named = std::ranges::find(categories, name, &CategoryRecord::categoryName);
    if (named != categories.end()) return *named;

    CategoryList captioned;
    std::ranges::copy_if(categories, std::back_inserter(captioned),
                         [&](const CategoryRecord& record) {
                             return record.categoryName() && record.prettyCategoryName() == name;
                         });
    if (captioned.empty()) return CategoryRecord(name.c_str(), name.c_str());
    if (captioned.size() == 1) return captioned.front();
    std::string names;
    for (const CategoryRecord& record : captioned)
        names += (names.empty() ? "" : ", ") + *record.categoryName();
    return Failure{shell::filled(
        shell::translated("'{name}' is the caption of several categories: {categories}"),
        {{"name", name}, {"categories", names}})};
}

CategoryReport reportOf(const CategoryRecord& record, AVSystemController& service) {
    const NSString& name = record.categoryName();
    return {name, captionTitle(record, &service), service.levelOf(name),
            service.routeForCategory(name)};
}

std::string volumeText(const CategoryReport& report) {
    return report.level ? percentText(percentFromFraction(report.level->heard())) : unknownVolume;
}

Row reportHeading() {
    using shell::translated;
    // TRANSLATORS: The five headings of the table that "tarnwickctl list" prints on a terminal.
    return {translated("CATEGORY"), translated("CAPTION"), translated("VOLUME"),
            translated("ROUTE"), translated("READABLE")};
}

Row rowFrom(const CategoryReport& report) {
    return {describe(report.category), report.caption, volumeText(report),
            report.route.value_or("-"), report.level ? "yes" : "no"};
}

shell::Json jsonFrom(const CategoryReport& report) {
    using Mute = AVSystemController::Mute;
    const auto& level = report.level;
    return {{"category", shell::jsonText(report.category)},
            {"caption", report.caption},
            {"volume", level ? shell::jsonNumber(level->heard()) : shell::Json(nullptr)},
            {"muted", level ? shell::Json(level->mute == Mute::On) : shell::Json(nullptr)},
            {"level", level ? shell::jsonNumber(level->volume) : shell::Json(nullptr)},
            {"route", shell::jsonText(report.route)},
            {"readable", level.has_value()}};
}

}  // namespace control
