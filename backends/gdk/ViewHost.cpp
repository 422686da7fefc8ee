#include "backends/gdk/ViewHost.hpp"

#include "backends/cairo/CairoCanvas.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/uikit/UIAnimator.hpp"

#include <cmath>
#include <utility>

namespace windowing {

namespace {

/// The smallest rectangle of whole window points around it, enlarged by one on each side if a zoom
/// applies: pixel alignment there may move content further.
GdkRectangle inWindow(const CGRect& rect, CGFloat zoom) {
    const CGFloat more = zoom == 1 ? 0 : 1;
    const auto left = static_cast<int>(std::floor(rect.origin.x * zoom - more));
    const auto top = static_cast<int>(std::floor(rect.origin.y * zoom - more));
    return {left, top, static_cast<int>(std::ceil(CGRectGetMaxX(rect) * zoom + more)) - left,
            static_cast<int>(std::ceil(CGRectGetMaxY(rect) * zoom + more)) - top};
}

}  // namespace

ViewHost::ViewHost(std::shared_ptr<UIWindow> content, GdkWindow* window)
    : content_(std::move(content)),
      window_(window),
      clock_(GDK_FRAME_CLOCK(g_object_ref(gdk_window_get_frame_clock(window)))),
      scale_(gdk_window_get_scale_factor(window)),
      input_(content_) {
    const auto update =
        +[](GdkFrameClock*, gpointer host) { static_cast<ViewHost*>(host)->beginFrame(); };
    updateHandler_ = g_signal_connect(clock_, "update", G_CALLBACK(update), this);
    content_->setDamageHandler([this] { requestFrame(); });
    requestFrame();
}

ViewHost::~ViewHost() {
    content_->setDamageHandler({});
    g_signal_handler_disconnect(clock_, updateHandler_);
    g_object_unref(clock_);
}

void ViewHost::requestFrame() {
    gdk_frame_clock_request_phase(clock_, GDK_FRAME_CLOCK_PHASE_UPDATE);
}

/// Advances the animations, then passes the damage to GDK, which paints it in the same frame.
void ViewHost::beginFrame() {
    UIAnimator& animator = UIAnimator::shared();
    const bool moving = animator.isActive();
    if (moving) animator.advance(NSRunLoop::mainRunLoop().currentTime());
    content_->layoutIfNeeded();  // Before takeDamage(), so that its damage is part of this frame.
    const std::vector<CGRect> damage = content_->takeDamage();
    for (const CGRect& rect : damage) {
        const GdkRectangle area = inWindow(rect, content_->zoom());
        gdk_window_invalidate_rect(window_, &area, FALSE);
    }
    if (animator.isActive()) requestFrame();
    if (frameHandler_ && (moving || !damage.empty())) frameHandler_();
}

bool ViewHost::handleEvent(const GdkEvent& event) {
    switch (event.type) {
        case GDK_EXPOSE:
            expose(event.expose.region);
            return true;
        case GDK_CONFIGURE:
            configure();
            return false;
        default:
            return input_.handle(event);
    }
}

/// The window was resized or moved to a screen with another scale.
void ViewHost::configure() {
    const int scale = gdk_window_get_scale_factor(window_);
    if (std::exchange(scale_, scale) != scale) gdk_window_invalidate_rect(window_, nullptr, TRUE);
}

void ViewHost::expose(const cairo_region_t* region) {
    GdkDrawingContext* frame = gdk_window_begin_draw_frame(window_, region);
    cairo_t* context = gdk_drawing_context_get_cairo_context(frame);
    cairo_save(context);
    cairo_set_operator(context, CAIRO_OPERATOR_CLEAR);
    cairo_paint(context);
    cairo_restore(context);
    paint(context);
    gdk_window_end_draw_frame(window_, frame);
}

void ViewHost::paint(cairo_t* context) {
    const CGFloat zoom = content_->zoom();
    cairo_save(context);
    cairo_scale(context, zoom, zoom);
    // Asked anew: a toolkit that paints by itself may keep the events that tell of another scale.
    const auto scale = static_cast<CGFloat>(gdk_window_get_scale_factor(window_));
    paintContent(context, scale * zoom);
    cairo_restore(context);
}

void ViewHost::paintContent(cairo_t* context, CGFloat pixelsPerPoint) {
    painting::CairoCanvas canvas(context, pixelsPerPoint);
    content_->layoutAndPaint(canvas, painting::clippedArea(context));
}

}  // namespace windowing
