#include "platform/foundation/NSClassRegistry.hpp"

#include <algorithm>
#include <list>

namespace {

/// In the order of registration. A list, so that a Class stays where it is.
std::list<Class>& classes() {
    // Never destroyed: modules unregister while the process ends, in an order nobody controls.
    static auto& all = *std::make_unique<std::list<Class>>().release();
    return all;
}

}  // namespace

void NSClassRegistry::registerClass(const Class& cls) {
    classes().push_back(cls);
}

void NSClassRegistry::unregisterClass(std::string_view name, const void* code) {
    const auto found = std::ranges::find_if(
        classes(), [&](const Class& cls) { return cls.name == name && cls.code == code; });
    if (found != classes().end()) classes().erase(found);
}

std::vector<std::string> NSClassRegistry::names() {
    std::vector<std::string> names;
    for (const Class& cls : classes()) {
        if (std::ranges::find(names, cls.name) == names.end()) names.push_back(cls.name);
    }
    return names;
}

const Class* NSClassFromString(std::string_view name) {
    const auto found = std::ranges::find(classes(), name, &Class::name);
    return found == classes().end() ? nullptr : &*found;
}
