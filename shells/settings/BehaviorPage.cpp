#include "shells/settings/BehaviorPage.hpp"

#include "shells/common/Translation.hpp"

#include <filesystem>
#include <utility>

namespace settings {
namespace {

struct VectorEnd {
    void operator()(char** texts) const { g_strfreev(texts); }
};
using Texts = std::unique_ptr<char*, VectorEnd>;

struct SchemaEnd {
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
};

// The phone shell's own list of the pages beside the clock.
constexpr const char* pluginsSchema = "sm.puri.phosh.plugins";
constexpr const char* pluginsKey = "lock-screen";
constexpr const char* ourPlugin = "tarnwick";

Ref<GSettings> lockScreenPlugins() {
    GSettingsSchemaSource* source = g_settings_schema_source_get_default();
    if (!source) return nullptr;
    const std::unique_ptr<GSettingsSchema, SchemaEnd> schema(
        g_settings_schema_source_lookup(source, pluginsSchema, TRUE));
    if (!schema || g_settings_schema_has_key(schema.get(), pluginsKey) == FALSE) return nullptr;
    return Ref<GSettings>(g_settings_new(pluginsSchema));
}

bool hasOurPlugin(GSettings* plugins) {
    const Texts names(g_settings_get_strv(plugins, pluginsKey));
    return g_strv_contains(names.get(), ourPlugin) != FALSE;
}

Trouble setOurPlugin(GSettings* plugins, bool on) {
    const Texts names(g_settings_get_strv(plugins, pluginsKey));
    std::vector<const char*> wanted;
    for (char** name = names.get(); *name; ++name)
        if (std::string_view(*name) != ourPlugin) wanted.push_back(*name);
    if (on) wanted.push_back(ourPlugin);
    wanted.push_back(nullptr);
    if (g_settings_set_strv(plugins, pluginsKey, wanted.data()) != FALSE) return std::nullopt;
    return shell::translated("The desktop does not allow this setting to be changed");
}

}  // namespace

BehaviorPage::BehaviorPage(SettingsFile& settings, CategoriesFile& categories,
                           std::function<void(const std::string& trouble)> tell)
    : settings_(settings), categories_(categories), tell_(std::move(tell)) {
    const Ref<GtkBuilder> builder(
        gtk_builder_new_from_resource("/org/tarnwick/Settings/behavior.ui"));
    page_.reset(ADW_PREFERENCES_PAGE(
        g_object_ref_sink(objectIn<AdwPreferencesPage>(builder.get(), "page"))));
    addSwitch(
        builder.get(), "bind", [this] { return settings_.values().bindRingerAndAVVolumes; },
        [this](bool on) { return settings_.set(SettingsKey::bindRingerAndAV, PropertyValue(on)); });
    addSwitch(
        builder.get(), "logging", [this] { return settings_.values().enableDebugLogging; },
        [this](bool on) {
            return settings_.set(SettingsKey::enableDebugLogging, PropertyValue(on));
        });
    addSwitch(
        builder.get(), "autostart", [this] { return autostart_.isOn(); },
        [this](bool on) {
            return autostart_.set(on ? Autostart::Start::Yes : Autostart::Start::No);
        });
    showLockScreen(builder.get());
    onSignal(objectIn<GObject>(builder.get(), "show-files"), "activated", [this] { showFiles(); });
    addReset(builder.get(), "reset-rows", categories_, shell::translatable("Reset the Rows?"));
    addReset(builder.get(), "reset-settings", settings_,
             shell::translatable("Reset Look and Behavior?"));
    refresh();
}

BehaviorPage::~BehaviorPage() = default;

GtkSwitch* BehaviorPage::addSwitch(GtkBuilder* builder, const char* id,
                                   const std::function<bool()>& isOn,
                                   const std::function<Trouble(bool on)>& set) {
    auto* widget = objectIn<GtkSwitch>(builder, id);
    onSignal(widget, "notify::active", [this, widget, isOn, set] {
        const bool wanted = gtk_switch_get_active(widget) != FALSE;
        if (wanted != isOn()) tellOf(set(wanted));
    });
    switches_.push_back({widget, isOn});
    return widget;
}

void BehaviorPage::showLockScreen(GtkBuilder* builder) {
    plugins_ = lockScreenPlugins();
    gtk_widget_set_visible(objectIn<GtkWidget>(builder, "lock-screen-row"), plugins_ != nullptr);
    if (!plugins_) return;
    addSwitch(
        builder, "lock-screen", [this] { return hasOurPlugin(plugins_.get()); },
        [this](bool on) { return setOurPlugin(plugins_.get(), on); });
    onSignal(plugins_.get(), "changed", [this] { refresh(); });
}

void BehaviorPage::addReset(GtkBuilder* builder, const char* id, MixerFile& file,
                            const char* question) {
    onSignal(objectIn<GObject>(builder, id), "activated", [this, &file, question] {
        GtkRoot* window = gtk_widget_get_root(widget());
        GtkWidget* dialog =
            adw_message_dialog_new(GTK_WINDOW(window), shell::translated(question),
                                   shell::translated("Everything is as for a new user then. The "
                                                     "present file is kept beside the new one."));
        adw_message_dialog_add_responses(ADW_MESSAGE_DIALOG(dialog), "cancel",
                                         shell::translated("_Cancel"), "reset",
                                         shell::translated("_Reset"), nullptr);
        adw_message_dialog_set_response_appearance(ADW_MESSAGE_DIALOG(dialog), "reset",
                                                   ADW_RESPONSE_DESTRUCTIVE);
        onSignalWith<const char*>(dialog, "response", [this, &file](const char* response) {
            if (std::string_view(response) == "reset") tellOf(file.reset());
        });
        gtk_window_present(GTK_WINDOW(dialog));
    });
}

void BehaviorPage::showFiles() {
    const std::string folder = std::filesystem::path(categories_.path()).parent_path().string();
    g_mkdir_with_parents(folder.c_str(), 0700);
    const Text address(g_filename_to_uri(folder.c_str(), nullptr, nullptr));
    gtk_show_uri(GTK_WINDOW(gtk_widget_get_root(widget())), address.get(), GDK_CURRENT_TIME);
}

void BehaviorPage::tellOf(const Trouble& trouble) {
    if (trouble) tell_(*trouble);
    // Not from inside a control's signal, in which it would go on with the value it was denied.
    refreshing_.start(0, [this] { refresh(); });
}

void BehaviorPage::refresh() {
    for (const Switch& each : switches_)
        gtk_switch_set_active(each.widget, each.isOn() ? TRUE : FALSE);
}

}  // namespace settings
