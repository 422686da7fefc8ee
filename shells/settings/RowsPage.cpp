#include "shells/settings/RowsPage.hpp"

#include "platform/foundation/NSRunLoop.hpp"
#include "shells/common/Translation.hpp"
#include "shells/settings/CategoryWords.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

namespace settings {
namespace {

/// A caption is written when nothing was typed for this many seconds.
constexpr double typingSeconds = 0.4;

GtkWidget* dragHandle() {
    GtkWidget* handle = gtk_image_new_from_icon_name("list-drag-handle-symbolic");
    gtk_widget_add_css_class(handle, "dim-label");
    gtk_widget_set_cursor_from_name(handle, "grab");
    gtk_widget_set_tooltip_text(handle, shell::translated("Drag to another place"));
    return handle;
}

GtkWidget* menuButton() {
    const Ref<GMenu> menu(g_menu_new());
    const Ref<GMenu> moves(g_menu_new());
    g_menu_append(moves.get(), shell::translated("Move _Up"), "row.move-up");
    g_menu_append(moves.get(), shell::translated("Move _Down"), "row.move-down");
    g_menu_append_section(menu.get(), nullptr, G_MENU_MODEL(moves.get()));
    const Ref<GMenu> end(g_menu_new());
    g_menu_append(end.get(), shell::translated("_Remove"), "row.remove");
    g_menu_append_section(menu.get(), nullptr, G_MENU_MODEL(end.get()));

    GtkWidget* button = gtk_menu_button_new();
    gtk_menu_button_set_icon_name(GTK_MENU_BUTTON(button), "view-more-symbolic");
    gtk_menu_button_set_menu_model(GTK_MENU_BUTTON(button), G_MENU_MODEL(menu.get()));
    gtk_widget_set_valign(button, GTK_ALIGN_CENTER);
    gtk_widget_add_css_class(button, "flat");
    gtk_widget_set_tooltip_text(button, shell::translated("More"));
    return button;
}

/// Whether the user has never been asked, who is taken to be asked now. An answer that cannot be
/// kept would be asked for at each start, so then nothing is asked.
bool isAskedForTheFirstTime() {
    const std::filesystem::path asked =
        std::filesystem::path(g_get_user_state_dir()) / "tarnwick" / "row-names-offered";
    std::error_code error;
    if (std::filesystem::exists(asked, error) || error) return false;
    std::filesystem::create_directories(asked.parent_path(), error);
    return std::ofstream(asked).is_open();
}

}  // namespace

/// One row of the list: a handle, the caption under what it moves, a switch and a menu.
class RowsPage::Row {
 public:
    Row(RowsPage& page, std::size_t index) : page_(page), index_(index) {
        adw_entry_row_add_prefix(entry(), handle_);
        adw_entry_row_add_suffix(entry(), visible_);
        adw_entry_row_add_suffix(entry(), menu_);
        adw_preferences_row_set_use_markup(ADW_PREFERENCES_ROW(entry()), FALSE);
        gtk_widget_set_valign(visible_, GTK_ALIGN_CENTER);
        gtk_widget_set_tooltip_text(visible_, shell::translated("Show this row"));
        addActions();
        addKeys();
        addDragging();
        onSignal(entry(), "changed",
                 [this] { typing_.start(typingSeconds, [this] { page_.setCaption(*this); }); });
        onSignal(entry(), "entry-activated", [this] { page_.setCaption(*this); });
        onSignal(visible_, "notify::active", [this] { page_.setVisible(*this); });
        update(page_.shown_[index]);
    }
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;

    AdwEntryRow* entry() const { return ADW_ENTRY_ROW(entry_.get()); }
    std::size_t index() const { return index_; }
    std::string caption() const { return gtk_editable_get_text(GTK_EDITABLE(entry())); }
    bool isSwitchedOn() const { return gtk_switch_get_active(GTK_SWITCH(visible_)) != FALSE; }
    const NSString& category() const { return category_; }
    bool isTyping() const { return typing_.isRunning(); }
    void stopTyping() { typing_.cancel(); }

    /// Shows what the file says of it.
    void update(const CategoryRecord& shown) {
        category_ = shown.categoryName();
        const std::string words = wordsFor(category_);
        adw_preferences_row_set_title(ADW_PREFERENCES_ROW(entry()),
                                      page_.wordsOf(category_).c_str());
        const std::string text = shown.prettyCategoryName().value_or("");
        if (!isTyping() && caption() != text)
            gtk_editable_set_text(GTK_EDITABLE(entry()), text.c_str());
        typing_.cancel();
        gtk_switch_set_active(GTK_SWITCH(visible_), shown.visible() ? TRUE : FALSE);
        setLabel(visible_, shell::filled(shell::translated("Show the row for {category}"),
                                         {{"category", words}}));
        setLabel(menu_,
                 shell::filled(shell::translated("More for {category}"), {{"category", words}}));
    }

