#include "shells/settings/LookPage.hpp"

#include "shells/common/Translation.hpp"
#include "shells/settings/Looks.hpp"

#include <utility>

namespace settings {
namespace {

// Points. The pictures are painted in that width, and shrink where the window is narrow.
constexpr int pictureWidth = 220;
constexpr int smallestPicture = 110;
constexpr int pictureHeight = 48;
constexpr int dotSize = 20;  // points

void drawDot(GtkDrawingArea*, cairo_t* context, int width, int height, gpointer code) {
    const UIColor color = colorForCode(GPOINTER_TO_INT(code));
    constexpr double fullCircle = 2 * G_PI;
    constexpr double rim = 0.35;  // Of black and of white, so that it shows on both.
    cairo_arc(context, width / 2.0, height / 2.0, height / 2.0 - 1, 0, fullCircle);
    cairo_set_source_rgb(context, color.red, color.green, color.blue);
    cairo_fill_preserve(context);
    cairo_set_source_rgba(context, 0.5, 0.5, 0.5, 1 - rim);
    cairo_set_line_width(context, 1);
    cairo_stroke(context);
}

GtkWidget* dotOf(int code) {
    GtkWidget* dot = gtk_drawing_area_new();
    gtk_widget_set_size_request(dot, dotSize, dotSize);
    gtk_widget_set_valign(dot, GTK_ALIGN_CENTER);
    gtk_drawing_area_set_draw_func(GTK_DRAWING_AREA(dot), drawDot, GINT_TO_POINTER(code), nullptr);
    return dot;
}

GtkWidget* dotAndName(int code) {
    GtkWidget* box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 8);
    gtk_box_append(GTK_BOX(box), dotOf(code));
    gtk_box_append(GTK_BOX(box),
                   gtk_label_new(shell::translatedIn(
                       colorContext, palette()[static_cast<std::size_t>(code)].name)));
    return box;
}

MixerFiles filesFor(const PropertyValue& settings, const char* caption) {
    return {.settings = settings, .categories = singleRow(caption)};
}

/// The settings as they are, with another skin.
PropertyValue withSkin(const PropertyValue& root, const char* skin) {
    PropertyValue::Dictionary entries =
        root.dictionary() ? *root.dictionary() : PropertyValue::Dictionary{};
    std::erase_if(entries,
                  [](const auto& entry) { return entry.first == SettingsKey::selectedSkin; });
    entries.emplace_back(SettingsKey::selectedSkin, PropertyValue(skin));
    return PropertyValue(std::move(entries));
}

}  // namespace

/// The row of one colour: its dot and name, and a popover with all of them.
class LookPage::ColorRow {
 public:
    ColorRow(const ColoredPart& part, std::function<void(int code)> choose)
        : part_(part), choose_(std::move(choose)) {
        adw_preferences_row_set_title(ADW_PREFERENCES_ROW(row_), shell::translated(part.name));
        gtk_widget_set_valign(button_, GTK_ALIGN_CENTER);
        gtk_widget_add_css_class(button_, "flat");
        gtk_menu_button_set_popover(GTK_MENU_BUTTON(button_), makePopover());
        adw_action_row_add_suffix(ADW_ACTION_ROW(row_), button_);
        adw_action_row_set_activatable_widget(ADW_ACTION_ROW(row_), button_);
    }

    GtkWidget* widget() const { return row_; }

    void show(const Settings& values) {
        const UIColor& color = values.*part_.color;
        const auto code = static_cast<int>(SettingsFile::codeOf(color));
        if (std::exchange(code_, code) != code)
            gtk_menu_button_set_child(GTK_MENU_BUTTON(button_), dotAndName(code));
        const std::string label = shell::filled(
            shell::translated("{part}: {color}"),
            {{"part", shell::translated(part_.name)},
             {"color",
              shell::translatedIn(colorContext, palette()[static_cast<std::size_t>(code)].name)}});
        setLabel(button_, label);
        const bool isHardToSee =
            takesColors(values.selectedSkin) && contrastOnPanel(color) < leastContrast;
        adw_action_row_set_subtitle(
            ADW_ACTION_ROW(row_),
            isHardToSee ? shell::translated("Hard to see on the dark panel") : "");
        adw_action_row_set_icon_name(ADW_ACTION_ROW(row_),
                                     isHardToSee ? "dialog-warning-symbolic" : nullptr);
    }

 private:
    GtkWidget* makePopover() {
        GtkWidget* grid = gtk_grid_new();
        constexpr int columns = 2;
        for (const NamedColor& each : palette()) {
            GtkWidget* choice = gtk_button_new();
            gtk_button_set_child(GTK_BUTTON(choice), dotAndName(each.code));
            gtk_widget_add_css_class(choice, "flat");
            setLabel(choice, shell::translatedIn(colorContext, each.name));
            onSignal(choice, "clicked", [this, code = each.code] {
                gtk_menu_button_popdown(GTK_MENU_BUTTON(button_));
                choose_(code);
            });
            gtk_grid_attach(GTK_GRID(grid), choice, each.code % columns, each.code / columns, 1, 1);
        }
        GtkWidget* popover = gtk_popover_new();
        gtk_popover_set_child(GTK_POPOVER(popover), grid);
        return popover;
    }

