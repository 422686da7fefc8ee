#include "shells/control/CategoryReport.hpp"

#include "mixer/Caption.hpp"
#include "mixer/Volume.hpp"

namespace control {
CategoryReport reportOf(const CategoryRecord& record, AVSystemController& service) {
    const NSString& name = record.categoryName();
    return {name, captionTitle(record, &service), service.levelOf(name),
            service.routeForCategory(name)};
}

std::string volumeText(const CategoryReport& report) {
    return report.level ? percentText(percentFromFraction(report.level->heard())) : unknownVolume;
}

const Row& reportHeading() {
    static const Row heading = {"CATEGORY", "CAPTION", "VOLUME", "ROUTE", "READABLE"};
    return heading;
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
