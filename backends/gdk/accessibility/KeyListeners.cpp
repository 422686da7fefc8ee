#include "backends/gdk/accessibility/KeyListeners.hpp"

#include <string>
#include <vector>

namespace {

struct Listener {
    guint id;
    AtkKeySnoopFunc function;
    gpointer data;
};

std::vector<Listener>& listeners() {
    static std::vector<Listener> all;
    return all;
}

guint addListener(AtkKeySnoopFunc function, gpointer data) {
    static guint lastId = 0;
    listeners().push_back({++lastId, function, data});
    return lastId;
}

void removeListener(guint id) {
    std::erase_if(listeners(), [id](const Listener& listener) { return listener.id == id; });
}

/// The character that the key types, or the key's name where that is none to be seen.
std::string textOf(const GdkEventKey& event) {
    const gunichar character = gdk_keyval_to_unicode(event.keyval);
    if (character != 0 && g_unichar_isgraph(character) != FALSE) {
        constexpr int longestCharacter = 6;  // bytes, by the library's own account
        char bytes[longestCharacter];
        return {bytes, static_cast<std::size_t>(g_unichar_to_utf8(character, bytes))};
    }
    const char* name = gdk_keyval_name(event.keyval);
    return name ? name : "";
}

}  // namespace

void serveKeyListeners(AtkUtilClass* toolkit) {
    toolkit->add_key_event_listener = addListener;
    toolkit->remove_key_event_listener = removeListener;
}

bool tellKeyListeners(const GdkEventKey& event) {
    std::string text = textOf(event);
    AtkKeyEventStruct told = {};
    told.type = event.type == GDK_KEY_PRESS ? ATK_KEY_EVENT_PRESS : ATK_KEY_EVENT_RELEASE;
    told.state = event.state;
    told.keyval = event.keyval;
    told.keycode = event.hardware_keycode;
    told.timestamp = event.time;
    told.string = text.data();
    told.length = static_cast<gint>(text.size());
    bool taken = false;
    const std::vector<Listener> asked = listeners();  // One that is asked may remove another.
    for (const Listener& listener : asked)
        taken = listener.function(&told, listener.data) != 0 || taken;
    return taken;
}
