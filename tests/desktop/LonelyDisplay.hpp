#pragma once

#include "tests/desktop/XServer.hpp"

#include <gdk/gdk.h>

namespace test {

/// A connection to an X server of its own, on which no window manager runs.
class LonelyDisplay {
 public:
    /// Aborts the test program where the server cannot be started.
    LonelyDisplay();
    ~LonelyDisplay();
    LonelyDisplay(const LonelyDisplay&) = delete;
    LonelyDisplay& operator=(const LonelyDisplay&) = delete;

    GdkDisplay* get() const { return display_; }

 private:
    XServer server_;
    GdkDisplay* display_;
};

}  // namespace test
