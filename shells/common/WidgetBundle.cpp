#include "shells/common/WidgetBundle.hpp"

#include "backends/cairo/CairoImageDecoder.hpp"
#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/NSClassRegistry.hpp"
#include "shells/common/Translation.hpp"

namespace shell {
namespace {

using Object = std::shared_ptr<NSObject>;

Result<Object> instantiate(const Class& cls) {
    Object object = cls.create();
    if (!object)
        return Failure{
            filled(translated("{class} could not be initialised"), {{"class", cls.name}})};
    return object;
}

}  // namespace

void installBackends() {
    NSPropertyList::setCodec(std::make_shared<PlistCodec>());
    UIImageDecoder::setDecoder(std::make_shared<painting::CairoImageDecoder>());
}

Result<std::shared_ptr<NSBundle>> loadBundle(const std::string& path) {
    auto bundle = NSBundle::bundleWithPath(path);
    if (!bundle)
        return Failure{filled(translated("there is no bundle at {path}"), {{"path", path}})};
    if (!bundle->load())
        return Failure{filled(translated("cannot load {path}: {reason}"),
                              {{"path", path}, {"reason", bundle->loadError()}})};
    return bundle;
}

Result<Object> createPrincipalObject(NSBundle& bundle) {
    const Class* principal = bundle.principalClass();
    if (!principal)
        return Failure{
            filled(translated("{path} has no principal class"), {{"path", bundle.bundlePath()}})};
    return instantiate(*principal);
}

Result<Object> createObject(const std::string& className) {
    const Class* cls = NSClassFromString(className);
    if (!cls)
        return Failure{filled(translated("there is no class {class}"), {{"class", className}})};
    return instantiate(*cls);
}

Result<std::shared_ptr<_SBUIWidgetViewController>> createController(const std::string& bundlePath) {
    const auto bundle = loadBundle(bundlePath);
    if (!bundle) return Failure{bundle.error()};
    const auto object = createPrincipalObject(**bundle);
    if (!object) return Failure{object.error()};
    auto controller = std::dynamic_pointer_cast<_SBUIWidgetViewController>(*object);
    if (!controller)
        return Failure{filled(translated("{class} is not a widget's controller"),
                              {{"class", (*object)->className()}})};
    return controller;
}

Result<std::shared_ptr<BBWeeAppController>> createLegacyController(const std::string& bundlePath) {
    const auto bundle = loadBundle(bundlePath);
    if (!bundle) return Failure{bundle.error()};
    const NSString name = (*bundle)->infoDictionary().objectForKey("LegacyPrincipalClass").string();
    if (!name)
        return Failure{
            filled(translated("{path} has no class for the legacy host"), {{"path", bundlePath}})};
    const auto object = createObject(*name);
    if (!object) return Failure{object.error()};
    auto controller = std::dynamic_pointer_cast<BBWeeAppController>(*object);
    if (!controller)
        return Failure{
            filled(translated("{class} is not a legacy widget's controller"), {{"class", *name}})};
    return controller;
}

}  // namespace shell
