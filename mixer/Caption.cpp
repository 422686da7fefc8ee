#include "mixer/Caption.hpp"

#include "platform/celestial/AVSystemController.hpp"

#include <cstdio>

namespace {
bool showsRoute(const NSString& categoryName) {
    return categoryName == AudioCategory::audioVideo || categoryName == AudioCategory::phoneCall ||
           categoryName == AudioCategory::videoConference;
}
}  // namespace

std::string captionTitle(const CategoryRecord& record, AVSystemController* service) {
    const NSString name = record.categoryName();
    std::string title = describe(record.prettyCategoryName());
    if (!showsRoute(name)) return title;
    const NSString route = service ? service->routeForCategory(name) : std::nullopt;
    return title + " (" + describe(route) + ")";
}

std::string percentText(float percent) {
    char text[64];
    std::snprintf(text, sizeof text, "%.0f%%", static_cast<double>(percent));
    return text;
}

std::string captionText(const std::string& title, float percent, Percentage percentage) {
    if (percentage == Percentage::Hidden) return title;
    return title + ": " + percentText(percent);
}

std::string unknownCaptionText(const std::string& title) {
    return title + ": " + unknownVolume;
}
