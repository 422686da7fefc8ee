#include "backends/pulse/PulseContext.hpp"

#include "backends/pulse/ServerMirror.hpp"

#include <pulse/error.h>
#include <pulse/ext-stream-restore.h>

#include <cstdlib>
#include <cstring>

namespace pulse {
namespace {

// The library ends the program over a host's name that its resolver has no room for, so an
// address longer than any that leads somewhere is not given to it. None at all is fine.
bool isUsable(const char* address) {
    constexpr std::size_t longestBytes = 4096;
    return !address || std::strlen(address) <= longestBytes;
}

}  // namespace

PulseContext::PulseContext(pa_mainloop_api* api, const NSString& server, Handlers handlers)
    : handlers_(std::move(handlers)),
      context_(pa_context_new(api, ourApplicationName)),
      operations_([this] { failSoon(); }) {
    if (!context_) {
        failSoon();
        return;
    }
    pa_context_set_state_callback(
        context_.get(),
        [](pa_context*, void* self) { static_cast<PulseContext*>(self)->stateChanged(); }, this);
    const char* address = server ? server->c_str() : nullptr;
    // The server is the session's to start: one that we started would not have its settings.
    if (!isUsable(address ? address : std::getenv("PULSE_SERVER")) ||
        pa_context_connect(context_.get(), address, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        failSoon();
}

PulseContext::~PulseContext() {
    if (!context_) return;
    pa_context_set_state_callback(context_.get(), nullptr, nullptr);
    pa_context_set_subscribe_callback(context_.get(), nullptr, nullptr);
    pa_ext_stream_restore_set_subscribe_cb(context_.get(), nullptr, nullptr);
    pa_context_disconnect(context_.get());
}

void PulseContext::stateChanged() {
    const pa_context_state_t state = pa_context_get_state(context_.get());
    if (state == PA_CONTEXT_READY) handlers_.ready();
    if (!PA_CONTEXT_IS_GOOD(state)) failSoon();
}

// Whoever hears of the failure drops the context, which can't be done from inside its callbacks.
void PulseContext::failSoon() {
    failure_.start(0, handlers_.failed);
}

std::string PulseContext::reason() const {
    const int error = context_ ? pa_context_errno(context_.get()) : PA_ERR_INTERNAL;
    // An address that the library was not given is no error of its own.
    return pa_strerror(error == PA_OK ? PA_ERR_INVALIDSERVER : error);
}

void PulseContext::succeeded(pa_context*, int success, void* userdata) {
    auto& query = *static_cast<Query<Success>*>(userdata);
    if (success)
        query.succeed();
    else
        query.fail();
}

int PulseContext::reasonOfRefusal() const {
    const int reason = pa_context_errno(context_.get());
    return reason == PA_OK ? int{PA_ERR_UNKNOWN} : reason;
}

void PulseContext::subscribe() {
    pa_context_set_subscribe_callback(
        context_.get(),
        [](pa_context*, pa_subscription_event_type_t event, uint32_t, void* self) {
            static_cast<PulseContext*>(self)->announce(event);
        },
        this);
    pa_ext_stream_restore_set_subscribe_cb(
        context_.get(),
        [](pa_context*, void* self) {
            static_cast<PulseContext*>(self)->handlers_.changed(Part::RoleEntries);
        },
        this);
    constexpr auto mask = static_cast<pa_subscription_mask_t>(
        PA_SUBSCRIPTION_MASK_SERVER | PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SOURCE |
        PA_SUBSCRIPTION_MASK_SINK_INPUT | PA_SUBSCRIPTION_MASK_SOURCE_OUTPUT |
        PA_SUBSCRIPTION_MASK_CARD);
    tell({}, [](pa_context* context, pa_context_success_cb_t answered, void* query) {
        return pa_context_subscribe(context, mask, answered, query);
    });
    tell({}, [](pa_context* context, pa_context_success_cb_t answered, void* query) {
        return pa_ext_stream_restore_subscribe(context, 1, answered, query);
    });
}

void PulseContext::announce(pa_subscription_event_type_t event) const {
    switch (event & PA_SUBSCRIPTION_EVENT_FACILITY_MASK) {
        case PA_SUBSCRIPTION_EVENT_SERVER:
            return handlers_.changed(Part::Server);
        case PA_SUBSCRIPTION_EVENT_SINK:
        case PA_SUBSCRIPTION_EVENT_CARD:  // Its ports and profiles are seen on its sinks.
            return handlers_.changed(Part::Sinks);
        case PA_SUBSCRIPTION_EVENT_SOURCE:
            return handlers_.changed(Part::Sources);
        case PA_SUBSCRIPTION_EVENT_SINK_INPUT:
            return handlers_.changed(Part::Streams);
        case PA_SUBSCRIPTION_EVENT_SOURCE_OUTPUT:
            return handlers_.changed(Part::Recordings);
        default:
            return;
    }
}

}  // namespace pulse
