#pragma once

#include "platform/foundation/NSBundle.hpp"
#include "platform/uikit/BBWeeAppController.hpp"
#include "platform/uikit/SBUIWidgetViewController.hpp"

#include <memory>
#include <string>

namespace shell {

/// A bundle whose module is loaded, or the reason why there is none.
struct LoadedBundle {
    std::shared_ptr<NSBundle> bundle;
    std::string error;
};
LoadedBundle loadBundle(const std::string& path);

/// An object made from a class, or the reason why there is none.
struct CreatedObject {
    std::shared_ptr<NSObject> object;
    std::string error;
};
/// An instance of the bundle's principal class.
CreatedObject createPrincipalObject(NSBundle& bundle);
/// An instance of the registered class of that name.
CreatedObject createObject(const std::string& className);

/// The widget's controller, or the reason why there is none.
struct CreatedController {
    std::shared_ptr<_SBUIWidgetViewController> controller;
    std::string error;
};
/// Loads the bundle in that folder and makes its principal class's controller.
CreatedController createController(const std::string& bundlePath);

/// The same for the legacy host: the class that Info.plist names as LegacyPrincipalClass. Bundles
/// for processors of 64 bits have none.
struct CreatedLegacyController {
    std::shared_ptr<BBWeeAppController> controller;
    std::string error;
};
CreatedLegacyController createLegacyController(const std::string& bundlePath);

}  // namespace shell
