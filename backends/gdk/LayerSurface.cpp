#include "backends/gdk/LayerSurface.hpp"

#include "backends/cairo/Handles.hpp"

#include <gdk/gdkwayland.h>
#include <wlr-layer-shell-client-protocol.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

// The protocol's generated code is C. In C++ its constants keep their external linkage because the
// header declares them first.
extern "C" {
#include <wlr-layer-shell-protocol.c>  // NOLINT(bugprone-suspicious-include)
}

namespace windowing {

namespace {
constexpr std::uint32_t newestKnownVersion = 4;
}

/// A request on a queue of its own, so that waiting for it dispatches nothing else.
struct LayerShell::Binding {
    wl_display* display = nullptr;
    std::unique_ptr<wl_event_queue, painting::ReleaseWith<wl_event_queue_destroy>> queue;
    std::unique_ptr<wl_registry, painting::ReleaseWith<wl_registry_destroy>> registry;
    std::unique_ptr<wl_callback, painting::ReleaseWith<wl_callback_destroy>> end;
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

bool LayerShell::isOffered(GdkDisplay* display) {
    return GDK_IS_WAYLAND_DISPLAY(display) &&
           gdk_wayland_display_query_registry(display, zwlr_layer_shell_v1_interface.name) != FALSE;
}

LayerShell::LayerShell(GdkDisplay* display) : binding_(std::make_unique<Binding>()) {
    static const wl_registry_listener registryListener = {Binding::announced, Binding::withdrawn};
    static const wl_callback_listener endListener = {Binding::ended};
    Binding& binding = *binding_;
    binding.display = gdk_wayland_display_get_wl_display(display);
    binding.queue.reset(wl_display_create_queue(binding.display));
    // Through a proxy wrapper, so that no answer comes before the queue is set.
    auto* standIn = static_cast<wl_display*>(wl_proxy_create_wrapper(binding.display));
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(standIn), binding.queue.get());
    binding.registry.reset(wl_display_get_registry(standIn));
    wl_registry_add_listener(binding.registry.get(), &registryListener, &binding);
    binding.end.reset(wl_display_sync(standIn));
    wl_callback_add_listener(binding.end.get(), &endListener, &binding);
    wl_proxy_wrapper_destroy(standIn);
    wl_display_flush(binding.display);
}

LayerShell::~LayerShell() {
    zwlr_layer_shell_v1* shell = binding_->shell;
    if (!shell) return;
    if (zwlr_layer_shell_v1_get_version(shell) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
        zwlr_layer_shell_v1_destroy(shell);
    else
        wl_proxy_destroy(reinterpret_cast<wl_proxy*>(shell));
}

zwlr_layer_shell_v1* LayerShell::get() {
    Binding& binding = *binding_;
    while (!binding.answered)
        if (wl_display_dispatch_queue(binding.display, binding.queue.get()) < 0) return nullptr;
    // Events of the objects that it creates go to the default queue.
    if (binding.shell) wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(binding.shell), nullptr);
    return binding.shell;
}

namespace {

/// What compositors show in their lists of layers.
constexpr const char* layerName = "tarnwick";

wl_output* outputOf(GdkMonitor* monitor) {
    return monitor ? gdk_wayland_monitor_get_wl_output(monitor) : nullptr;
}

std::uint32_t unsignedLength(int points) {
    return static_cast<std::uint32_t>(std::max(0, points));
}

}  // namespace

const zwlr_layer_surface_v1_listener LayerSurface::listener = {
    [](void* layer, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t width,
       std::uint32_t height) {
        static_cast<LayerSurface*>(layer)->configured(serial, width, height);
    },
    [](void* layer, zwlr_layer_surface_v1*) {
        // A copy: it may end the surface.
        if (const auto handler = static_cast<LayerSurface*>(layer)->closedHandler_) handler();
    },
};

void LayerSurface::prepare(GdkWindow* window) {
    gdk_wayland_window_set_use_custom_surface(window);
}

LayerSurface::LayerSurface(LayerShell& shell, GdkWindow* window, const LayerSetting& setting,
                           int width, int height)
    : window_(window) {
    // Nothing may be painted before the compositor has answered.
    gdk_window_freeze_updates(window_);
    gdk_window_show(window_);
    wl_surface* plain = gdk_wayland_window_get_wl_surface(window_);
    zwlr_layer_shell_v1* offer = shell.get();
    if (!plain || !offer) return;
    surface_ =
        zwlr_layer_shell_v1_get_layer_surface(offer, plain, outputOf(setting.monitor),
                                              static_cast<std::uint32_t>(setting.layer), layerName);
    zwlr_layer_surface_v1_add_listener(surface_, &listener, this);
    apply(setting, width, height);
    commit();
}

LayerSurface::~LayerSurface() {
    if (!ready_) gdk_window_thaw_updates(window_);
    // Before the surface that it is the role of.
    if (surface_) zwlr_layer_surface_v1_destroy(surface_);
    gdk_window_hide(window_);
}

void LayerSurface::apply(const LayerSetting& setting, int width, int height) {
    constexpr int overPanels = -1;
    zwlr_layer_surface_v1_set_size(surface_, unsignedLength(width), unsignedLength(height));
    zwlr_layer_surface_v1_set_anchor(surface_, static_cast<std::uint32_t>(setting.edges));
    zwlr_layer_surface_v1_set_margin(surface_, setting.top, setting.right, setting.bottom,
                                     setting.left);
    zwlr_layer_surface_v1_set_exclusive_zone(
        surface_, setting.panels == LayerSetting::Panels::Cover ? overPanels : 0);
    zwlr_layer_surface_v1_set_keyboard_interactivity(surface_,
                                                     static_cast<std::uint32_t>(setting.keys));
}

void LayerSurface::change(const LayerSetting& setting, int width, int height) {
    if (!surface_) return;
    apply(setting, width, height);
    commit();
}

void LayerSurface::configured(unsigned serial, unsigned width, unsigned height) {
    zwlr_layer_surface_v1_ack_configure(surface_, serial);
    if (width != 0 && height != 0)
        gdk_window_resize(window_, static_cast<int>(width), static_cast<int>(height));
    if (std::exchange(ready_, true)) return;
    gdk_window_thaw_updates(window_);
    gdk_window_invalidate_rect(window_, nullptr, TRUE);
    if (readyHandler_) std::exchange(readyHandler_, nullptr)();
}

void LayerSurface::commit() const {
    wl_surface_commit(gdk_wayland_window_get_wl_surface(window_));
}

}  // namespace windowing
