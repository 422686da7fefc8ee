#include "shells/common/WidgetBundle.hpp"

#include "platform/foundation/NSClassRegistry.hpp"

namespace shell {
namespace {

CreatedObject instantiate(const Class& cls) {
    auto object = cls.create();
    if (object == nullptr) return {nullptr, cls.name + " could not be initialised"};
    return {std::move(object), ""};
}

}  // namespace

LoadedBundle loadBundle(const std::string& path) {
    auto bundle = NSBundle::bundleWithPath(path);
    if (bundle == nullptr) return {nullptr, "there is no bundle at " + path};
    if (!bundle->load()) return {nullptr, "cannot load " + path + ": " + bundle->loadError()};
    return {std::move(bundle), ""};
}

CreatedObject createPrincipalObject(NSBundle& bundle) {
    const Class* principal = bundle.principalClass();
    if (principal == nullptr) return {nullptr, bundle.bundlePath() + " has no principal class"};
    return instantiate(*principal);
}

CreatedObject createObject(const std::string& className) {
    const Class* cls = NSClassFromString(className);
    if (cls == nullptr) return {nullptr, "there is no class " + className};
    return instantiate(*cls);
}

CreatedController createController(const std::string& bundlePath) {
    const auto [bundle, loadError] = loadBundle(bundlePath);
    if (bundle == nullptr) return {nullptr, loadError};
    const auto [object, error] = createPrincipalObject(*bundle);
    if (object == nullptr) return {nullptr, error};
    auto controller = std::dynamic_pointer_cast<_SBUIWidgetViewController>(object);
    if (controller == nullptr)
        return {nullptr, std::string(object->className()) + " is not a widget's controller"};
    return {std::move(controller), ""};
}

CreatedLegacyController createLegacyController(const std::string& bundlePath) {
    const auto [bundle, loadError] = loadBundle(bundlePath);
    if (bundle == nullptr) return {nullptr, loadError};
    const NSString name = bundle->infoDictionary().objectForKey("LegacyPrincipalClass").string();
    if (!name) return {nullptr, bundlePath + " has no class for the legacy host"};
    const auto [object, error] = createObject(*name);
    if (object == nullptr) return {nullptr, error};
    auto controller = std::dynamic_pointer_cast<BBWeeAppController>(object);
    if (controller == nullptr) return {nullptr, *name + " is not a legacy widget's controller"};
    return {std::move(controller), ""};
}

}  // namespace shell
