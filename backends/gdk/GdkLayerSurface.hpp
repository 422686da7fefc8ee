#pragma once

#include "backends/gdk/GdkLayerShell.hpp"

#include <functional>

struct zwlr_layer_surface_v1;
struct zwlr_layer_surface_v1_listener;

/// Edges of a screen, to be combined.
enum class LayerEdges : unsigned { Top = 1, Bottom = 2, Left = 4, Right = 8, All = 15 };

constexpr LayerEdges operator|(LayerEdges one, LayerEdges other) {
    return static_cast<LayerEdges>(static_cast<unsigned>(one) | static_cast<unsigned>(other));
}

/// Between the windows and what is above everything, a lock screen aside.
enum class Layer : unsigned { Top = 2, Overlay = 3 };

enum class LayerKeys : unsigned { None = 0, All = 1 };

/// How a window lies on its layer.
struct LayerSetting {
    Layer layer = Layer::Overlay;
    LayerEdges edges = LayerEdges::Top;
    LayerKeys keys = LayerKeys::None;
    /// Between each edge and the window, points; negative beyond the edge.
    int top = 0;
    int right = 0;
    int bottom = 0;
    int left = 0;
    /// Whether it keeps clear of panels, or lies over them.
    enum class Panels { KeepClear, Cover } panels = Panels::KeepClear;
    GdkMonitor* monitor = nullptr;  ///< nullptr: where the user is, as the compositor sees it.
};

/// Puts a GdkWindow on a layer of the screen, for as long as this lives. Main thread.
class GdkLayerSurface {
 public:
    /// To be said of a window before anything else is done with it.
    static void prepare(GdkWindow* window);

    /// Shows the window: it appears, and may be painted, once the compositor has answered. Its
    /// present size is what it asks for; 0 in a direction where it lies between two edges gets it
    /// all. The window must outlive this.
    GdkLayerSurface(GdkLayerShell& shell, GdkWindow* window, const LayerSetting& setting, int width,
                    int height);
    /// Hides the window.
    ~GdkLayerSurface();
    GdkLayerSurface(const GdkLayerSurface&) = delete;
    GdkLayerSurface& operator=(const GdkLayerSurface&) = delete;

    /// Another place or size, in points.
    void change(const LayerSetting& setting, int width, int height);
    /// Called once, when the window may be painted.
    void setReadyHandler(std::function<void()> handler) { readyHandler_ = std::move(handler); }
    /// Called when the compositor has taken the window off the screen, as when the screen has gone.
    /// It may end this.
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
