#include "shells/panel/OpenWidgets.hpp"

#include "shells/common/WidgetBundle.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "shells/panel/LegacyHostedWidget.hpp"
#include "shells/panel/MissingWidget.hpp"
#include "shells/panel/WidgetStack.hpp"

#include <filesystem>
#include <utility>

namespace {

struct OpenedWidget {
    std::unique_ptr<PanelWidget> widget;
    std::string error;
};

OpenedWidget openCurrent(const std::string& bundlePath, CGFloat parentWidth) {
    auto [controller, error] = shell::createController(bundlePath);
    if (!controller) return {nullptr, error};
    return {std::make_unique<HostedWidget>(std::move(controller), parentWidth), ""};
}

OpenedWidget openLegacy(const std::string& bundlePath) {
    auto [controller, error] = shell::createLegacyController(bundlePath);
    if (!controller) return {nullptr, error};
    return {std::make_unique<LegacyHostedWidget>(std::move(controller)), ""};
}

/// "Tarnwick" for "/usr/lib/tarnwick/Tarnwick.bundle/".
std::string nameOf(const std::string& bundlePath) {
    const std::filesystem::path path = std::filesystem::path(bundlePath + "/").parent_path();
    const std::string name = path.stem().string();
    return name.empty() ? bundlePath : name;
}

}  // namespace

OpenedWidgets openWidgets(std::span<const std::string> bundlePaths, HostKind kind,
                          CGFloat parentWidth) {
    OpenedWidgets opened;
    std::vector<std::unique_ptr<PanelWidget>> widgets;
    for (const std::string& path : bundlePaths) {
        auto [widget, error] =
            kind == HostKind::Legacy ? openLegacy(path) : openCurrent(path, parentWidth);
        if (widget) {
            opened.anyLoaded = true;
        } else {
            opened.complaints.push_back(error);
            widget = std::make_unique<MissingWidget>(nameOf(path));
        }
        widgets.push_back(std::move(widget));
    }
    opened.widget = widgets.size() == 1 ? std::move(widgets.front())
                                        : std::make_unique<WidgetStack>(std::move(widgets));
    return opened;
}
