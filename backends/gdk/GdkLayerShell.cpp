#include "backends/gdk/GdkLayerShell.hpp"

#include "backends/cairo/Handles.hpp"

#include <gdk/gdkwayland.h>
#include <wlr-layer-shell-client-protocol.h>

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace {
constexpr std::uint32_t newestKnownVersion = 4;
}

/// What was asked for on a queue of its own, so that waiting for it handles nothing else.
struct GdkLayerShell::Binding {
    wl_display* display = nullptr;
    std::unique_ptr<wl_event_queue, ReleaseWith<wl_event_queue_destroy>> queue;
    std::unique_ptr<wl_registry, ReleaseWith<wl_registry_destroy>> registry;
    std::unique_ptr<wl_callback, ReleaseWith<wl_callback_destroy>> end;
    zwlr_layer_shell_v1* shell = nullptr;
    bool answered = false;

    static void announced(void* data, wl_registry* registry, std::uint32_t name,
                          const char* interface, std::uint32_t version) {
        auto& binding = *static_cast<Binding*>(data);
        if (binding.shell || std::string_view(interface) != zwlr_layer_shell_v1_interface.name)
            return;
        binding.shell = static_cast<zwlr_layer_shell_v1*>(wl_registry_bind(
            registry, name, &zwlr_layer_shell_v1_interface, std::min(version, newestKnownVersion)));
    }
    static void withdrawn(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*name*/) {}
    static void ended(void* data, wl_callback* /*callback*/, std::uint32_t /*serial*/) {
        static_cast<Binding*>(data)->answered = true;
    }
};

bool GdkLayerShell::isOffered(GdkDisplay* display) {
    return GDK_IS_WAYLAND_DISPLAY(display) &&
           gdk_wayland_display_query_registry(display, zwlr_layer_shell_v1_interface.name) != FALSE;
}

GdkLayerShell::GdkLayerShell(GdkDisplay* display) : binding_(std::make_unique<Binding>()) {
    static const wl_registry_listener registryListener = {Binding::announced, Binding::withdrawn};
    static const wl_callback_listener endListener = {Binding::ended};
    Binding& binding = *binding_;
    binding.display = gdk_wayland_display_get_wl_display(display);
    binding.queue.reset(wl_display_create_queue(binding.display));
    // Through a stand-in, so that no answer comes before it has its queue.
    auto* standIn = static_cast<wl_display*>(wl_proxy_create_wrapper(binding.display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(standIn), binding.queue.get());
    binding.registry.reset(wl_display_get_registry(standIn));
    wl_registry_add_listener(binding.registry.get(), &registryListener, &binding);
    binding.end.reset(wl_display_sync(standIn));
    wl_callback_add_listener(binding.end.get(), &endListener, &binding);
    wl_proxy_wrapper_destroy(standIn);
    wl_display_flush(binding.display);
}

GdkLayerShell::~GdkLayerShell() {
    zwlr_layer_shell_v1* shell = binding_->shell;
    if (!shell) return;
    if (zwlr_layer_shell_v1_get_version(shell) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
        zwlr_layer_shell_v1_destroy(shell);
    else
        wl_proxy_destroy(reinterpret_cast<wl_proxy*>(shell));
}

zwlr_layer_shell_v1* GdkLayerShell::get() {
    Binding& binding = *binding_;
    while (!binding.answered)
        if (wl_display_dispatch_queue(binding.display, binding.queue.get()) < 0) return nullptr;
    // What it makes is told of with everything else.
    if (binding.shell) wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(binding.shell), nullptr);
    return binding.shell;
}
