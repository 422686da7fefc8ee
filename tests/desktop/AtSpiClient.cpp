#include "tests/desktop/AtSpiClient.hpp"

#include "tests/desktop/MainLoop.hpp"

#include <stdexcept>
#include <utility>

namespace test {
namespace {

constexpr const char* accessible = "org.a11y.atspi.Accessible";
constexpr const char* valueInterface = "org.a11y.atspi.Value";
constexpr const char* properties = "org.freedesktop.DBus.Properties";
const AtSpiClient::Object registryRoot = {"org.a11y.atspi.Registry",
                                          "/org/a11y/atspi/accessible/root"};
const AtSpiClient::Object registry = {"org.a11y.atspi.Registry", "/org/a11y/atspi/registry"};
const AtSpiClient::Object switches = {"org.a11y.Bus", "/org/a11y/bus"};

struct Answer {
    GAsyncResult* result = nullptr;
};

void keepAnswer(GObject* /*source*/, GAsyncResult* result, gpointer answer) {
    static_cast<Answer*>(answer)->result = G_ASYNC_RESULT(g_object_ref(result));
}

[[noreturn]] void fail(GError* error) {
    const std::string message = error ? error->message : "no answer";
    g_clear_error(&error);
    throw std::runtime_error(message);
}

GAsyncResult* wait(Answer& answer) {
    if (!waitUntil([&answer] { return answer.result != nullptr; })) fail(nullptr);
    return answer.result;
}

}  // namespace

SessionBus::SessionBus() : bus_(g_test_dbus_new(G_TEST_DBUS_NONE)) {
    g_setenv("GSETTINGS_BACKEND", "memory", TRUE);  // The desktop's own switch must not count.
    g_unsetenv("NO_AT_BRIDGE");
    g_unsetenv("AT_SPI_BUS_ADDRESS");
    g_test_dbus_add_service_dir(bus_, "/usr/share/dbus-1/services");
    g_test_dbus_up(bus_);
}

SessionBus::~SessionBus() {
    g_test_dbus_stop(bus_);
    g_object_unref(bus_);
}

GDBusConnection* AtSpiClient::session() {
    if (session_) return session_.get();
    Answer answer;
    g_bus_get(G_BUS_TYPE_SESSION, nullptr, keepAnswer, &answer);
    GError* error = nullptr;
    session_.reset(g_bus_get_finish(wait(answer), &error));
    g_object_unref(answer.result);
    if (!session_) fail(error);
    g_dbus_connection_set_exit_on_close(session_.get(), FALSE);
    return session_.get();
}

std::string AtSpiClient::busAddress() {
    const Variant reply = call(session(), switches, "org.a11y.Bus", "GetAddress", nullptr);
    const char* address = nullptr;
    g_variant_get(reply.get(), "(&s)", &address);
    return address;
}

// What programs tell while they end would come to a reader that is gone.
AtSpiClient::~AtSpiClient() {
    for (const guint subscription : subscriptions_)
        g_dbus_connection_signal_unsubscribe(bus_.get(), subscription);
}

GDBusConnection* AtSpiClient::bus() {
    if (bus_) return bus_.get();
    const std::string address = busAddress();
    Answer answer;
    g_dbus_connection_new_for_address(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, keepAnswer, &answer);
    GError* error = nullptr;
    bus_.reset(g_dbus_connection_new_for_address_finish(wait(answer), &error));
    g_object_unref(answer.result);
    if (!bus_) fail(error);
    return bus_.get();
}

AtSpiClient::Variant AtSpiClient::call(GDBusConnection* connection, const Object& object,
                                       const char* interface, const char* method,
                                       GVariant* arguments) {
    Answer answer;
    g_dbus_connection_call(connection, object.program.c_str(), object.path.c_str(), interface,
                           method, arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
                           keepAnswer, &answer);
    GError* error = nullptr;
    Variant reply(g_dbus_connection_call_finish(connection, wait(answer), &error));
    g_object_unref(answer.result);
    if (!reply) fail(error);
    return reply;
}

AtSpiClient::Variant AtSpiClient::property(const Object& object, const char* interface,
                                           const char* name) {
    const Variant reply =
        call(bus(), object, properties, "Get", g_variant_new("(ss)", interface, name));
    GVariant* value = nullptr;
    g_variant_get(reply.get(), "(v)", &value);
    return Variant(value);
}

void AtSpiClient::setEnabled(bool enabled) {
    call(session(), switches, properties, "Set",
         g_variant_new("(ssv)", "org.a11y.Status", "IsEnabled",
                       g_variant_new_boolean(enabled ? TRUE : FALSE)));
}

AtSpiClient::Object AtSpiClient::findProgram(const std::string& name) {
    for (const Object& program : children(registryRoot)) {
        try {
            if (this->name(program) == name) return program;
        } catch (const std::runtime_error&) {
            // It is ending, and still listed.
        }
    }
    return {};
}

AtSpiClient::Object AtSpiClient::waitForProgram(const std::string& name) {
    Object found;
    const gint64 deadline = g_get_monotonic_time() + 10 * G_USEC_PER_SEC;
    while (found.program.empty() && g_get_monotonic_time() < deadline)
        found = findProgram(name);
    return found;
}

std::vector<AtSpiClient::Object> AtSpiClient::children(const Object& object) {
    const Variant reply = call(bus(), object, accessible, "GetChildren", nullptr);
    std::vector<Object> found;
    GVariantIter* iterator = nullptr;
    g_variant_get(reply.get(), "(a(so))", &iterator);
    const char* program = nullptr;
    const char* path = nullptr;
    while (g_variant_iter_next(iterator, "(&s&o)", &program, &path))
        found.push_back({program, path});
    g_variant_iter_free(iterator);
    return found;
}

std::string AtSpiClient::name(const Object& object) {
    return g_variant_get_string(property(object, accessible, "Name").get(), nullptr);
}

unsigned AtSpiClient::role(const Object& object) {
    const Variant reply = call(bus(), object, accessible, "GetRole", nullptr);
    unsigned role = 0;
    g_variant_get(reply.get(), "(u)", &role);
    return role;
}

double AtSpiClient::value(const Object& slider) {
    return g_variant_get_double(property(slider, valueInterface, "CurrentValue").get());
}

double AtSpiClient::greatestValue(const Object& slider) {
    return g_variant_get_double(property(slider, valueInterface, "MaximumValue").get());
}

double AtSpiClient::leastValue(const Object& slider) {
    return g_variant_get_double(property(slider, valueInterface, "MinimumValue").get());
}

double AtSpiClient::increment(const Object& slider) {
    return g_variant_get_double(property(slider, valueInterface, "MinimumIncrement").get());
}

bool AtSpiClient::hasState(const Object& object, unsigned state) {
    const Variant reply = call(bus(), object, accessible, "GetState", nullptr);
    const std::unique_ptr<GVariant, Unref> words(g_variant_get_child_value(reply.get(), 0));
    guint32 word = 0;
    g_variant_get_child(words.get(), state / 32, "u", &word);
    return (word >> (state % 32) & 1U) != 0;
}

CGRect AtSpiClient::extents(const Object& object) {
    constexpr guint32 inWindow = 1;
    const Variant reply = call(bus(), object, "org.a11y.atspi.Component", "GetExtents",
                               g_variant_new("(u)", inWindow));
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    g_variant_get(reply.get(), "((iiii))", &x, &y, &width, &height);
    return CGRectMake(x, y, width, height);
}

void AtSpiClient::setValue(const Object& slider, double value) {
    call(bus(), slider, properties, "Set",
         g_variant_new("(ssv)", valueInterface, "CurrentValue", g_variant_new_double(value)));
}

bool AtSpiClient::grabFocus(const Object& object) {
    const Variant reply = call(bus(), object, "org.a11y.atspi.Component", "GrabFocus", nullptr);
    gboolean grabbed = FALSE;
    g_variant_get(reply.get(), "(b)", &grabbed);
    return grabbed != FALSE;
}

bool AtSpiClient::act(const Object& object) {
    const Variant reply =
        call(bus(), object, "org.a11y.atspi.Action", "DoAction", g_variant_new("(i)", 0));
    gboolean done = FALSE;
    g_variant_get(reply.get(), "(b)", &done);
    return done != FALSE;
}

void AtSpiClient::subscribe(const char* interface, const char* member, GDBusSignalCallback told) {
    subscriptions_.push_back(
        g_dbus_connection_signal_subscribe(bus(), nullptr, interface, member, nullptr, nullptr,
                                           G_DBUS_SIGNAL_FLAGS_NONE, told, this, nullptr));
}

void AtSpiClient::watch(const std::string& property) {
    watched_ = property;
    const auto told = +[](GDBusConnection*, const char*, const char*, const char*, const char*,
                          GVariant* arguments, gpointer data) {
        auto& client = *static_cast<AtSpiClient*>(data);
        const char* detail = nullptr;
        g_variant_get_child(arguments, 0, "&s", &detail);
        if (client.watched_ == detail) ++client.toldChanges_;
    };
    subscribe("org.a11y.atspi.Event.Object", "PropertyChange", told);
    const std::string event = "object:property-change:" + property;
    call(bus(), registry, "org.a11y.atspi.Registry", "RegisterEvent",
         g_variant_new("(sass)", event.c_str(), nullptr, ""));
}

void AtSpiClient::hearEvents(const char* interface) {
    const auto told = +[](GDBusConnection*, const char* sender, const char* path, const char*,
                          const char* member, GVariant* arguments, gpointer data) {
        Event event{member, "", 0, {sender, path}};
        const char* detail = nullptr;
        g_variant_get_child(arguments, 0, "&s", &detail);
        g_variant_get_child(arguments, 1, "i", &event.value);
        event.detail = detail;
        static_cast<AtSpiClient*>(data)->events_.push_back(std::move(event));
    };
    subscribe(interface, nullptr, told);
}

void AtSpiClient::listen(const std::string& kind) {
    if (!std::exchange(isHearing_, true)) {
        hearEvents("org.a11y.atspi.Event.Object");
        hearEvents("org.a11y.atspi.Event.Window");
    }
    call(bus(), registry, "org.a11y.atspi.Registry", "RegisterEvent",
         g_variant_new("(sass)", kind.c_str(), nullptr, ""));
}

}  // namespace test
