#include "backends/gdk/GdkLayerSurface.hpp"

#include <gdk/gdkwayland.h>
#include <wlr-layer-shell-client-protocol.h>

#include <algorithm>
#include <cstdint>
#include <utility>

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

const zwlr_layer_surface_v1_listener GdkLayerSurface::listener = {
    [](void* layer, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t width,
       std::uint32_t height) {
        static_cast<GdkLayerSurface*>(layer)->configured(serial, width, height);
    },
    [](void* layer, zwlr_layer_surface_v1*) {
        // A copy: it may end the surface.
        if (const auto handler = static_cast<GdkLayerSurface*>(layer)->closedHandler_) handler();
    },
};

void GdkLayerSurface::prepare(GdkWindow* window) {
    gdk_wayland_window_set_use_custom_surface(window);
}

GdkLayerSurface::GdkLayerSurface(GdkLayerShell& shell, GdkWindow* window,
                                 const LayerSetting& setting, int width, int height)
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

GdkLayerSurface::~GdkLayerSurface() {
    if (!ready_) gdk_window_thaw_updates(window_);
    // Before the surface that it is the role of.
    if (surface_) zwlr_layer_surface_v1_destroy(surface_);
    gdk_window_hide(window_);
}

void GdkLayerSurface::apply(const LayerSetting& setting, int width, int height) {
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

void GdkLayerSurface::change(const LayerSetting& setting, int width, int height) {
    if (!surface_) return;
    apply(setting, width, height);
    commit();
}

void GdkLayerSurface::configured(unsigned serial, unsigned width, unsigned height) {
    zwlr_layer_surface_v1_ack_configure(surface_, serial);
    if (width != 0 && height != 0)
        gdk_window_resize(window_, static_cast<int>(width), static_cast<int>(height));
    if (std::exchange(ready_, true)) return;
    gdk_window_thaw_updates(window_);
    gdk_window_invalidate_rect(window_, nullptr, TRUE);
    if (readyHandler_) std::exchange(readyHandler_, nullptr)();
}

void GdkLayerSurface::commit() const {
    wl_surface_commit(gdk_wayland_window_get_wl_surface(window_));
}
