#include "shells/desktop/tray/TrayMenu.hpp"

#include "shells/common/Translation.hpp"

#include <string_view>
#include <utility>

namespace desktop {
namespace {

// The menu's root has the number 0, its entries those from 1 on.
constexpr int rootIdentifier = 0;
constexpr guint32 revision = 1;

constexpr const char* menuDescription = R"xml(<node>
  <interface name="com.canonical.dbusmenu">
    <method name="GetLayout">
      <arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="as" direction="in"/>
      <arg type="u" direction="out"/><arg type="(ia{sv}av)" direction="out"/>
    </method>
    <method name="GetGroupProperties">
      <arg type="ai" direction="in"/><arg type="as" direction="in"/>
      <arg type="a(ia{sv})" direction="out"/>
    </method>
    <method name="GetProperty">
      <arg type="i" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
    </method>
    <method name="Event">
      <arg type="i" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="in"/>
      <arg type="u" direction="in"/>
    </method>
    <method name="EventGroup">
      <arg type="a(isvu)" direction="in"/><arg type="ai" direction="out"/>
    </method>
    <method name="AboutToShow">
      <arg type="i" direction="in"/><arg type="b" direction="out"/>
    </method>
    <method name="AboutToShowGroup">
      <arg type="ai" direction="in"/><arg type="ai" direction="out"/><arg type="ai" direction="out"/>
    </method>
    <property name="Version" type="u" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="TextDirection" type="s" access="read"/>
    <property name="IconThemePath" type="as" access="read"/>
    <signal name="ItemsPropertiesUpdated"><arg type="a(ia{sv})"/><arg type="a(ias)"/></signal>
    <signal name="LayoutUpdated"><arg type="u"/><arg type="i"/></signal>
    <signal name="ItemActivationRequested"><arg type="i"/><arg type="u"/></signal>
  </interface>
</node>)xml";

GVariant* labelled(const std::string& label) {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&builder, "{sv}", "label", g_variant_new_string(label.c_str()));
    return g_variant_builder_end(&builder);
}

/// The properties of the root: it has a submenu.
GVariant* submenu() {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&builder, "{sv}", "children-display", g_variant_new_string("submenu"));
    return g_variant_builder_end(&builder);
}

}  // namespace

TrayMenu::TrayMenu(GDBusConnection* bus, std::vector<Entry> entries, std::function<void()> opened)
    : entries_(std::move(entries)),
      opened_(std::move(opened)),
      object_(
          bus, objectPath, menuDescription,
          [] {
              static const GDBusInterfaceVTable table = {answerCall, property, nullptr, {}};
              return table;
          }(),
          this) {}

GVariant* TrayMenu::layout() const {
    GVariantBuilder children;
    g_variant_builder_init(&children, G_VARIANT_TYPE("av"));
    for (std::size_t i = 0; i < entries_.size(); ++i)
        g_variant_builder_add(&children, "v",
                              g_variant_new("(i@a{sv}av)", static_cast<int>(i) + 1,
                                            labelled(entries_[i].label), nullptr));
    return g_variant_new("(u(i@a{sv}av))", revision, rootIdentifier, submenu(), &children);
}

/// The properties of the named entries; of all entries if none is named.
GVariant* TrayMenu::propertiesOf(GVariant* identifiers) const {
    const gsize asked = g_variant_n_children(identifiers);
    const auto isAsked = [&](int identifier) {
        for (gsize i = 0; i < asked; ++i) {
            int named = 0;
            g_variant_get_child(identifiers, i, "i", &named);
            if (named == identifier) return true;
        }
        return asked == 0;
    };
    GVariantBuilder all;
    g_variant_builder_init(&all, G_VARIANT_TYPE("a(ia{sv})"));
    if (isAsked(rootIdentifier))
        g_variant_builder_add(&all, "(i@a{sv})", rootIdentifier, submenu());
    for (std::size_t i = 0; i < entries_.size(); ++i)
        if (const int identifier = static_cast<int>(i) + 1; isAsked(identifier))
            g_variant_builder_add(&all, "(i@a{sv})", identifier, labelled(entries_[i].label));
    return g_variant_new("(a(ia{sv}))", &all);
}

void TrayMenu::choose(int identifier) const {
    const auto place = static_cast<std::size_t>(identifier) - 1;
    if (identifier <= rootIdentifier || place >= entries_.size()) return;
    const auto chosen = entries_[place].chosen;  // A copy: it may end this.
    chosen();
}

void TrayMenu::chooseAll(GVariant* events) const {
    for (gsize i = 0; i < g_variant_n_children(events); ++i) {
        int identifier = 0;
        const char* kind = nullptr;
        const bus::BusValue event(g_variant_get_child_value(events, i));
        g_variant_get(event.get(), "(i&svu)", &identifier, &kind, nullptr, nullptr);
        if (std::string_view(kind) == "clicked") return choose(identifier);
    }
}

void TrayMenu::answerCall(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                          const char* /*interface*/, const char* name, GVariant* arguments,
                          GDBusMethodInvocation* invocation, gpointer data) {
    const auto& menu = *static_cast<const TrayMenu*>(data);
    const std::string_view method = name;
    const auto answer = [invocation](GVariant* values) {
        g_dbus_method_invocation_return_value(invocation, values);
    };
    if (method == "GetLayout") return answer(menu.layout());
    if (method == "AboutToShow") {
        menu.opened_();
        return answer(g_variant_new("(b)", FALSE));
    }
    if (method == "AboutToShowGroup") {
        menu.opened_();
        return answer(g_variant_new("(aiai)", nullptr, nullptr));
    }
    if (method == "GetGroupProperties") {
        const bus::BusValue identifiers(g_variant_get_child_value(arguments, 0));
        return answer(menu.propertiesOf(identifiers.get()));
    }
    if (method == "Event") {
        int identifier = 0;
        const char* kind = nullptr;
        g_variant_get(arguments, "(i&svu)", &identifier, &kind, nullptr, nullptr);
        const bool isClick = std::string_view(kind) == "clicked";
        answer(nullptr);
        if (isClick) menu.choose(identifier);
        return;
    }
    if (method == "EventGroup") {
        const bus::BusValue events(g_variant_get_child_value(arguments, 0));
        answer(g_variant_new("(ai)", nullptr));
        return menu.chooseAll(events.get());
    }
    g_dbus_method_invocation_return_error_literal(
        invocation, G_DBUS_ERROR, G_DBUS_ERROR_NOT_SUPPORTED, "ask for the properties of a group");
}

GVariant* TrayMenu::property(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                             const char* /*interface*/, const char* name, GError** /*error*/,
                             gpointer /*menu*/) {
    constexpr guint32 protocolVersion = 3;
    const std::string_view property = name;
    if (property == "Version") return g_variant_new_uint32(protocolVersion);
    if (property == "Status") return g_variant_new_string("normal");
    if (property == "TextDirection") {
        const bool fromRight = shell::writingDirection() == shell::WritingDirection::RightToLeft;
        return g_variant_new_string(fromRight ? "rtl" : "ltr");
    }
    return g_variant_new_strv(nullptr, 0);
}

}  // namespace desktop
