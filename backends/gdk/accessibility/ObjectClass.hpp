#pragma once

#include <atk/atk.h>

#include <memory>

namespace windowing {

// The accessibility library's objects belong to GObject, whose classes are C structs filled with
// functions. These templates register such classes for C++:
//
//     GType frameType() {
//         static const GType type = [] {
//             const GType frame = newObjectClass<FrameState, initClass>("TarnwickFrame");
//             addInterface<AtkComponentIface, initComponent>(frame, ATK_TYPE_COMPONENT);
//             return frame;
//         }();
//         return type;
//     }
//
// Main thread.

/// An object of the library, followed in memory by a State of ours.
template <class State>
struct ObjectWith {
    AtkObject parent;
    State state;
};

/// The state of an object whose class was made by newObjectClass<State>(), or of a subclass's.
template <class State>
State& stateIn(gpointer object) {
    return static_cast<ObjectWith<State>*>(object)->state;
}

/// Registers a class whose objects have a State, which lives as long as the object.
/// `initClass(AtkObjectClass*)` replaces the library's functions.
template <class State, auto initClass>
GType newObjectClass(const char* name) {
    const auto initialise = [](gpointer objectClass, gpointer /*data*/) {
        initClass(static_cast<AtkObjectClass*>(objectClass));
        static_cast<GObjectClass*>(objectClass)->finalize = [](GObject* object) {
            std::destroy_at(&stateIn<State>(object));
            G_OBJECT_CLASS(g_type_class_peek(ATK_TYPE_OBJECT))->finalize(object);
        };
    };
    const auto construct = [](GTypeInstance* object, gpointer /*objectClass*/) {
        std::construct_at(&stateIn<State>(object));
    };
    return g_type_register_static_simple(ATK_TYPE_OBJECT, name, sizeof(AtkObjectClass), initialise,
                                         sizeof(ObjectWith<State>), construct, G_TYPE_FLAG_NONE);
}

/// Registers a class that adds no state to its parent's. `initClass` may be nullptr.
inline GType newSubclass(GType parent, const char* name, GClassInitFunc initClass = nullptr) {
    GTypeQuery sizes{};
    g_type_query(parent, &sizes);
    return g_type_register_static_simple(parent, name, sizes.class_size, initClass,
                                         sizes.instance_size, nullptr, G_TYPE_FLAG_NONE);
}

/// Adds an interface to a class; `init(Interface*)` fills in its functions.
template <class Interface, auto init>
void addInterface(GType objectClass, GType interface) {
    const auto initialise = [](gpointer table, gpointer /*data*/) {
        init(static_cast<Interface*>(table));
    };
    const GInterfaceInfo info = {initialise, nullptr, nullptr};
    g_type_add_interface_static(objectClass, interface, &info);
}

}  // namespace windowing
