#include "backends/gdk/accessibility/Application.hpp"

#include "backends/gdk/accessibility/Frame.hpp"
#include "backends/gdk/accessibility/ObjectClass.hpp"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace windowing {

namespace {

std::vector<AtkObjectPtr>& frames() {
    static std::vector<AtkObjectPtr> all;
    return all;
}

void initClass(gpointer application, gpointer /*data*/) {
    AtkObjectClass* object = ATK_OBJECT_CLASS(application);
    object->get_n_children = [](AtkObject*) { return static_cast<int>(frames().size()); };
    object->ref_child = [](AtkObject*, int index) -> AtkObject* {
        if (index < 0 || index >= static_cast<int>(frames().size())) return nullptr;
        return ATK_OBJECT(g_object_ref(frames()[static_cast<std::size_t>(index)].get()));
    };
    object->get_parent = [](AtkObject*) -> AtkObject* { return nullptr; };
}

GType applicationType() {
    static const GType type =
        newSubclass(ATK_TYPE_OBJECT, "TarnwickAccessibleApplication", initClass);
    return type;
}

AtkObject* ownRoot() {
    static const AtkObjectPtr root = [] {
        AtkObjectPtr application(ATK_OBJECT(g_object_new(applicationType(), nullptr)));
        atk_object_set_role(application.get(), ATK_ROLE_APPLICATION);
        const char* name = g_get_application_name();  // The program's, where it has no name.
        atk_object_set_name(application.get(), name ? name : "tarnwick");
        return application;
    }();
    return root.get();
}

bool isOurs(AtkObject* root) {
    return G_TYPE_CHECK_INSTANCE_TYPE(root, applicationType()) != FALSE;
}

// Keys ------------------------------------------------------------------------------------------

struct KeyListener {
    guint id;
    AtkKeySnoopFunc function;
    gpointer data;
};

std::vector<KeyListener>& keyListeners() {
    static std::vector<KeyListener> all;
    return all;
}

guint addKeyListener(AtkKeySnoopFunc function, gpointer data) {
    static guint lastId = 0;
    keyListeners().push_back({++lastId, function, data});
    return lastId;
}

void removeKeyListener(guint id) {
    std::erase_if(keyListeners(), [id](const KeyListener& listener) { return listener.id == id; });
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

// The toolkit -----------------------------------------------------------------------------------

decltype(AtkUtilClass::add_global_event_listener) libraryAddsListener;

/// The bridge only listens after the bus has told it which events are wanted; earlier ones, such as
/// the first opening of a window, are lost and must be announced again.
guint addListener(GSignalEmissionHook listener, const char* event) {
    static guint waiting = 0;
    const auto tellAll = +[](gpointer) -> gboolean {
        waiting = 0;
        for (std::size_t i = 0; i < frames().size(); ++i) {
            const AtkObjectPtr frame(ATK_OBJECT(g_object_ref(frames()[i].get())));
            tellFrameOpening(frame.get());
        }
        return G_SOURCE_REMOVE;
    };
    if (waiting == 0) waiting = g_idle_add(tellAll, nullptr);  // After the last of its listeners.
    return libraryAddsListener ? libraryAddsListener(listener, event) : 0;
}

/// The library asks the toolkit through this class, which has no other way to be filled in.
void answerForToolkit() {
    AtkUtilClass* toolkit = ATK_UTIL_CLASS(g_type_class_ref(ATK_TYPE_UTIL));
    libraryAddsListener = std::exchange(toolkit->add_global_event_listener, addListener);
    toolkit->get_root = ownRoot;
    toolkit->get_toolkit_name = [] { return "Tarnwick"; };
    toolkit->get_toolkit_version = [] { return TARNWICK_VERSION; };
    toolkit->add_key_event_listener = addKeyListener;
    toolkit->remove_key_event_listener = removeKeyListener;
}

}  // namespace

AtkObject* accessibleApplication() {
    if (AtkObject* root = atk_get_root()) return root;
    answerForToolkit();
    return atk_get_root();
}

void addToApplication(AtkObject* frame) {
    AtkObject* root = accessibleApplication();
    if (!isOurs(root)) return;
    frames().emplace_back(ATK_OBJECT(g_object_ref(frame)));
    g_signal_emit_by_name(root, "children-changed::add", static_cast<guint>(frames().size() - 1),
                          frame);
    tellFrameOpening(frame);
}

void removeFromApplication(AtkObject* frame) {
    const auto found = std::ranges::find(frames(), frame, &AtkObjectPtr::get);
    if (found == frames().end()) return;
    const auto index = static_cast<guint>(found - frames().begin());
    const AtkObjectPtr gone = std::move(*found);
    frames().erase(found);
    g_signal_emit_by_name(frame, "destroy");
    g_signal_emit_by_name(accessibleApplication(), "children-changed::remove", index, frame);
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
    const std::vector<KeyListener> asked = keyListeners();  // One that is asked may remove another.
    for (const KeyListener& listener : asked)
        taken = listener.function(&told, listener.data) != 0 || taken;
    return taken;
}

}  // namespace windowing
