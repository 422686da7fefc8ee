// The least that a settings program on libadwaita can do: a window with a list of five rows, each
// with a text that can be edited and a switch.
#include <adwaita.h>

namespace {

constexpr int rows = 5;
constexpr int width = 560;  // Points, as the settings begin.
constexpr int height = 760;

GtkWidget* rowCalled(const char* title) {
    GtkWidget* row = adw_entry_row_new();
    adw_preferences_row_set_title(ADW_PREFERENCES_ROW(row), title);
    gtk_editable_set_text(GTK_EDITABLE(row), title);
    GtkWidget* shown = gtk_switch_new();
    gtk_widget_set_valign(shown, GTK_ALIGN_CENTER);
    adw_entry_row_add_suffix(ADW_ENTRY_ROW(row), shown);
    return row;
}

void activate(GtkApplication* application, gpointer) {
    GtkWidget* group = adw_preferences_group_new();
    for (int i = 0; i < rows; ++i)
        adw_preferences_group_add(ADW_PREFERENCES_GROUP(group), rowCalled("Volume"));
    GtkWidget* page = adw_preferences_page_new();
    adw_preferences_page_add(ADW_PREFERENCES_PAGE(page), ADW_PREFERENCES_GROUP(group));
    GtkWidget* content = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
    gtk_box_append(GTK_BOX(content), adw_header_bar_new());
    gtk_box_append(GTK_BOX(content), page);
    GtkWidget* window = adw_application_window_new(application);
    gtk_window_set_default_size(GTK_WINDOW(window), width, height);
    adw_application_window_set_content(ADW_APPLICATION_WINDOW(window), content);
    gtk_window_present(GTK_WINDOW(window));
}

}  // namespace

int main(int argc, char* argv[]) {
    AdwApplication* application =
        adw_application_new("org.tarnwick.BareList", G_APPLICATION_NON_UNIQUE);
    g_signal_connect(application, "activate", G_CALLBACK(activate), nullptr);
    const int status = g_application_run(G_APPLICATION(application), argc, argv);
    g_object_unref(application);
    return status;
}