 private:
    void addAction(GSimpleActionGroup* group, const char* name, auto act) {
        const Ref<GSimpleAction> action(g_simple_action_new(name, nullptr));
        onSignal(action.get(), "activate", act);
        g_action_map_add_action(G_ACTION_MAP(group), G_ACTION(action.get()));
    }

    void addActions() {
        const Ref<GSimpleActionGroup> group(g_simple_action_group_new());
        addAction(group.get(), "move-up", [this] { page_.moveBy(*this, -1); });
        addAction(group.get(), "move-down", [this] { page_.moveBy(*this, 1); });
        addAction(group.get(), "remove", [this] { page_.remove(index_); });
        gtk_widget_insert_action_group(GTK_WIDGET(entry()), "row", G_ACTION_GROUP(group.get()));
    }

    void addKeys() {
        GtkEventController* keys = gtk_shortcut_controller_new();
        gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
        for (const auto& [key, action] :
             {std::pair{GDK_KEY_Up, "row.move-up"}, std::pair{GDK_KEY_Down, "row.move-down"}})
            gtk_shortcut_controller_add_shortcut(
                GTK_SHORTCUT_CONTROLLER(keys),
                gtk_shortcut_new(gtk_keyval_trigger_new(static_cast<guint>(key), GDK_ALT_MASK),
                                 gtk_named_action_new(action)));
        gtk_widget_add_controller(GTK_WIDGET(entry()), keys);
    }

    void addDragging() {
        GtkDragSource* source = gtk_drag_source_new();
        gtk_drag_source_set_actions(source, GDK_ACTION_MOVE);
        onSignalWith<double, double>(source, "prepare", [this](double, double) {
            GValue value = G_VALUE_INIT;
            g_value_init(&value, G_TYPE_UINT);
            g_value_set_uint(&value, static_cast<guint>(index_));
            GdkContentProvider* content = gdk_content_provider_new_for_value(&value);
            g_value_unset(&value);
            return content;
        });
        onSignal(source, "drag-begin", [this, source] {
            const Ref<GdkPaintable> picture(gtk_widget_paintable_new(GTK_WIDGET(entry())));
            gtk_drag_source_set_icon(source, picture.get(), 0, 0);
        });
        gtk_widget_add_controller(handle_, GTK_EVENT_CONTROLLER(source));

        GtkDropTarget* target = gtk_drop_target_new(G_TYPE_UINT, GDK_ACTION_MOVE);
        onSignalWith<const GValue*, double, double>(
            target, "drop", [this](const GValue* dragged, double, double) {
                page_.move(g_value_get_uint(dragged), index_);
                return gboolean{TRUE};
            });
        gtk_widget_add_controller(GTK_WIDGET(entry()), GTK_EVENT_CONTROLLER(target));
    }

