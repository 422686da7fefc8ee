// Where GDK was built without Wayland there are no layers.
#include "backends/gdk/LayerSurface.hpp"

namespace windowing {

struct LayerShell::Binding {};

bool LayerShell::isOffered(GdkDisplay* /*display*/) {
    return false;
}
LayerShell::LayerShell(GdkDisplay* /*display*/) {}
LayerShell::~LayerShell() = default;
zwlr_layer_shell_v1* LayerShell::get() {
    return nullptr;
}

void LayerSurface::prepare(GdkWindow* /*window*/) {}
LayerSurface::LayerSurface(LayerShell& /*shell*/, GdkWindow* window,
                           const LayerSetting& /*setting*/, int /*width*/, int /*height*/)
    : window_(window) {}
LayerSurface::~LayerSurface() = default;
void LayerSurface::change(const LayerSetting& /*setting*/, int /*width*/, int /*height*/) {}

}  // namespace windowing
