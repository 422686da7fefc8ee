// The least that a program on GDK can do: a window in which five captions are drawn.
#include "bench/start/BareCaptions.hpp"
#include "bench/start/BareWindow.hpp"

namespace {

void drawCaptions(cairo_t* context) {
    cairo_set_source_rgb(context, 0, 0, 0);
    cairo_paint(context);
    cairo_set_source_rgb(context, 1, 1, 1);
    PangoLayout* layout = pango_cairo_create_layout(context);
    bare::setCaption(layout, "Ringtone: 50%");
    for (int row = 0; row < bare::rows; ++row) {
        cairo_move_to(context, bare::captionX, bare::captionY + row * bare::rowHeight);
        pango_cairo_show_layout(context, layout);
    }
    g_object_unref(layout);
}

void handle(GdkEvent* event, gpointer /*data*/) {
    if (event->type != GDK_EXPOSE) return;
    GdkWindow* window = event->any.window;
    GdkDrawingContext* frame = gdk_window_begin_draw_frame(window, event->expose.region);
    drawCaptions(gdk_drawing_context_get_cairo_context(frame));
    gdk_window_end_draw_frame(window, frame);
}

}  // namespace

int main() {
    gdk_init(nullptr, nullptr);
    showBareWindow(handle);
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