    RowsPage& page_;
    std::size_t index_;
    Ref<GtkWidget> entry_{GTK_WIDGET(g_object_ref_sink(adw_entry_row_new()))};
    GtkWidget* handle_ = dragHandle();
    GtkWidget* visible_ = gtk_switch_new();
    GtkWidget* menu_ = menuButton();
    NSString category_;
    OneShotTimer typing_;
};

RowsPage::RowsPage(CategoriesFile& file, Handlers handlers)
    : file_(file), handlers_(std::move(handlers)) {
    const Ref<GtkBuilder> builder(gtk_builder_new_from_resource("/org/tarnwick/Settings/rows.ui"));
    page_.reset(ADW_PREFERENCES_PAGE(
        g_object_ref_sink(objectIn<AdwPreferencesPage>(builder.get(), "page"))));
    list_ = objectIn<GtkListBox>(builder.get(), "list");
    onSignal(objectIn<GtkButton>(builder.get(), "add"), "clicked", [this] { handlers_.add(); });
    refresh();
    offerNames(builder.get());
}

RowsPage::~RowsPage() = default;

/// The list that a new user begins with has the same names in every language.
void RowsPage::offerNames(GtkBuilder* builder) {
    names_ = objectIn<GtkWidget>(builder, "names");
    if (!isInitialCategoryList(file_.root()) || !isAskedForTheFirstTime()) return;
    std::string names;
    for (const CategoryRecord& row : shown_)
        names += (names.empty() ? "" : " · ") + captionFor(row.categoryName().value_or(""));
    adw_action_row_set_subtitle(objectIn<AdwActionRow>(builder, "new-names"),
                                Text(g_markup_escape_text(names.c_str(), -1)).get());
    onSignal(objectIn<GtkButton>(builder, "use-names"), "clicked", [this] { useNames(); });
    onSignal(objectIn<GtkButton>(builder, "keep-names"), "clicked",
             [this] { gtk_widget_set_visible(names_, FALSE); });
    gtk_widget_set_visible(names_, TRUE);
}

void RowsPage::useNames() {
    gtk_widget_set_visible(names_, FALSE);
    Trouble trouble;
    for (std::size_t i = 0; i < shown_.size() && !trouble; ++i)
        trouble = file_.setCaption(i, captionFor(shown_[i].categoryName().value_or("")));
    tellOf(trouble);
}

bool RowsPage::showsSameRows() const {
    return std::ranges::equal(rows_, shown_,
                              [](const std::unique_ptr<Row>& shown, const CategoryRecord& row) {
                                  return shown->category() == row.categoryName();
                              });
}

void RowsPage::refresh() {
    shown_ = file_.rows();
    if (!showsSameRows()) return rebuild();
    for (const auto& row : rows_)
        row->update(shown_[row->index()]);
    focus();
}

/// Not from inside a control's signal: the control would go on with the value that it was just
/// denied, and its row may have gone.
void RowsPage::refreshSoon() {
    refreshing_.start(0, [this] { refresh(); });
}

void RowsPage::focus() {
    const auto wanted = std::exchange(focused_, std::nullopt);
    if (!wanted || wanted->row >= rows_.size()) return;
    GtkWidget* entry = GTK_WIDGET(rows_[wanted->row]->entry());
    gtk_widget_grab_focus(entry);
    if (wanted->text == FocusedText::Selected)
        gtk_editable_select_region(GTK_EDITABLE(entry), 0, -1);
}

void RowsPage::setInventory(SoundInventory* inventory) {
    inventory_ = inventory;
    refresh();
}

/// What a row moves, and whether that is there now, as far as it is known.
std::string RowsPage::wordsOf(const NSString& category) const {
    const std::string words = wordsFor(category);
    if (!inventory_ || inventory_->state() != SoundInventory::State::Ready) return words;
    if (!inventory_->isThere(category))
        return shell::filled(shell::translated("{category} · not there"), {{"category", words}});
    const NSString moved = inventory_->whatItMoves(category);
    return moved && words.find(*moved) == std::string::npos ? words + " · " + *moved : words;
}

void RowsPage::rebuild() {
    for (const auto& row : rows_)
        gtk_list_box_remove(list_, GTK_WIDGET(row->entry()));
    rows_.clear();
    for (std::size_t i = 0; i < shown_.size(); ++i) {
        rows_.push_back(std::make_unique<Row>(*this, i));
        gtk_list_box_append(list_, GTK_WIDGET(rows_.back()->entry()));
    }
    focus();
}

void RowsPage::edit(std::size_t row) {
    focused_ = {row, FocusedText::Selected};
    refreshSoon();
}

void RowsPage::tellOf(const Trouble& trouble) {
    if (trouble) handlers_.tell(*trouble);
    refreshSoon();
}

void RowsPage::setCaption(Row& row) {
    row.stopTyping();
    if (shown_[row.index()].prettyCategoryName() == row.caption()) return;
    tellOf(file_.setCaption(row.index(), row.caption()));
}

void RowsPage::setVisible(const Row& row) {
    if (shown_[row.index()].visible() == row.isSwitchedOn()) return;
    tellOf(file_.setVisible(row.index(), row.isSwitchedOn()));
}

void RowsPage::moveBy(const Row& row, int places) {
    const auto to = static_cast<std::ptrdiff_t>(row.index()) + places;
    if (to < 0 || to >= std::ssize(rows_)) return;
    move(row.index(), static_cast<std::size_t>(to));
}

void RowsPage::move(std::size_t from, std::size_t to) {
    if (from == to || from >= rows_.size() || to >= rows_.size()) return;
    focused_ = {to, FocusedText::AsItIs};
    tellOf(file_.move(from, to));
}

void RowsPage::remove(std::size_t index) {
    const std::string caption = shown_[index].prettyCategoryName().value_or("");
    auto removed = file_.remove(index);
    if (!removed) return tellOf(removed.error());
    refreshSoon();
    handlers_.offerUndo(caption, [this, row = *std::move(removed)] { tellOf(file_.restore(row)); });
}

}  // namespace settings
