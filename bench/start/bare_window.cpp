// The least that a program on GDK can do: a window in which five captions are drawn.
#include "bench/start/BareWindow.hpp"

#include <pango/pangocairo.h>

namespace {

// Points; the widget's own places.
constexpr int rows = 5;
constexpr int rowHeight = 50;
constexpr int captionX = 20;
constexpr int captionY = 15;
constexpr int captionSize = 12;

void drawCaptions(cairo_t* context) {
    cairo_set_source_rgb(context, 0, 0, 0);
    cairo_paint(context);
    cairo_set_source_rgb(context, 1, 1, 1);
    PangoLayout* layout = pango_cairo_create_layout(context);
    PangoFontDescription* font = pango_font_description_from_string("Sans");
    pango_font_description_set_absolute_size(font, captionSize * PANGO_SCALE);
    pango_layout_set_font_description(layout, font);
    pango_layout_set_text(layout, "Ringtone: 50%", -1);
    for (int row = 0; row < rows; ++row) {
        cairo_move_to(context, captionX, captionY + row * rowHeight);
        pango_cairo_show_layout(context, layout);
    }
    pango_font_description_free(font);
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
