#include "backends/gdk/GdkViewHost.hpp"

#include "backends/cairo/CairoCanvas.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/uikit/UIAnimator.hpp"

#include <cmath>
#include <utility>

namespace {

/// The smallest rectangle of the window's whole points around it. One more on each side where they
/// are others than the content's: what comes to lie on whole pixels there may move by more.
GdkRectangle inWindow(const CGRect& rect, CGFloat zoom) {
    const CGFloat more = zoom == 1 ? 0 : 1;
    const auto left = static_cast<int>(std::floor(rect.origin.x * zoom - more));
    const auto top = static_cast<int>(std::floor(rect.origin.y * zoom - more));
    return {left, top, static_cast<int>(std::ceil(CGRectGetMaxX(rect) * zoom + more)) - left,
            static_cast<int>(std::ceil(CGRectGetMaxY(rect) * zoom + more)) - top};
}

CGRect clippedArea(cairo_t* context) {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    cairo_clip_extents(context, &left, &top, &right, &bottom);
    return CGRectMake(static_cast<CGFloat>(left), static_cast<CGFloat>(top),
                      static_cast<CGFloat>(right - left), static_cast<CGFloat>(bottom - top));
}

}  // namespace

GdkViewHost::GdkViewHost(std::shared_ptr<UIWindow> content, GdkWindow* window)
    : content_(std::move(content)),
      window_(window),
      clock_(GDK_FRAME_CLOCK(g_object_ref(gdk_window_get_frame_clock(window)))),
      scale_(gdk_window_get_scale_factor(window)),
      input_(content_) {
    const auto update =
        +[](GdkFrameClock*, gpointer host) { static_cast<GdkViewHost*>(host)->beginFrame(); };
    updateHandler_ = g_signal_connect(clock_, "update", G_CALLBACK(update), this);
    content_->setDamageHandler([this] { requestFrame(); });
    requestFrame();
}

GdkViewHost::~GdkViewHost() {
    content_->setDamageHandler({});
    g_signal_handler_disconnect(clock_, updateHandler_);
    g_object_unref(clock_);
}

void GdkViewHost::requestFrame() {
    gdk_frame_clock_request_phase(clock_, GDK_FRAME_CLOCK_PHASE_UPDATE);
}

/// Moves what moves, then hands the damage to GDK, which paints it in this same frame.
void GdkViewHost::beginFrame() {
    UIAnimator& animator = UIAnimator::shared();
    const bool moving = animator.isActive();
    if (moving) animator.advance(NSRunLoop::mainRunLoop().currentTime());
    content_->layoutIfNeeded();  // Its damage belongs to this frame, not to the next.
    const std::vector<CGRect> damage = content_->takeDamage();
    for (const CGRect& rect : damage) {
        const GdkRectangle area = inWindow(rect, content_->zoom());
        gdk_window_invalidate_rect(window_, &area, FALSE);
    }
    if (animator.isActive()) requestFrame();
    if (frameHandler_ && (moving || !damage.empty())) frameHandler_();
}

bool GdkViewHost::handleEvent(const GdkEvent& event) {
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

/// The window has come to another size or onto a finer or coarser screen.
void GdkViewHost::configure() {
    const int scale = gdk_window_get_scale_factor(window_);
    if (std::exchange(scale_, scale) != scale) gdk_window_invalidate_rect(window_, nullptr, TRUE);
}

void GdkViewHost::expose(const cairo_region_t* region) {
    GdkDrawingContext* frame = gdk_window_begin_draw_frame(window_, region);
    cairo_t* context = gdk_drawing_context_get_cairo_context(frame);
    cairo_save(context);
    cairo_set_operator(context, CAIRO_OPERATOR_CLEAR);
    cairo_paint(context);
    cairo_restore(context);
    paint(context);
    gdk_window_end_draw_frame(window_, frame);
}

void GdkViewHost::paint(cairo_t* context) {
    const CGFloat zoom = content_->zoom();
    cairo_save(context);
    cairo_scale(context, zoom, zoom);
    // Asked anew: a toolkit that paints by itself may keep the events that tell of another scale.
    const auto scale = static_cast<CGFloat>(gdk_window_get_scale_factor(window_));
    paintContent(context, scale * zoom);
    cairo_restore(context);
}

void GdkViewHost::paintContent(cairo_t* context, CGFloat pixelsPerPoint) {
    CairoCanvas canvas(context, pixelsPerPoint);
    content_->layoutAndPaint(canvas, clippedArea(context));
}
