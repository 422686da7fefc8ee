#include "shells/settings/SettingsWindow.hpp"

#include "shells/common/Installation.hpp"
#include "shells/common/Translation.hpp"
#include "shells/settings/AddRowDialog.hpp"
#include "shells/settings/BehaviorPage.hpp"
#include "shells/settings/FileTrouble.hpp"
#include "shells/settings/LookPage.hpp"
#include "shells/settings/RowsPage.hpp"
#include "shells/sound/SoundModule.hpp"

namespace settings {

SettingsWindow::SettingsWindow(GtkApplication* application) {
    const Ref<GtkBuilder> builder(
        gtk_builder_new_from_resource("/org/tarnwick/Settings/window.ui"));
    window_.reset(ADW_APPLICATION_WINDOW(
        g_object_ref(objectIn<AdwApplicationWindow>(builder.get(), "window"))));
    pages_ = objectIn<AdwViewStack>(builder.get(), "pages");
    toasts_ = objectIn<AdwToastOverlay>(builder.get(), "toasts");
    adw_bin_set_child(objectIn<AdwBin>(builder.get(), "preview"), preview_.widget());
    gtk_window_set_application(GTK_WINDOW(window_.get()), application);
    const Ref<GtkBuilder> shortcuts(
        gtk_builder_new_from_resource("/org/tarnwick/Settings/shortcuts.ui"));
    gtk_application_window_set_help_overlay(
        GTK_APPLICATION_WINDOW(window_.get()),
        objectIn<GtkShortcutsWindow>(shortcuts.get(), "help_overlay"));

    rows_ = std::make_unique<RowsPage>(
        categories_, RowsPage::Handlers{
                         .add = [this] { addRow(); },
                         .tell = [this](const std::string& trouble) { tell(trouble); },
                         .offerUndo =
                             [this](const std::string& removed, std::function<void()> undo) {
                                 offerUndo(removed, std::move(undo));
                             },
                     });
    const auto telling = [this](const std::string& trouble) { tell(trouble); };
    for (auto& [file, title] :
         {std::pair<MixerFile&, const char*>{categories_,
                                             shell::translated("The list of rows cannot be read")},
          std::pair<MixerFile&, const char*>{settings_,
                                             shell::translated("The settings cannot be read")}}) {
        troubles_.push_back(std::make_unique<FileTrouble>(file, title, telling));
        gtk_box_append(objectIn<GtkBox>(builder.get(), "troubles"), troubles_.back()->widget());
    }
    look_ = std::make_unique<LookPage>(settings_, preview_, telling);
    behavior_ = std::make_unique<BehaviorPage>(settings_, categories_, telling);
    addPage(rows_->widget(), pageNames[0], shell::translated("Rows"), "view-list-symbolic");
    addPage(look_->widget(), pageNames[1], shell::translated("Look"),
            "applications-graphics-symbolic");
    addPage(behavior_->widget(), pageNames[2], shell::translated("Behavior"),
            "emblem-system-symbolic");

    // Not within an edit, which a control's signal may have made.
    const auto changed = [this](ChangedBy) { refreshing_.start(0, [this] { filesChanged(); }); };
    categories_.setChangedHandler(changed);
    settings_.setChangedHandler(changed);
    onSignal(window_.get(), "notify::default-height", [this] { resized(); });
    const Ref<GSimpleAction> add(g_simple_action_new("add-row", nullptr));
    onSignal(add.get(), "activate", [this] { addRow(); });
    g_action_map_add_action(G_ACTION_MAP(window_.get()), G_ACTION(add.get()));
    resized();
    filesChanged();
    constexpr double untilPaintedSeconds = 0.1;
    opening_.start(untilPaintedSeconds, [this] { openInventory(); });
}

SettingsWindow::~SettingsWindow() {
    gtk_window_destroy(GTK_WINDOW(window_.get()));
}

void SettingsWindow::present() {
    gtk_window_present(GTK_WINDOW(window_.get()));
}

void SettingsWindow::showPage(const std::string& name) {
    adw_view_stack_set_visible_child_name(pages_, name.c_str());
}

void SettingsWindow::addPage(GtkWidget* page, const char* name, const char* title,
                             const char* icon) {
    adw_view_stack_add_titled_with_icon(pages_, page, name, title, icon);
}

void SettingsWindow::filesChanged() {
    for (const auto& trouble : troubles_)
        trouble->refresh();
    gtk_widget_set_sensitive(rows_->widget(), categories_.state().isUsable());
    gtk_widget_set_sensitive(look_->widget(), settings_.state().isUsable());
    rows_->refresh();
    look_->refresh();
    behavior_->refresh();
    preview_.show({.settings = settings_.root(), .categories = categories_.root()});
}

// The pages keep most of the window.
void SettingsWindow::resized() {
    constexpr double share = 0.4;
    int width = 0;
    int height = 0;
    gtk_window_get_default_size(GTK_WINDOW(window_.get()), &width, &height);
    preview_.setTallest(static_cast<int>(height * share));
}

/// Reads what the session's sound server has, which the first picture does not wait for.
void SettingsWindow::openInventory() {
    const std::string module =
        shell::modulePath(shell::soundServerModule, shell::programDirectory());
    auto opened = shell::openSoundInventory(shell::loadInventoryModule(module), std::nullopt);
    if (!opened) return tell(opened.error());
    inventory_ = *std::move(opened);
    rows_->setInventory(inventory_.get());
    inventory_->setChangedHandler([this] { rows_->refresh(); });
}

void SettingsWindow::addRow() {
    showAddRowDialog(GTK_WINDOW(window_.get()), inventory_.get(), categories_.rows(),
                     [this](const RowOffer& offer) {
                         const std::size_t place = categories_.rows().size();
                         if (const Trouble trouble = categories_.add(offer.category, offer.name))
                             return tell(*trouble);
                         rows_->edit(place);
                     });
}

void SettingsWindow::tell(const std::string& trouble) {
    AdwToast* toast = adw_toast_new("");
    adw_toast_set_title(toast, Text(g_markup_escape_text(trouble.c_str(), -1)).get());
    adw_toast_set_priority(toast, ADW_TOAST_PRIORITY_HIGH);
    adw_toast_overlay_add_toast(toasts_, toast);
}

void SettingsWindow::offerUndo(const std::string& removed, std::function<void()> undo) {
    const std::string title =
        shell::filled(shell::translated("“{row}” was removed"), {{"row", removed}});
    AdwToast* toast = adw_toast_new(Text(g_markup_escape_text(title.c_str(), -1)).get());
    adw_toast_set_button_label(toast, shell::translated("_Undo"));
    onSignal(toast, "button-clicked", std::move(undo));
    adw_toast_overlay_add_toast(toasts_, toast);
}

}  // namespace settings
