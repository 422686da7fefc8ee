// The least that a mixer on GDK and the sound server's library can do: a window with a bar that is
// as long as the default device's volume, in enough greys to be taken for a picture.
#include "bench/start/BareWindow.hpp"

#include <pulse/glib-mainloop.h>
#include <pulse/introspect.h>
#include <pulse/subscribe.h>

#include <cstdint>

namespace {

// Points; a track of the mixer's size.
constexpr GdkRectangle track = {230, 80, 300, 10};

GdkWindow* window = nullptr;
double volume = 0;  // 0 to 1.

void draw(cairo_t* context) {
    cairo_set_source_rgb(context, 0, 0, 0);
    cairo_paint(context);
    cairo_pattern_t* grey = cairo_pattern_create_linear(track.x, 0, track.x + track.width, 0);
    cairo_pattern_add_color_stop_rgb(grey, 0, 1, 1, 1);
    cairo_pattern_add_color_stop_rgb(grey, 1, 0, 0, 0);
    cairo_set_source(context, grey);
    cairo_rectangle(context, track.x, track.y, track.width * volume, track.height);
    cairo_fill(context);
    cairo_pattern_destroy(grey);
}

void handle(GdkEvent* event, gpointer /*data*/) {
    if (event->type != GDK_EXPOSE) return;
    GdkDrawingContext* frame = gdk_window_begin_draw_frame(window, event->expose.region);
    draw(gdk_drawing_context_get_cairo_context(frame));
    gdk_window_end_draw_frame(window, frame);
}

void release(pa_operation* operation) {
    if (operation) pa_operation_unref(operation);
}

void read(pa_context* context) {
    const auto answered = +[](pa_context*, const pa_sink_info* info, int, void*) {
        if (!info) return;
        volume = double(pa_cvolume_max(&info->volume)) / PA_VOLUME_NORM;
        gdk_window_invalidate_rect(window, &track, FALSE);
    };
    release(pa_context_get_sink_info_by_name(context, "@DEFAULT_SINK@", answered, nullptr));
}

void stateChanged(pa_context* context, void* /*data*/) {
    if (pa_context_get_state(context) != PA_CONTEXT_READY) return;
    const auto changed = +[](pa_context* server, pa_subscription_event_type_t, std::uint32_t,
                             void*) { read(server); };
    pa_context_set_subscribe_callback(context, changed, nullptr);
    release(pa_context_subscribe(context, PA_SUBSCRIPTION_MASK_SINK, nullptr, nullptr));
    read(context);
}

}  // namespace

int main() {
    gdk_init(nullptr, nullptr);
    window = showBareWindow(handle);
    pa_glib_mainloop* loop = pa_glib_mainloop_new(nullptr);
    pa_context* context = pa_context_new(pa_glib_mainloop_get_api(loop), "Bare mixer");
    pa_context_set_state_callback(context, stateChanged, nullptr);
    pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
