#include "shells/control/CategoryReport.hpp"

#include "mixer/Caption.hpp"
#include "mixer/Volume.hpp"

namespace control {
CategoryReport reportOf(const CategoryRecord& record, AVSystemController& service) {
    const NSString& name = record.categoryName();
    float volume = 0;
    const bool isReadable = service.getVolume(volume, name);
    return {name, captionTitle(record, &service), isReadable ? std::optional(volume) : std::nullopt,
            service.routeForCategory(name)};
}

std::string volumeText(const CategoryReport& report) {
    return report.volume ? percentText(percentFromFraction(*report.volume)) : unknownVolume;
}

const Row& reportHeading() {
    static const Row heading = {"CATEGORY", "CAPTION", "VOLUME", "ROUTE", "READABLE"};
    return heading;
}

Row rowFrom(const CategoryReport& report) {
    return {describe(report.category), report.caption, volumeText(report),
            report.route.value_or("-"), report.volume ? "yes" : "no"};
}

shell::Json jsonFrom(const CategoryReport& report) {
    return {{"category", shell::jsonText(report.category)},
            {"caption", report.caption},
            {"volume", report.volume ? shell::jsonNumber(*report.volume) : shell::Json(nullptr)},
            {"route", shell::jsonText(report.route)},
            {"readable", report.volume.has_value()}};
}

}  // namespace control
