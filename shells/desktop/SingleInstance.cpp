#include "shells/desktop/SingleInstance.hpp"

#include "backends/bus/Bus.hpp"
#include "shells/common/Installation.hpp"

#include <cstdlib>
#include <functional>
#include <string_view>
#include <utility>

namespace desktop {
namespace {

/// The address contains the bus's identifier only for programs that the bus has started.
std::string withoutIdentifiers(std::string address) {
    for (std::size_t begin = 0; (begin = address.find(",guid=", begin)) != std::string::npos;) {
        const std::size_t end = address.find_first_of(",;", begin + 1);
        address.erase(begin, end == std::string::npos ? end : end - begin);
    }
    return address;
}

constexpr const char* objectPath = "/org/tarnwick/mixer";
constexpr const char* applicationInterface = "org.freedesktop.Application";
constexpr const char* description = R"xml(<node>
  <interface name="org.freedesktop.Application">
    <method name="Activate"><arg type="a{sv}" direction="in"/></method>
    <method name="Open"><arg type="as" direction="in"/><arg type="a{sv}" direction="in"/></method>
    <method name="ActivateAction">
      <arg type="s" direction="in"/><arg type="av" direction="in"/>
      <arg type="a{sv}" direction="in"/>
    </method>
  </interface>
</node>)xml";

constexpr const char* toggleAction = "toggle";
constexpr const char* quitAction = "quit";

std::optional<InstanceRequest> requestOf(std::string_view method, GVariant* arguments) {
    if (method != "ActivateAction") return InstanceRequest::Show;
    const char* action = nullptr;
    g_variant_get_child(arguments, 0, "&s", &action);
    if (std::string_view(action) == toggleAction) return InstanceRequest::Toggle;
    if (std::string_view(action) == quitAction) return InstanceRequest::Quit;
    return std::nullopt;
}

/// The lock of the session with that bus: it tells a start without asking the bus that it is the
/// first. nullopt without a runtime folder.
std::optional<std::string> lockPath(const std::string& busAddress) {
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    if (folder == nullptr || *folder == '\0') return std::nullopt;
    const std::size_t session = std::hash<std::string>()(withoutIdentifiers(busAddress));
    return std::string(folder) + "/tarnwick-" + std::to_string(session) + ".lock";
}

}  // namespace

SingleInstance::~SingleInstance() {
    cancellable_.reset();
    if (!bus_) return;
    g_signal_handler_disconnect(bus_.get(), closedHandler_);
    // The caller that requested the end waits for the answer.
    if (standing_ == Standing::First) g_dbus_connection_flush_sync(bus_.get(), nullptr, nullptr);
}

void SingleInstance::begin() {
    const std::optional<std::string> address = bus::sessionBusAddress();
    if (!address) return setStanding(Standing::Alone);
    if (const auto path = lockPath(*address)) lockState_ = lock_.take(*path);
    if (lockState_ != FileLock::State::Ours) connect();
}

void SingleInstance::connect() {
    if (standing_ != Standing::Undecided || std::exchange(isConnecting_, true)) return;
    bus::openSessionBus(cancellable_.get(),
                        [this](bus::BusConnection bus) { connected(std::move(bus)); });
}

void SingleInstance::connected(bus::BusConnection bus) {
    if (!bus) return setStanding(Standing::Alone);
    bus_ = std::move(bus);
    const auto closed = +[](GDBusConnection*, gboolean, GError*, gpointer instance) {
        static_cast<SingleInstance*>(instance)->setStanding(Standing::Alone);
    };
    closedHandler_ = g_signal_connect(bus_.get(), "closed", G_CALLBACK(closed), this);
    // The holder of the lock may not be on the bus yet: leave the name to it.
    if (lockState_ == FileLock::State::Taken)
        setStanding(Standing::Later);
    else
        requestName();
}

