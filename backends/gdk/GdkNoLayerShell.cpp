// Where GDK was built without Wayland there are no layers.
#include "backends/gdk/GdkLayerSurface.hpp"

struct GdkLayerShell::Binding {};

bool GdkLayerShell::isOffered(GdkDisplay* /*display*/) {
    return false;
}
GdkLayerShell::GdkLayerShell(GdkDisplay* /*display*/) {}
GdkLayerShell::~GdkLayerShell() = default;
zwlr_layer_shell_v1* GdkLayerShell::get() {
    return nullptr;
}

void GdkLayerSurface::prepare(GdkWindow* /*window*/) {}
GdkLayerSurface::GdkLayerSurface(GdkLayerShell& /*shell*/, GdkWindow* window,
                                 const LayerSetting& /*setting*/, int /*width*/, int /*height*/)
    : window_(window) {}
GdkLayerSurface::~GdkLayerSurface() = default;
void GdkLayerSurface::change(const LayerSetting& /*setting*/, int /*width*/, int /*height*/) {}
