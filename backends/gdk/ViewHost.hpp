#pragma once

#include "backends/gdk/InputTranslator.hpp"
#include "platform/uikit/UIWindow.hpp"

#include <gdk/gdk.h>

#include <functional>
#include <memory>

namespace windowing {

/// Shows a view tree in a GdkWindow that another object owns: a shell's window, or that of another
/// toolkit's widget. It requests frames from the window's frame clock when something must be
/// painted or moves, and only then.
///
///     ViewHost host(content, window);
///     host.handleEvent(event);
///
/// The root of the tree is as large as the window divided by its zoom and lies at the window's
/// origin; the owner of the window sets the root's frame when the size changes. Main thread.
class ViewHost {
 public:
    /// The window must select eventMask, and outlive this object.
    ViewHost(std::shared_ptr<UIWindow> content, GdkWindow* window);
    ~ViewHost();
    ViewHost(const ViewHost&) = delete;
    ViewHost& operator=(const ViewHost&) = delete;

    static constexpr int eventMask =
        InputTranslator::eventMask | GDK_EXPOSURE_MASK | GDK_STRUCTURE_MASK;

    /// Takes an event of the window; answers whether it was used up. A toolkit that paints by
    /// itself keeps the exposures and calls paint().
    bool handleEvent(const GdkEvent& event);
    /// Paints what lies in the context's clip. The context's units are the window's points.
    void paint(cairo_t* context);

    GdkWindow* window() const { return window_; }
    const std::shared_ptr<UIWindow>& content() const { return content_; }
    const Press& lastPress() const { return input_.lastPress(); }
    /// Called after each frame in which something was to be painted or moved: what is shown may
    /// have changed.
    void setFrameHandler(std::function<void()> handler) { frameHandler_ = std::move(handler); }

 private:
    void requestFrame();
    void beginFrame();
    void expose(const cairo_region_t* region);
    void paintContent(cairo_t* context, CGFloat pixelsPerPoint);
    void configure();

    std::shared_ptr<UIWindow> content_;
    GdkWindow* window_;
    GdkFrameClock* clock_;
    gulong updateHandler_ = 0;
    int scale_ = 1;
    InputTranslator input_;
    std::function<void()> frameHandler_;
};

}  // namespace windowing
