#include "bench/pulse/BareClient.hpp"

#include "tests/rigs/Waiting.hpp"

#include <glib.h>
#include <pulse/subscribe.h>

#include <stdexcept>
#include <utility>

namespace {

// As long as the service waits for a burst of events to end.
constexpr guint settlingMilliseconds = 10;

void release(pa_operation* operation) {
    if (operation) pa_operation_unref(operation);
}

}  // namespace

BareClient::BareClient(const std::string& address, std::string sink, Settling settling)
    : program_(address, {.name = "Bare client"}), sink_(std::move(sink)), settling_(settling) {
    subscribe();
    read();
    if (!rigs::waitUntil([this] { return known_ > 0; }))
        throw std::runtime_error("no device " + sink_);
}

BareClient::~BareClient() {
    pa_context_set_subscribe_callback(program_.context(), nullptr, nullptr);
    if (timer_) g_source_remove(timer_);
}

void BareClient::subscribe() {
    pa_context_set_subscribe_callback(
        program_.context(),
        [](pa_context*, pa_subscription_event_type_t, uint32_t, void* self) {
            static_cast<BareClient*>(self)->read();
        },
        this);
    release(pa_context_subscribe(program_.context(), PA_SUBSCRIPTION_MASK_SINK, nullptr, nullptr));
}

void BareClient::read() {
    release(pa_context_get_sink_info_by_name(
        program_.context(), sink_.c_str(),
        [](pa_context*, const pa_sink_info* info, int, void* self) {
            if (info) static_cast<BareClient*>(self)->answered(pa_cvolume_max(&info->volume));
        },
        this));
}

void BareClient::answered(unsigned volume) {
    known_ = volume;
    if (settling_ == Settling::None) return tell();
    if (timer_) return;
    timer_ = g_timeout_add(
        settlingMilliseconds,
        [](gpointer self) {
            static_cast<BareClient*>(self)->timer_ = 0;
            static_cast<BareClient*>(self)->tell();
            return gboolean{FALSE};
        },
        this);
}

void BareClient::tell() {
    if (std::exchange(told_, known_) != known_ && handler_) handler_(known_);
}