void SingleInstance::requestName() {
    // Before the name, so that whoever finds the name finds the object.
    static const GDBusInterfaceVTable table = {answerCall, nullptr, nullptr, {}};
    object_.emplace(bus_.get(), objectPath, description, table, this);
    constexpr guint32 doNotQueue = 4;
    bus::callOnBus(
        bus_.get(),
        {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName"},
        g_variant_new("(su)", shell::applicationId, doNotQueue), G_VARIANT_TYPE("(u)"),
        cancellable_.get(), [this](GVariant* answer) { nameAnswered(answer); });
}

void SingleInstance::nameAnswered(GVariant* answer) {
    constexpr guint32 isOwner = 1;
    constexpr guint32 exists = 3;
    guint32 reply = 0;
    if (answer) g_variant_get(answer, "(u)", &reply);
    setStanding(reply == isOwner  ? Standing::First
                : reply == exists ? Standing::Later
                                  : Standing::Alone);
}

void SingleInstance::setStanding(Standing standing) {
    if (std::exchange(standing_, standing) == standing) return;
    if (standing != Standing::First) object_.reset();
    if (const auto handler = standingHandler_) handler();
}

SingleInstance::Standing SingleInstance::waitForStanding(double seconds) {
    constexpr double millisecondsASecond = 1000;
    bool isOver = false;
    const auto end = +[](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_REMOVE;
    };
    if (standing_ != Standing::Undecided || !isConnecting_) return standing_;
    const guint timer =
        g_timeout_add(static_cast<guint>(seconds * millisecondsASecond), end, &isOver);
    while (standing_ == Standing::Undecided && !isOver)
        g_main_context_iteration(nullptr, TRUE);
    if (!isOver) g_source_remove(timer);
    return standing_;
}

bool SingleInstance::ask(InstanceRequest request) {
    // The first one may hold the lock and not be on the bus yet.
    constexpr int attempts = 50;
    constexpr gulong pauseMicroseconds = 20000;
    if (standing_ != Standing::Later) return false;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        GError* error = nullptr;
        const bus::BusValue answer(call(request, &error));
        const bus::BusError owned(error);
        if (answer) return true;
        if (!g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER) &&
            !g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN)) {
            standing_ = Standing::Alone;  // Do not ask again: the wait took seconds.
            return false;
        }
        g_usleep(pauseMicroseconds);
    }
    // The holder of the lock never came to the bus, so this one is the first there.
    standing_ = Standing::Undecided;
    requestName();
    return false;
}

GVariant* SingleInstance::call(InstanceRequest request, GError** error) const {
    constexpr int patience = 5000;  // milliseconds; it may be busy with its own start
    const char* interface = applicationInterface;
    const char* method = "ActivateAction";
    GVariant* arguments = nullptr;
    switch (request) {
        case InstanceRequest::Nothing:
            interface = "org.freedesktop.DBus.Peer";
            method = "Ping";
            break;
        case InstanceRequest::Show:
            method = "Activate";
            arguments = g_variant_new("(a{sv})", nullptr);
            break;
        case InstanceRequest::Toggle:
            arguments = g_variant_new("(sava{sv})", toggleAction, nullptr, nullptr);
            break;
        case InstanceRequest::Quit:
            arguments = g_variant_new("(sava{sv})", quitAction, nullptr, nullptr);
            break;
    }
    return g_dbus_connection_call_sync(bus_.get(), shell::applicationId, objectPath, interface,
                                       method, arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                       patience, nullptr, error);
}

void SingleInstance::setRequestHandler(std::function<void(InstanceRequest)> handler) {
    requestHandler_ = std::move(handler);
    if (!requestHandler_) return;
    for (const InstanceRequest asked : std::exchange(waiting_, {}))
        request(asked);
}

void SingleInstance::request(InstanceRequest request) {
    if (const auto handler = requestHandler_)
        handler(request);
    else
        waiting_.push_back(request);
}

void SingleInstance::answerCall(GDBusConnection* /*bus*/, const char* /*sender*/,
                                const char* /*path*/, const char* /*interface*/, const char* method,
                                GVariant* arguments, GDBusMethodInvocation* invocation,
                                gpointer instance) {
    const auto asked = requestOf(method, arguments);
    if (!asked) {
        g_dbus_method_invocation_return_error_literal(
            invocation, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, "there is no such action");
        return;
    }
    // Answer first, so that a caller that ends the program gets its reply.
    g_dbus_method_invocation_return_value(invocation, nullptr);
    static_cast<SingleInstance*>(instance)->request(*asked);
}

}  // namespace desktop
