#include "shells/desktop/WindowPlace.hpp"

#include "backends/gdk/GdkViewHost.hpp"
#include "shells/common/ApplicationId.hpp"

#include <string>

namespace {
constexpr const char* instanceName = "tarnwick";
}

GdkWindow* WindowPlace::newWindowOfKind(GdkWindowType kind, GdkWindowTypeHint hint,
                                        const CGSize& size) const {
    GdkScreen* screen = gdk_display_get_default_screen(display_);
    std::string name = applicationName;
    std::string instance = instanceName;
    std::string application = applicationId;
    GdkWindowAttr attributes = {};
    attributes.title = name.data();
    attributes.event_mask = GdkViewHost::eventMask | GDK_FOCUS_CHANGE_MASK | GDK_KEY_RELEASE_MASK;
    attributes.width = static_cast<int>(size.width);
    attributes.height = static_cast<int>(size.height);
    attributes.wclass = GDK_INPUT_OUTPUT;
    attributes.visual = gdk_screen_get_rgba_visual(screen);
    attributes.window_type = kind;
    attributes.type_hint = hint;
    attributes.wmclass_name = instance.data();
    attributes.wmclass_class = application.data();
    const int given =
        GDK_WA_TITLE | GDK_WA_TYPE_HINT | GDK_WA_WMCLASS | (attributes.visual ? GDK_WA_VISUAL : 0);
    GdkWindow* window = gdk_window_new(gdk_screen_get_root_window(screen), &attributes, given);
    gdk_window_set_decorations(window, static_cast<GdkWMDecoration>(0));
    return window;
}