    const ColoredPart& part_;
    std::function<void(int)> choose_;
    GtkWidget* row_ = adw_action_row_new();
    GtkWidget* button_ = gtk_menu_button_new();
    int code_ = -1;
};

LookPage::LookPage(SettingsFile& file, MixerPreview& painter,
                   std::function<void(const std::string& trouble)> tell)
    : file_(file), painter_(painter), tell_(std::move(tell)) {
    const Ref<GtkBuilder> builder(gtk_builder_new_from_resource("/org/tarnwick/Settings/look.ui"));
    page_.reset(ADW_PREFERENCES_PAGE(
        g_object_ref_sink(objectIn<AdwPreferencesPage>(builder.get(), "page"))));
    addLooks(objectIn<GtkFlowBox>(builder.get(), "looks"));
    addSkins(objectIn<GtkFlowBox>(builder.get(), "skins"));
    colors_ = objectIn<AdwPreferencesGroup>(builder.get(), "colors");
    addColors(colors_);
    percentage_ = objectIn<GtkSwitch>(builder.get(), "percentage");
    onSignal(percentage_, "notify::active", [this] {
        const bool wanted = gtk_switch_get_active(percentage_) != FALSE;
        if (wanted != file_.values().displayPercentage)
            set({{SettingsKey::displayPercentage, PropertyValue(wanted)}});
    });
    onSignal(page_.get(), "map", [this] { paintPictures(); });
    refresh();
}

LookPage::~LookPage() = default;

LookPage::Choice LookPage::addChoice(GtkFlowBox* box, GtkWidget* button, const char* name) {
    GtkWidget* picture = gtk_picture_new();
    gtk_widget_set_size_request(picture, smallestPicture, pictureHeight);
    GtkWidget* column = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
    gtk_box_append(GTK_BOX(column), picture);
    gtk_box_append(GTK_BOX(column), gtk_label_new(shell::translated(name)));
    gtk_button_set_child(GTK_BUTTON(button), column);
    setLabel(button, shell::translated(name));
    gtk_flow_box_append(box, button);
    gtk_widget_set_focusable(gtk_widget_get_parent(button), FALSE);
    return {button, GTK_PICTURE(picture)};
}

void LookPage::addLooks(GtkFlowBox* box) {
    for (const Look& look : looksToStartWith()) {
        looks_.push_back(addChoice(box, gtk_button_new(), look.name));
        onSignal(looks_.back().button, "clicked", [this, &look] {
            const PropertyValue entries = settingsOf(look);
            set(*entries.dictionary());
        });
    }
}

void LookPage::addSkins(GtkFlowBox* box) {
    for (const NamedSkin& skin : skins()) {
        GtkWidget* button = gtk_toggle_button_new();
        if (!skins_.empty())
            gtk_toggle_button_set_group(GTK_TOGGLE_BUTTON(button),
                                        GTK_TOGGLE_BUTTON(skins_.front().button));
        skins_.push_back(addChoice(box, button, skin.name));
        onSignal(button, "toggled", [this, button, &skin] {
            if (gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(button)) != FALSE &&
                file_.values().selectedSkin != skin.skin)
                set({{SettingsKey::selectedSkin, PropertyValue(skin.skin)}});
        });
    }
}

void LookPage::addColors(AdwPreferencesGroup* group) {
    for (const ColoredPart& part : coloredParts()) {
        colorRows_.push_back(std::make_unique<ColorRow>(part, [this, &part](int code) {
            set({{part.key, PropertyValue(code)}});
        }));
        adw_preferences_group_add(group, colorRows_.back()->widget());
    }
}

void LookPage::set(const PropertyValue::Dictionary& entries) {
    const Trouble trouble = file_.set(entries);
    if (trouble) tell_(*trouble);
    // Not from inside a control's signal, in which it would go on with the value it was denied.
    refreshing_.start(0, [this] { refresh(); });
}

void LookPage::refresh() {
    const Settings values = file_.values();
    const bool colored = takesColors(values.selectedSkin);
    for (const auto& row : colorRows_) {
        row->show(values);
        gtk_widget_set_sensitive(row->widget(), colored ? TRUE : FALSE);
    }
    adw_preferences_group_set_description(
        colors_, colored ? nullptr : shell::translated("This skin brings its own colors."));
    gtk_switch_set_active(percentage_, values.displayPercentage ? TRUE : FALSE);
    for (std::size_t i = 0; i < skins_.size(); ++i)
        if (values.selectedSkin == skins()[i].skin)
            gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(skins_[i].button), TRUE);
    if (gtk_widget_get_mapped(widget()) != FALSE) paintPictures();
}

void LookPage::paintPictures() {
    std::vector<MixerFiles> wanted;
    for (const Look& look : looksToStartWith())
        wanted.push_back(filesFor(settingsOf(look), shell::translated("Media")));
    for (const NamedSkin& skin : skins())
        wanted.push_back(filesFor(withSkin(file_.root(), skin.skin), shell::translated("Media")));
    if (wanted == painted_) return;
    const auto pictures =
        painter_.pictures(wanted, pictureWidth, gtk_widget_get_scale_factor(widget()));
    painted_ = std::move(wanted);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const Choice& choice = i < looks_.size() ? looks_[i] : skins_[i - looks_.size()];
        gtk_picture_set_paintable(choice.picture, GDK_PAINTABLE(pictures[i].get()));
    }
}

}  // namespace settings
