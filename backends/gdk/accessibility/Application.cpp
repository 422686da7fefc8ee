#include "backends/gdk/accessibility/Application.hpp"

#include "backends/gdk/accessibility/Frame.hpp"
#include "backends/gdk/accessibility/KeyListeners.hpp"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

std::vector<AtkObjectPtr>& frames() {
    static std::vector<AtkObjectPtr> all;
    return all;
}

}  // namespace

struct TarnwickAccessibleApplication {
    AtkObject parent;
};
struct TarnwickAccessibleApplicationClass {
    AtkObjectClass parent;
};
static GType tarnwick_accessible_application_get_type();
G_DEFINE_TYPE(TarnwickAccessibleApplication, tarnwick_accessible_application, ATK_TYPE_OBJECT)

static void tarnwick_accessible_application_init(TarnwickAccessibleApplication* application) {
    atk_object_set_role(ATK_OBJECT(application), ATK_ROLE_APPLICATION);
    const char* name = g_get_application_name();  // The program's, where it has no name.
    atk_object_set_name(ATK_OBJECT(application), name ? name : "tarnwick");
}

static void tarnwick_accessible_application_class_init(
    TarnwickAccessibleApplicationClass* applicationClass) {
    AtkObjectClass* object = ATK_OBJECT_CLASS(applicationClass);
    object->get_n_children = [](AtkObject*) { return static_cast<int>(frames().size()); };
    object->ref_child = [](AtkObject*, int index) -> AtkObject* {
        if (index < 0 || index >= static_cast<int>(frames().size())) return nullptr;
        return ATK_OBJECT(g_object_ref(frames()[static_cast<std::size_t>(index)].get()));
    };
    object->get_parent = [](AtkObject*) -> AtkObject* { return nullptr; };
}

namespace {

AtkObject* ownRoot() {
    static const AtkObjectPtr root(
        ATK_OBJECT(g_object_new(tarnwick_accessible_application_get_type(), nullptr)));
    return root.get();
}

bool isOurs(AtkObject* root) {
    return G_TYPE_CHECK_INSTANCE_TYPE(root, tarnwick_accessible_application_get_type()) != FALSE;
}

decltype(AtkUtilClass::add_global_event_listener) libraryAddsListener;

/// The bridge begins to listen only when it has heard from the bus who wants to know anything, and
/// what was told before is lost: the first opening of a window among it.
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
    serveKeyListeners(toolkit);
    toolkit->get_toolkit_version = [] { return TARNWICK_VERSION; };
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
