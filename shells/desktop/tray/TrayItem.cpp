#include "shells/desktop/tray/TrayItem.hpp"

#include "platform/foundation/PrintableText.hpp"
#include "shells/common/Installation.hpp"
#include "shells/desktop/tray/TrayMenu.hpp"

#include <utility>

namespace desktop {
namespace {

constexpr const char* itemIdentifier = "tarnwick";

constexpr const char* itemDescription = R"xml(<node>
  <interface name="org.kde.StatusNotifierItem">
    <property name="Category" type="s" access="read"/>
    <property name="Id" type="s" access="read"/>
    <property name="Title" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="WindowId" type="i" access="read"/>
    <property name="IconName" type="s" access="read"/>
    <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
    <property name="ItemIsMenu" type="b" access="read"/>
    <property name="Menu" type="o" access="read"/>
    <method name="Activate">
      <arg type="i" direction="in"/><arg type="i" direction="in"/>
    </method>
    <method name="SecondaryActivate">
      <arg type="i" direction="in"/><arg type="i" direction="in"/>
    </method>
    <method name="ContextMenu">
      <arg type="i" direction="in"/><arg type="i" direction="in"/>
    </method>
    <method name="Scroll">
      <arg type="i" direction="in"/><arg type="s" direction="in"/>
    </method>
    <signal name="NewTitle"/>
    <signal name="NewIcon"/>
    <signal name="NewToolTip"/>
    <signal name="NewStatus"><arg type="s"/></signal>
  </interface>
</node>)xml";

void act(const TrayItem::Handlers& handlers, std::string_view method, GVariant* arguments) {
    int first = 0;
    g_variant_get_child(arguments, 0, "i", &first);
    if (method == "Activate") {
        int second = 0;
        g_variant_get_child(arguments, 1, "i", &second);
        handlers.activated(first, second);
    } else if (method == "SecondaryActivate") {
        handlers.secondaryActivated();
    } else if (method == "Scroll") {
        const char* orientation = nullptr;
        g_variant_get_child(arguments, 1, "&s", &orientation);
        handlers.scrolled(first, orientation);
    }
    // The host draws the menu by itself, at the place that it tells.
}

}  // namespace

TrayItem::TrayItem(GDBusConnection* bus, Look look, Handlers handlers)
    : look_(std::move(look)),
      handlers_(std::move(handlers)),
      object_(
          bus, objectPath, itemDescription,
          [] {
              static const GDBusInterfaceVTable table = {answerCall, property, nullptr, {}};
              return table;
          }(),
          this) {}

void TrayItem::lookAgain() {
    if (!told_ || pause_.isRunning()) return;
    const double left = toldSeconds_ + pauseSeconds - NSRunLoop::mainRunLoop().currentTime();
    if (left <= 0) return tell();
    pause_.start(left, [this] { tell(); });
}

void TrayItem::tell() {
    const TrayLook before = std::exchange(*told_, look_());
    if (*told_ == before) return;
    toldSeconds_ = NSRunLoop::mainRunLoop().currentTime();
    if (told_->icon != before.icon) object_.emit("NewIcon");
    if (told_->text != before.text) object_.emit("NewToolTip");
}

void TrayItem::setShown(bool shown) {
    if (told_.has_value() == shown) return;
    pause_.cancel();
    if (!shown) return told_.reset();
    told_ = look_();
    object_.emit("NewIcon");
    object_.emit("NewToolTip");
}

void TrayItem::answerCall(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                          const char* /*interface*/, const char* method, GVariant* arguments,
                          GDBusMethodInvocation* invocation, gpointer item) {
    // Copies: what they call may end the item and, with the answer, the arguments.
    const Handlers handlers = static_cast<const TrayItem*>(item)->handlers_;
    const std::string name = method;
    const bus::BusValue values(g_variant_ref(arguments));
    g_dbus_method_invocation_return_value(invocation, nullptr);
    act(handlers, name, values.get());
}

GVariant* TrayItem::property(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                             const char* /*interface*/, const char* name, GError** /*error*/,
                             gpointer data) {
    const std::string_view property = name;
    if (property == "WindowId") return g_variant_new_int32(0);
    if (property == "ItemIsMenu") return g_variant_new_boolean(FALSE);
    if (property == "Menu") return g_variant_new_object_path(TrayMenu::objectPath);
    const TrayLook look = static_cast<const TrayItem*>(data)->shownLook();
    if (property == "ToolTip")
        return g_variant_new("(sa(iiay)ss)", look.icon.c_str(), nullptr,
                             printableLine(look.text).c_str(), "");
    const char* text = property == "Category"   ? "Hardware"
                       : property == "Id"       ? itemIdentifier
                       : property == "Title"    ? shell::applicationName
                       : property == "IconName" ? look.icon.c_str()
                                                : "Active";
    return g_variant_new_string(text);
}

}  // namespace desktop
