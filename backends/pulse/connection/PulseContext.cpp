#include "backends/pulse/connection/PulseContext.hpp"

#include "platform/foundation/NSLog.hpp"

#include <pulse/error.h>
#include <pulse/ext-stream-restore.h>

#include <cstdlib>
#include <cstring>

namespace pulse {
namespace {

// The library aborts the program for a host name that does not fit its resolver's buffer, so longer
// addresses than any valid one are not passed to it. A null address is valid.
bool isUsable(const char* address) {
    constexpr std::size_t longestBytes = 4096;
    return !address || std::strlen(address) <= longestBytes;
}

}  // namespace

PulseContext::PulseContext(pa_mainloop_api* api, const NSString& server,
                           const char* applicationName, Handlers handlers)
    : handlers_(std::move(handlers)),
      context_(pa_context_new(api, applicationName)),
      operations_([this] {
          isHung_ = true;
          failSoon();
      }) {
    if (!context_) {
        failSoon();
        return;
    }
    pa_context_set_state_callback(
        context_.get(),
        [](pa_context*, void* self) { static_cast<PulseContext*>(self)->stateChanged(); }, this);
    const char* address = server ? server->c_str() : nullptr;
    // The session starts the server: one that we started would lack the session's settings.
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

// The failure handler destroys the context, which is not allowed inside its callbacks.
void PulseContext::failSoon() {
    failure_.start(0, handlers_.failed);
}

std::string PulseContext::address() const {
    const char* address = context_ ? pa_context_get_server(context_.get()) : nullptr;
    return address ? address : "";
}

std::string PulseContext::reason() const {
    const int error = context_ ? pa_context_errno(context_.get()) : PA_ERR_INTERNAL;
    // The library has no error for an address that was not passed to it.
    return pa_strerror(error == PA_OK ? PA_ERR_INVALIDSERVER : error);
}

void acknowledged(pa_context*, int success, void* query) {
    auto& acknowledgement = *static_cast<Acknowledgement*>(query);
    if (success)
        acknowledgement.succeed();
    else
        acknowledgement.fail();
}

Acknowledgement& PulseContext::expect(std::function<void(int error)> answered) {
    return operations_.expect<Success>(
        [this, answered = std::move(answered)](std::optional<Success> success) {
            if (answered) answered(success ? int{PA_OK} : reasonOfRefusal());
        });
}

int PulseContext::reasonOfRefusal() const {
    const int reason = pa_context_errno(context_.get());
    return reason == PA_OK ? int{PA_ERR_UNKNOWN} : reason;
}

// Parts are read again and again: log a refusal once for each connection.
void PulseContext::debugRefusal(const std::string& request, int error) {
    const std::string refusal = "the server refuses to " + request + ": " + pa_strerror(error);
    if (debuggedRefusals_.insert(refusal).second) debug("sound", refusal);
}

std::function<void(int error)> PulseContext::debuggingRefusalOf(const char* request) {
    return [this, request](int error) {
        if (error != PA_OK) debugRefusal(request, error);
    };
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
            static_cast<PulseContext*>(self)->handlers_.changed(Part::RestoreEntries);
        },
        this);
    constexpr auto mask = static_cast<pa_subscription_mask_t>(
        PA_SUBSCRIPTION_MASK_SERVER | PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SOURCE |
        PA_SUBSCRIPTION_MASK_SINK_INPUT | PA_SUBSCRIPTION_MASK_SOURCE_OUTPUT |
        PA_SUBSCRIPTION_MASK_CARD);
    Acknowledgement& changes = expect(debuggingRefusalOf("announce changes"));
    await(changes, pa_context_subscribe(context_.get(), mask, acknowledged, &changes));
    Acknowledgement& entries = expect(debuggingRefusalOf("announce changes of stored volumes"));
    await(entries, pa_ext_stream_restore_subscribe(context_.get(), 1, acknowledged, &entries));
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
            return handlers_.changed(Part::SinkInputs);
        case PA_SUBSCRIPTION_EVENT_SOURCE_OUTPUT:
            return handlers_.changed(Part::SourceOutputs);
        default:
            return;
    }
}

}  // namespace pulse
