#include "shells/desktop/SingleInstance.hpp"

#include "backends/bus/BusCall.hpp"
#include "shells/common/ApplicationId.hpp"

#include <string_view>
#include <utility>

namespace {

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

}  // namespace

SingleInstance::~SingleInstance() {
    cancellable_.reset();
    if (!bus_) return;
    g_signal_handler_disconnect(bus_.get(), closedHandler_);
    // Who asked it to end waits for the answer.
    if (standing_ == Standing::First) g_dbus_connection_flush_sync(bus_.get(), nullptr, nullptr);
}

void SingleInstance::begin() {
    const std::optional<std::string> address = sessionBusAddress();
    if (!address) return setStanding(Standing::Alone);
    lockState_ = lock_.take(*address);
    if (lockState_ != InstanceLock::State::Ours) connect();
}

void SingleInstance::connect() {
    if (standing_ != Standing::Undecided || std::exchange(isConnecting_, true)) return;
    openSessionBus(cancellable_.get(), [this](BusConnection bus) { connected(std::move(bus)); });
}

void SingleInstance::connected(BusConnection bus) {
    if (!bus) return setStanding(Standing::Alone);
    bus_ = std::move(bus);
    const auto closed = +[](GDBusConnection*, gboolean, GError*, gpointer instance) {
        static_cast<SingleInstance*>(instance)->setStanding(Standing::Alone);
    };
    closedHandler_ = g_signal_connect(bus_.get(), "closed", G_CALLBACK(closed), this);
    // Who holds the lock may not have come to the bus yet: the name is left to it.
    if (lockState_ == InstanceLock::State::Taken)
        setStanding(Standing::Later);
    else
        requestName();
}

void SingleInstance::requestName() {
    // Before the name: who finds the name finds the object.
    static const GDBusInterfaceVTable table = {answerCall, nullptr, nullptr, {}};
    object_.emplace(bus_.get(), objectPath, description, table, this);
    constexpr guint32 doNotQueue = 4;
    callOnBus(
        bus_.get(),
        {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName"},
        g_variant_new("(su)", applicationId, doNotQueue), G_VARIANT_TYPE("(u)"), cancellable_.get(),
        [this](GVariant* answer) { nameAnswered(answer); });
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
        const BusValue answer(call(request, &error));
        const BusError owned(error);
        if (answer) return true;
        if (!g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER) &&
            !g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN)) {
            standing_ = Standing::Alone;  // Not asked a second time: that took seconds.
            return false;
        }
        g_usleep(pauseMicroseconds);
    }
    // The lock's holder never came to the bus: this one is the first on it.
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
    return g_dbus_connection_call_sync(bus_.get(), applicationId, objectPath, interface, method,
                                       arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
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
    // Answered first: who asks the program to end should hear of it.
    g_dbus_method_invocation_return_value(invocation, nullptr);
    static_cast<SingleInstance*>(instance)->request(*asked);
}
