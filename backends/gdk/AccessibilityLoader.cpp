#include "backends/gdk/AccessibilityLoader.hpp"

#include "backends/bus/Bus.hpp"
#include "platform/foundation/NSLog.hpp"

#include <dlfcn.h>

#include <string_view>

namespace windowing {

namespace {

constexpr const char* serviceName = "org.a11y.Bus";
constexpr const char* statusPath = "/org/a11y/bus";
constexpr const char* statusInterface = "org.a11y.Status";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

bool isKeptAway() {
    const char* value = g_getenv("NO_AT_BRIDGE");
    return value && std::string_view(value) == "1";
}

bool isTrue(GVariant* properties, const char* name) {
    gboolean value = FALSE;
    return g_variant_lookup(properties, name, "b", &value) != FALSE && value != FALSE;
}

}  // namespace

AccessibilityLoader::Watch::Watch(bus::BusConnection connection, AccessibilityLoader& loader)
    : bus(std::move(connection)),
      owner(bus.get(), serviceName,
            [&loader](bool isThere) {
                if (isThere) loader.askIfWanted();
            }),
      changes(bus.get(),
              {.sender = serviceName,
               .path = statusPath,
               .interface = propertiesInterface,
               .member = "PropertiesChanged",
               .firstArgument = statusInterface},
              [&loader](GVariant* /*arguments*/) { loader.askIfWanted(); }) {}

AccessibilityLoader::AccessibilityLoader(std::string modulePath, AccessibleWindow window)
    : modulePath_(std::move(modulePath)), window_(std::move(window)) {
    if (isKeptAway() || !bus::sessionBusAddress()) return;
    asking_.reset(g_cancellable_new());
    bus::openSessionBus(asking_.get(), [this](bus::BusConnection bus) {
        if (bus) watch(std::move(bus));
    });
}

AccessibilityLoader::~AccessibilityLoader() = default;

void AccessibilityLoader::watch(bus::BusConnection bus) {
    watch_.emplace(std::move(bus), *this);
    askIfWanted();
}

void AccessibilityLoader::askIfWanted() {
    const auto answered = [this](GVariant* answer) {
        if (!answer) return;  // No service runs that could need it.
        const bus::BusValue status(g_variant_get_child_value(answer, 0));
        if (isTrue(status.get(), "IsEnabled") || isTrue(status.get(), "ScreenReaderEnabled"))
            load();
    };
    bus::callOnBus(watch_->bus.get(), {serviceName, statusPath, propertiesInterface, "GetAll"},
                   g_variant_new("(s)", statusInterface), G_VARIANT_TYPE("(a{sv})"), asking_.get(),
                   answered);
}

void AccessibilityLoader::load() {
    // Once is enough: a module that cannot be loaded now cannot be loaded later.
    asking_.reset();
    watch_.reset();
    void* module = dlopen(modulePath_.c_str(), RTLD_NOW | RTLD_LOCAL);
    const auto open =
        module ? reinterpret_cast<AccessibilityEntry>(dlsym(module, accessibilityEntryName))
               : nullptr;
    if (open == nullptr) {
        NSLog(std::string("tarnwick: no accessibility: ") + dlerror());
        return;
    }
    bridge_.reset(open(window_));
    activityChanged(activity_);
}

void AccessibilityLoader::contentMayHaveChanged() {
    if (bridge_) bridge_->contentMayHaveChanged();
}

void AccessibilityLoader::activityChanged(WindowActivity activity) {
    activity_ = activity;
    if (bridge_) bridge_->activityChanged(activity);
}

}  // namespace windowing
