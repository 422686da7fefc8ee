#include "mixer/Caption.hpp"

#include "platform/celestial/AVSystemController.hpp"

#include <cstdio>

namespace {
bool showsRoute(const NSString& categoryName) {
    return categoryName == "Audio/Video" || categoryName == "PhoneCall" ||
           categoryName == "VideoConference";
}
}  // namespace

std::string captionTitle(const CategoryRecord& record, AVSystemController* service) {
    const NSString name = record.categoryName();
    std::string title = describe(record.prettyCategoryName());
    if (!showsRoute(name)) return title;
    const NSString route = service ? service->routeForCategory(name) : std::nullopt;
    return title + " (" + describe(route) + ")";
}

std::string captionText(const std::string& title, float percent, Percentage percentage) {
    if (percentage == Percentage::Hidden) return title;
    char number[64];
    std::snprintf(number, sizeof number, ": %.0f%%", static_cast<double>(percent));
    return title + number;
}

std::string unknownCaptionText(const std::string& title) {
    return title + ": unknown";
}
