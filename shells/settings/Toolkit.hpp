#pragma once

#include <adwaita.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace settings {

struct ObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
/// A reference to an object of the toolkit that this code holds itself; widgets in a window are
/// held by their parents.
template <class Object>
using Ref = std::unique_ptr<Object, ObjectUnref>;

/// Text that the toolkit hands over to its caller.
struct TextFree {
    void operator()(gpointer text) const { g_free(text); }
};
using Text = std::unique_ptr<char, TextFree>;

/// Calls the handler at each emission of the signal, without its arguments, until the instance
/// ends. What the handler captures must live as long as the instance.
///
///     onSignal(button, "clicked", [this] { addRow(); });
template <class Handler>
gulong onSignal(gpointer instance, const char* signal, Handler handler) {
    auto held = std::make_unique<Handler>(std::move(handler));
    const auto call = +[](Handler* called) { (*called)(); };
    const auto end = +[](gpointer data, GClosure*) {
        const std::unique_ptr<Handler> ended(static_cast<Handler*>(data));
    };
    return g_signal_connect_data(instance, signal, G_CALLBACK(call), held.release(), end,
                                 G_CONNECT_SWAPPED);
}

/// The same with the signal's arguments after the instance, and the handler's answer:
///
///     onSignalWith<double, double>(drag, "drag-update", [this](double x, double y) { ... });
template <class... Arguments, class Handler>
gulong onSignalWith(gpointer instance, const char* signal, Handler handler) {
    using Answer = std::invoke_result_t<Handler, Arguments...>;
    auto held = std::make_unique<Handler>(std::move(handler));
    const auto call = +[](gpointer, Arguments... arguments, gpointer data) -> Answer {
        return (*static_cast<Handler*>(data))(arguments...);
    };
    const auto end = +[](gpointer data, GClosure*) {
        const std::unique_ptr<Handler> ended(static_cast<Handler*>(data));
    };
    return g_signal_connect_data(instance, signal, G_CALLBACK(call), held.release(), end,
                                 GConnectFlags{});
}

/// The name by which a screen reader calls a widget.
inline void setLabel(GtkWidget* widget, const std::string& label) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   label.c_str(), -1);
}

/// The object of that id in a user interface definition; it must be there.
template <class Object>
Object* objectIn(GtkBuilder* builder, const char* id) {
    // The type is checked where the object is used, by the toolkit's own casts.
    return reinterpret_cast<Object*>(gtk_builder_get_object(builder, id));
}

}  // namespace settings
