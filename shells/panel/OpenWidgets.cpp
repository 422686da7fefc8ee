#include "shells/panel/OpenWidgets.hpp"

#include "shells/common/WidgetBundle.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "shells/panel/LegacyHostedWidget.hpp"
#include "shells/panel/Notices.hpp"
#include "shells/panel/WidgetStack.hpp"

#include <filesystem>
#include <utility>

namespace shell {
namespace {

using Opened = Result<std::unique_ptr<PanelWidget>>;

Opened openCurrent(const std::string& bundlePath, CGFloat parentWidth) {
    auto controller = createController(bundlePath);
    if (!controller) return Failure{controller.error()};
    return Opened(std::make_unique<HostedWidget>(*std::move(controller), parentWidth));
}

Opened openLegacy(const std::string& bundlePath) {
    auto controller = createLegacyController(bundlePath);
    if (!controller) return Failure{controller.error()};
    return Opened(std::make_unique<LegacyHostedWidget>(*std::move(controller)));
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
        Opened one = kind == HostKind::Legacy ? openLegacy(path) : openCurrent(path, parentWidth);
        if (one) {
            opened.anyLoaded = true;
            widgets.push_back(*std::move(one));
        } else {
            opened.complaints.push_back(one.error());
            widgets.push_back(std::make_unique<MissingWidget>(nameOf(path)));
        }
    }
    opened.widget = widgets.size() == 1 ? std::move(widgets.front())
                                        : std::make_unique<WidgetStack>(std::move(widgets));
    return opened;
}

}  // namespace shell
