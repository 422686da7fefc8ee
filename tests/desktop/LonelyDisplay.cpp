#include "tests/desktop/LonelyDisplay.hpp"

namespace test {

LonelyDisplay::LonelyDisplay() {
    gdk_set_allowed_backends("x11");
    display_ = gdk_display_open(server_.displayName().c_str());
    g_assert_nonnull(display_);
}

LonelyDisplay::~LonelyDisplay() {
    gdk_display_close(display_);
}

}  // namespace test
