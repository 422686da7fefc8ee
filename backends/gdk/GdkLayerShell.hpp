#pragma once

#include <gdk/gdk.h>

#include <memory>

struct zwlr_layer_shell_v1;

/// The Wayland compositor's offer to put windows on layers above or below all others. Main thread.
class GdkLayerShell {
 public:
    /// Whether the display is a Wayland one with that offer; known since the display was opened.
    static bool isOffered(GdkDisplay* display);

    /// Asks for the offer, and returns before it is answered; only where it was made.
    explicit GdkLayerShell(GdkDisplay* display);
    ~GdkLayerShell();
    GdkLayerShell(const GdkLayerShell&) = delete;
    GdkLayerShell& operator=(const GdkLayerShell&) = delete;

    /// Waits for the answer where it is not there yet, which takes the compositor no time. nullptr
    /// when the connection has failed.
    zwlr_layer_shell_v1* get();

 private:
    struct Binding;
    std::unique_ptr<Binding> binding_;
};
