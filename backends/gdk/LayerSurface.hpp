#pragma once

#include <gdk/gdk.h>

#include <functional>
#include <memory>

struct zwlr_layer_shell_v1;
struct zwlr_layer_surface_v1;
struct zwlr_layer_surface_v1_listener;

namespace windowing {

/// The Wayland compositor's layer shell, which places windows above or below all others. Main
/// thread.
class LayerShell {
 public:
    /// Whether the display is a Wayland display with a layer shell; known since the display was
    /// opened.
    static bool isOffered(GdkDisplay* display);

    /// Asks for the offer, and returns before it is answered; only where it was made.
    explicit LayerShell(GdkDisplay* display);
    ~LayerShell();
    LayerShell(const LayerShell&) = delete;
    LayerShell& operator=(const LayerShell&) = delete;

    /// Waits for the answer where it is not there yet, which takes the compositor no time. nullptr
    /// when the connection has failed.
    zwlr_layer_shell_v1* get();

 private:
    struct Binding;
    std::unique_ptr<Binding> binding_;
};

/// Edges of a screen, to be combined.
enum class LayerEdges : unsigned { Top = 1, Bottom = 2, Left = 4, Right = 8, All = 15 };

constexpr LayerEdges operator|(LayerEdges one, LayerEdges other) {
    return static_cast<LayerEdges>(static_cast<unsigned>(one) | static_cast<unsigned>(other));
}

/// The layer between the windows and the topmost layer, below a lock screen.
enum class Layer : unsigned { Top = 2, Overlay = 3 };

enum class LayerKeys : unsigned { None = 0, All = 1 };

/// The placement of a window on its layer.
struct LayerSetting {
    Layer layer = Layer::Overlay;
    LayerEdges edges = LayerEdges::Top;
    LayerKeys keys = LayerKeys::None;
    /// Between each edge and the window, points; negative beyond the edge.
    int top = 0;
    int right = 0;
    int bottom = 0;
    int left = 0;
    /// Whether it avoids panels or covers them.
    enum class Panels { KeepClear, Cover } panels = Panels::KeepClear;
    GdkMonitor* monitor = nullptr;  ///< nullptr: where the user is, as the compositor sees it.
};

/// Puts a GdkWindow on a layer of the screen while it exists. Main thread.
class LayerSurface {
 public:
    /// Prepares a window; call before anything else is done with it.
    static void prepare(GdkWindow* window);

    /// Shows the window, which appears and may be painted once the compositor has answered. It
    /// requests its current size; 0 between two anchored edges fills that direction. The window
    /// must outlive this object.
    LayerSurface(LayerShell& shell, GdkWindow* window, const LayerSetting& setting, int width,
                 int height);
    /// Hides the window.
    ~LayerSurface();
    LayerSurface(const LayerSurface&) = delete;
    LayerSurface& operator=(const LayerSurface&) = delete;

    /// Changes the place or size, in points.
    void change(const LayerSetting& setting, int width, int height);
    /// Called once, when the window may be painted.
    void setReadyHandler(std::function<void()> handler) { readyHandler_ = std::move(handler); }
    /// Called when the compositor has removed the window, for example with its screen. It may
    /// destroy this object.
    void setClosedHandler(std::function<void()> handler) { closedHandler_ = std::move(handler); }

 private:
    void apply(const LayerSetting& setting, int width, int height);
    void configured(unsigned serial, unsigned width, unsigned height);
    void commit() const;
    static const zwlr_layer_surface_v1_listener listener;

    GdkWindow* window_;
    zwlr_layer_surface_v1* surface_ = nullptr;
    bool ready_ = false;
    std::function<void()> readyHandler_;
    std::function<void()> closedHandler_;
};

}  // namespace windowing
