#pragma once

#include "platform/foundation/NSBundle.hpp"
#include "platform/foundation/Result.hpp"
#include "platform/uikit/BBWeeAppController.hpp"
#include "platform/uikit/SBUIWidgetViewController.hpp"

#include <memory>
#include <string>

namespace shell {

/// Installs the property-list codec and the image decoder that all shells use. Call once, before
/// the widget's bundle is loaded.
void installBackends();

// Pointers in these results are never nullptr.

/// The bundle in that folder, its module loaded.
Result<std::shared_ptr<NSBundle>> loadBundle(const std::string& path);

/// An instance of the bundle's principal class.
Result<std::shared_ptr<NSObject>> createPrincipalObject(NSBundle& bundle);
/// An instance of the registered class of that name.
Result<std::shared_ptr<NSObject>> createObject(const std::string& className);

/// Loads the bundle in that folder and creates its principal class's controller.
Result<std::shared_ptr<_SBUIWidgetViewController>> createController(const std::string& bundlePath);

/// The same for the legacy host: the class that Info.plist names as LegacyPrincipalClass. 64-bit
/// bundles do not contain it.
Result<std::shared_ptr<BBWeeAppController>> createLegacyController(const std::string& bundlePath);

}  // namespace shell
