// The least that a mixer on GDK and the sound server's library can do: a window with a bar as long
// as the default device's volume, in enough greys to count as a picture. With --captions it also
// has five lines of text, the second of which shows the volume.
#include "bench/start/BareCaptions.hpp"
#include "bench/start/BareWindow.hpp"

#include <pulse/glib-mainloop.h>
#include <pulse/introspect.h>
#include <pulse/subscribe.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace {

// Points; a track of the mixer's size.
constexpr GdkRectangle track = {230, 80, 300, 10};
constexpr int rowOfVolume = 1;
constexpr int captionOfVolumeY = bare::captionY + bare::rowHeight * rowOfVolume;
constexpr GdkRectangle caption = {bare::captionX, captionOfVolumeY, 300, 20};

bool showsCaptions = false;
GdkWindow* window = nullptr;
double volume = 0;  // 0 to 1.

/// The caption of a percentage, shaped once.
PangoLayout* layoutOf(int percent) {
    static PangoLayout* layouts[101] = {};
    PangoLayout*& layout = layouts[percent];
    if (layout) return layout;
    static PangoContext* context =
        pango_font_map_create_context(pango_cairo_font_map_get_default());
    layout = pango_layout_new(context);
    char text[32];
    std::snprintf(text, sizeof text, "Volume: %d%%", percent);
    bare::setCaption(layout, text);
    return layout;
}

void drawCaptions(cairo_t* context) {
    cairo_set_source_rgb(context, 1, 1, 1);
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(context, &left, &top, &right, &bottom);
    for (int row = 0; row < bare::rows; ++row) {
        const int y = bare::captionY + row * bare::rowHeight;
        if (y + caption.height <= top || y >= bottom) continue;
        cairo_move_to(context, bare::captionX, y);
        const int percent = row == rowOfVolume ? int(std::lround(100 * std::fmin(volume, 1))) : 50;
        pango_cairo_show_layout(context, layoutOf(percent));
    }
}

void draw(cairo_t* context) {
    cairo_set_source_rgb(context, 0, 0, 0);
    cairo_paint(context);
    if (showsCaptions) drawCaptions(context);
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
        if (showsCaptions) gdk_window_invalidate_rect(window, &caption, FALSE);
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

int main(int count, char** arguments) {
    showsCaptions = count > 1 && std::strcmp(arguments[1], "--captions") == 0;
    gdk_init(nullptr, nullptr);
    window = showBareWindow(handle);
    pa_glib_mainloop* loop = pa_glib_mainloop_new(nullptr);
    pa_context* context = pa_context_new(pa_glib_mainloop_get_api(loop), "Bare mixer");
    pa_context_set_state_callback(context, stateChanged, nullptr);
    pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
