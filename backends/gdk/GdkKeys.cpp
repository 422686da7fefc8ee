#include "backends/gdk/GdkKeys.hpp"

#include <gdk/gdkkeysyms.h>

bool isTypedAlone(const GdkEventKey& event) {
    constexpr guint desktopModifiers =
        GDK_CONTROL_MASK | GDK_MOD1_MASK | GDK_SUPER_MASK | GDK_META_MASK | GDK_HYPER_MASK;
    return (event.state & desktopModifiers) == 0;
}

std::optional<UIKey> keyOf(const GdkEventKey& event) {
    if (!isTypedAlone(event)) return std::nullopt;
    const bool shift = (event.state & GDK_SHIFT_MASK) != 0;
    switch (event.keyval) {
        case GDK_KEY_Tab:
        case GDK_KEY_KP_Tab:
            return shift ? UIKey::BackTab : UIKey::Tab;
        case GDK_KEY_ISO_Left_Tab:
            return UIKey::BackTab;
        case GDK_KEY_Left:
        case GDK_KEY_KP_Left:
            return UIKey::Left;
        case GDK_KEY_Right:
        case GDK_KEY_KP_Right:
            return UIKey::Right;
        case GDK_KEY_Up:
        case GDK_KEY_KP_Up:
            return UIKey::Up;
        case GDK_KEY_Down:
        case GDK_KEY_KP_Down:
            return UIKey::Down;
        case GDK_KEY_Page_Up:
        case GDK_KEY_KP_Page_Up:
            return UIKey::PageUp;
        case GDK_KEY_Page_Down:
        case GDK_KEY_KP_Page_Down:
            return UIKey::PageDown;
        case GDK_KEY_Home:
        case GDK_KEY_KP_Home:
            return UIKey::Home;
        case GDK_KEY_End:
        case GDK_KEY_KP_End:
            return UIKey::End;
        default:
            return std::nullopt;
    }
}
