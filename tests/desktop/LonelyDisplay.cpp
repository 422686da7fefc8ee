#include "tests/desktop/LonelyDisplay.hpp"

#include <vector>

namespace test {
namespace {

// Newer GDKs keep the screen, the windows and the devices of a closed display, which hold each
// other: what is reachable from here is not counted as leaked.
void keepForGood(GdkDisplay* closed) {
    static auto& kept = *new std::vector<gpointer>;  // Until after the last look for leaks.
    kept.push_back(g_object_ref(closed));
}

}  // namespace

LonelyDisplay::LonelyDisplay() {
    // Each call keeps a copy of the list for good.
    [[maybe_unused]] static const bool isOnX = (gdk_set_allowed_backends("x11"), true);
    display_ = gdk_display_open(server_.displayName().c_str());
    g_assert_nonnull(display_);
}

LonelyDisplay::~LonelyDisplay() {
    keepForGood(display_);
    gdk_display_close(display_);
}

}  // namespace test
