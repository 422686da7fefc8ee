#include "backends/cairo/PendingClip.hpp"

void PendingClip::narrow(const CGRect& rect) {
    const Edges edges = edgesOf(context_, rect);
    wanted_ = wanted_ ? intersection(*wanted_, edges) : edges;
}

// A clip can only become smaller: another one begins at what was saved.
void PendingClip::apply() {
    if (wanted_ == applied_) return;
    cairo_matrix_t matrix;
    cairo_get_matrix(context_, &matrix);
    cairo_restore(context_);
    cairo_save(context_);
    if (wanted_) clipTo(*wanted_);
    cairo_set_matrix(context_, &matrix);
    applied_ = wanted_;
}

void PendingClip::clipTo(const Edges& edges) {
    cairo_identity_matrix(context_);
    cairo_new_path(context_);
    cairo_rectangle(context_, edges.left, edges.top, edges.right - edges.left,
                    edges.bottom - edges.top);
    cairo_clip(context_);
}

void PendingClip::beginGroup() {
    apply();
    cairo_push_group(context_);
    cairo_save(context_);
}

void PendingClip::endGroup() {
    cairo_restore(context_);
    cairo_pop_group_to_source(context_);
    applied_ = wanted_;
}
