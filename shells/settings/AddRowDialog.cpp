#include "shells/settings/AddRowDialog.hpp"

#include "shells/common/Translation.hpp"
#include "shells/settings/CategoryWords.hpp"

#include <algorithm>
#include <utility>

namespace settings {
namespace {

constexpr const char* offerKey = "tarnwick-offer";

RowOffer offerOf(const std::string& category) {
    return {.category = category,
            .name = captionFor(category),
            .details = wordsFor(category),
            .icon = iconFor(category),
            .group = shell::translated("Kinds of Sound")};
}

const char* groupOf(SoundInventory::Kind kind) {
    switch (kind) {
        case SoundInventory::Kind::Application:
            return shell::translated("Players");
        case SoundInventory::Kind::Output:
            return shell::translated("Outputs");
        case SoundInventory::Kind::Input:
            return shell::translated("Inputs");
        case SoundInventory::Kind::Role:
            return shell::translated("Purposes");
    }
    return nullptr;
}

std::string nameOf(const SoundInventory::Item& item) {
    if (item.category == SoundInventory::followsOutput)
        return shell::translated("The Output in Use");
    if (item.category == SoundInventory::followsInput)
        return shell::translated("The Microphone in Use");
    return item.name;
}

std::string detailsOf(const SoundInventory::Item& item) {
    const bool follows = item.category == SoundInventory::followsOutput ||
                         item.category == SoundInventory::followsInput;
    if (follows) return item.name;
    if (item.kind != SoundInventory::Kind::Application) return {};
    return item.isThereNow ? shell::translated("Plays now")
                           : shell::translated("Has played before");
}

RowOffer offerOf(const SoundInventory::Item& item) {
    return {.category = item.category,
            .name = nameOf(item),
            .details = detailsOf(item),
            .icon = item.iconName.value_or(iconFor(item.category)),
            .group = groupOf(item.kind)};
}

const RowOffer& offerIn(GtkListBoxRow* row) {
    return *static_cast<RowOffer*>(g_object_get_data(G_OBJECT(row), offerKey));
}

void keepOffer(GtkWidget* row, RowOffer offer) {
    g_object_set_data_full(
        G_OBJECT(row), offerKey, std::make_unique<RowOffer>(std::move(offer)).release(),
        [](gpointer data) { const std::unique_ptr<RowOffer> end(static_cast<RowOffer*>(data)); });
}

/// The application's own icon, where the theme has it.
const char* shownIcon(const RowOffer& offer, GtkWidget* row) {
    GtkIconTheme* theme = gtk_icon_theme_get_for_display(gtk_widget_get_display(row));
    const bool isInTheme = gtk_icon_theme_has_icon(theme, offer.icon.c_str()) != FALSE;
    return isInTheme ? offer.icon.c_str() : iconFor(offer.category);
}

GtkWidget* rowFor(const RowOffer& offer) {
    GtkWidget* row = adw_action_row_new();
    adw_preferences_row_set_use_markup(ADW_PREFERENCES_ROW(row), FALSE);
    adw_preferences_row_set_title(ADW_PREFERENCES_ROW(row), offer.name.c_str());
    adw_action_row_set_subtitle(ADW_ACTION_ROW(row),
                                Text(g_markup_escape_text(offer.details.c_str(), -1)).get());
    adw_action_row_set_icon_name(ADW_ACTION_ROW(row), shownIcon(offer, row));
    gtk_list_box_row_set_activatable(GTK_LIST_BOX_ROW(row), TRUE);
    if (offer.isInList) {
        GtkWidget* mark = gtk_image_new_from_icon_name("object-select-symbolic");
        gtk_widget_set_tooltip_text(mark, shell::translated("In the list already"));
        setLabel(mark, shell::translated("In the list already"));
        adw_action_row_add_suffix(ADW_ACTION_ROW(row), mark);
    }
    keepOffer(row, offer);
    return row;
}

/// Without regard to case, in any script.
std::string folded(const std::string& text) {
    const Text lower(g_utf8_casefold(text.c_str(), -1));
    return lower.get();
}

gboolean isSought(GtkListBoxRow* row, gpointer search) {
    const RowOffer& offer = offerIn(row);
    const std::string sought = folded(gtk_editable_get_text(GTK_EDITABLE(search)));
    const auto has = [&](const std::string& text) {
        return folded(text).find(sought) != std::string::npos;
    };
    return has(offer.name) || has(offer.details) || has(offer.category) || has(offer.group);
}

void setHeading(GtkListBoxRow* row, GtkListBoxRow* before, gpointer) {
    const char* group = offerIn(row).group;
    if (before && offerIn(before).group == group) {
        gtk_list_box_row_set_header(row, nullptr);
        return;
    }
    GtkWidget* heading = gtk_label_new(group);
    gtk_label_set_xalign(GTK_LABEL(heading), 0);
    gtk_widget_add_css_class(heading, "heading");
    constexpr int margin = 12;  // points
    gtk_widget_set_margin_start(heading, margin);
    gtk_widget_set_margin_top(heading, margin);
    gtk_widget_set_margin_bottom(heading, margin / 2);
    gtk_list_box_row_set_header(row, heading);
}

/// Of those that the search leaves. Who types fast presses Enter before the list has followed.
void chooseFirst(GtkListBox* list) {
    gtk_list_box_invalidate_filter(list);
    for (int i = 0; GtkListBoxRow* row = gtk_list_box_get_row_at_index(list, i); ++i)
        if (gtk_widget_get_child_visible(GTK_WIDGET(row)) != FALSE)
            return g_signal_emit_by_name(list, "row-activated", row);
}

}  // namespace

std::vector<RowOffer> rowOffers(const SoundInventory* inventory, const CategoryList& rows) {
    std::vector<RowOffer> offers;
    for (const std::string& category : ownCategories())
        offers.push_back(offerOf(category));
    if (inventory)
        for (const SoundInventory::Item& item : inventory->items())
            offers.push_back(offerOf(item));
    for (RowOffer& offer : offers)
        offer.isInList = std::ranges::any_of(
            rows, [&](const CategoryRecord& row) { return row.categoryName() == offer.category; });
    return offers;
}

void showAddRowDialog(GtkWindow* window, const SoundInventory* inventory, const CategoryList& rows,
                      std::function<void(const RowOffer&)> choose) {
    const Ref<GtkBuilder> builder(gtk_builder_new_from_resource("/org/tarnwick/Settings/add.ui"));
    auto* dialog = objectIn<GtkWindow>(builder.get(), "window");
    auto* list = objectIn<GtkListBox>(builder.get(), "list");
    auto* search = objectIn<GtkSearchEntry>(builder.get(), "search");
    for (const RowOffer& offer : rowOffers(inventory, rows))
        gtk_list_box_append(list, rowFor(offer));
    gtk_list_box_set_filter_func(list, isSought, search, nullptr);
    gtk_list_box_set_header_func(list, setHeading, nullptr, nullptr);
    onSignal(search, "search-changed", [list] { gtk_list_box_invalidate_filter(list); });
    onSignal(search, "activate", [list] { chooseFirst(list); });
    gtk_search_entry_set_key_capture_widget(search, GTK_WIDGET(dialog));
    onSignalWith<GtkListBoxRow*>(list, "row-activated",
                                 [dialog, choose = std::move(choose)](GtkListBoxRow* row) {
                                     const RowOffer chosen = offerIn(row);
                                     gtk_window_close(dialog);
                                     choose(chosen);
                                 });
    gtk_window_set_transient_for(dialog, window);
    gtk_window_present(dialog);
}

}  // namespace settings
