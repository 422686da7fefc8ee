#pragma once

#include "platform/foundation/NSObject.hpp"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// A class that can be found and instantiated by its name.
struct Class {
    std::string name;
    /// Allocates and initialises one; nullptr when initialisation yields nil.
    std::shared_ptr<NSObject> (*create)() = nullptr;
    /// An address inside the module that holds the class's code.
    const void* code = nullptr;
};

/// The classes of the loaded modules. They register while a module is loaded, on the main thread.
/// The first registration of a name wins, as on the platform.
class NSClassRegistry {
 public:
    static void registerClass(const Class& cls);
    /// Ends the registration made with this code address.
    static void unregisterClass(std::string_view name, const void* code);
    static std::vector<std::string> names();
};

/// nullptr when no class has that name. Valid until its module is unloaded.
const Class* NSClassFromString(std::string_view name);

/// Registers a class for as long as its module is loaded. Each class has one such static object, in
/// its own file:
///
///     const ClassRegistration<Mixer> registration("Mixer");
///     ... elsewhere:
///     if (const Class* mixer = NSClassFromString("Mixer")) object = mixer->create();
///
/// T is default constructible and may have `bool init()`, false when initialisation yields nil.
template <class T>
class ClassRegistration {
 public:
    explicit ClassRegistration(const char* name) : name_(name) {
        NSClassRegistry::registerClass({name, &create, address()});
    }
    ~ClassRegistration() { NSClassRegistry::unregisterClass(name_, address()); }
    ClassRegistration(const ClassRegistration&) = delete;
    ClassRegistration& operator=(const ClassRegistration&) = delete;

 private:
    static std::shared_ptr<NSObject> create() {
        auto object = std::make_shared<T>();
        if constexpr (requires { object->init(); })
            if (!object->init()) return nullptr;
        return object;
    }
    static const void* address() { return reinterpret_cast<const void*>(&create); }

    const char* name_;
};
