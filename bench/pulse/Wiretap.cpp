#include "bench/pulse/Wiretap.hpp"

#include <dlfcn.h>
#include <pulse/introspect.h>

#include <memory>
#include <utility>

// The service does not report that a volume was acknowledged, so its calls are intercepted: the
// linker prefers this definition to the library's.

namespace {

std::function<void()>& handler() {
    static std::function<void()> current;
    return current;
}

struct Call {
    pa_context_success_cb_t callback;
    void* userdata;
};

void acknowledged(pa_context* context, int success, void* userdata) {
    const auto call = std::unique_ptr<Call>(static_cast<Call*>(userdata));
    if (call->callback) call->callback(context, success, call->userdata);
    if (handler()) handler()();
}

}  // namespace

void setAcknowledgementHandler(std::function<void()> function) {
    handler() = std::move(function);
}

extern "C" pa_operation* pa_context_set_sink_volume_by_name(pa_context* context, const char* name,
                                                            const pa_cvolume* volume,
                                                            pa_context_success_cb_t callback,
                                                            void* userdata) {
    static const auto library = reinterpret_cast<decltype(&pa_context_set_sink_volume_by_name)>(
        dlsym(RTLD_NEXT, "pa_context_set_sink_volume_by_name"));
    // Freed by the answer; leaked by an operation that is cancelled when the program ends.
    auto call = std::make_unique<Call>(Call{callback, userdata});
    return library(context, name, volume, acknowledged, call.release());
}
