#include "shells/settings/MixerPreview.hpp"

#include "backends/cairo/CairoCanvas.hpp"
#include "config/CategoryList.hpp"
#include "config/WidgetIdentifier.hpp"
#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/NSPropertyList.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UIAnimator.hpp"
#include "platform/uikit/UILabel.hpp"
#include "shells/common/Installation.hpp"
#include "shells/common/Translation.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "shells/panel/OpenWidgets.hpp"

#include <cmath>
#include <filesystem>

namespace settings {
namespace {

constexpr CGFloat narrowest = 320;  // points; the width that phones leave to the mixer's parent
constexpr CGFloat longestSide = 16000;

std::unique_ptr<shell::PanelWidget> openMixer() {
    const std::string bundle[] = {shell::bundlePath(shell::programDirectory())};
    auto opened = shell::openWidgets(bundle, shell::HostKind::Current, narrowest);
    for (const std::string& complaint : opened.complaints)
        g_warning("%s", complaint.c_str());
    return std::move(opened.widget);
}

/// Every category of the list can be read, at a volume that shows both sides of its slider.
void nameCategories() {
    const auto device = std::dynamic_pointer_cast<SimulatedAudioDevice>(
        AVSystemController::sharedAVSystemController());
    if (!device) return;
    for (const CategoryRecord& record : presentCategoryList())
        if (record.categoryName()) device->nameCategory(*record.categoryName());
}

void write(const MixerFiles& files) {
    NSPropertyList::writeToFileAtomically(files.settings, settingsFilePath());
    NSPropertyList::writeToFileAtomically(files.categories, categoryFilePath());
}

struct SurfaceEnd {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct BytesEnd {
    void operator()(GBytes* bytes) const { g_bytes_unref(bytes); }
};
struct ContextEnd {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};

/// A picture of a presented mixer.
Ref<GdkTexture> paint(shell::PanelWidget& mixer, int width, int scale) {
    const shell::PanelContent content = shell::panelContent(mixer);
    const auto window = std::make_shared<UIWindow>(CGRect{{0, 0}, content.size});
    window->addSubview(content.view);

    const double pixels = width * scale / static_cast<double>(content.size.width);
    const int height = static_cast<int>(std::ceil(content.size.height * pixels));
    const std::unique_ptr<cairo_surface_t, SurfaceEnd> surface(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width * scale, height));
    {
        const std::unique_ptr<cairo_t, ContextEnd> context(cairo_create(surface.get()));
        cairo_scale(context.get(), pixels, pixels);
        painting::CairoCanvas canvas(context.get(), static_cast<CGFloat>(pixels));
        canvas.fillRounded(window->bounds(), shell::panelRadius, shell::panelColor);
        window->layoutAndPaint(canvas, window->bounds());
    }
    content.view->removeFromSuperview();
    cairo_surface_flush(surface.get());
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    const auto stride = static_cast<gsize>(cairo_image_surface_get_stride(surface.get()));
    const std::unique_ptr<GBytes, BytesEnd> bytes(g_bytes_new(
        cairo_image_surface_get_data(surface.get()), stride * static_cast<gsize>(height)));
    return Ref<GdkTexture>(
        gdk_memory_texture_new(width * scale, height, GDK_MEMORY_DEFAULT, bytes.get(), stride));
}

}  // namespace

MixerPreview::MixerPreview()
    : area_(GTK_WIDGET(g_object_ref_sink(g_object_new(GTK_TYPE_DRAWING_AREA, "accessible-role",
                                                      GTK_ACCESSIBLE_ROLE_IMG, nullptr)))),
      panel_(std::make_shared<shell::PanelView>()),
      content_(std::make_shared<UIWindow>()),
      tallest_(static_cast<int>(longestSide)) {
    AVSystemController::setSharedAVSystemController(std::make_shared<SimulatedAudioDevice>());
    UILabel::setDefaultTextColor(UIColor::whiteColor());
    if (const Text folder{g_dir_make_tmp("tarnwick-settings-XXXXXX", nullptr)})
        folder_ = folder.get();
    setPreferencesDirectory(folder_);
    mixer_ = openMixer();
    content_->addSubview(panel_);
    content_->setDamageHandler([this] { requestFrame(); });
    mixer_->setSizeHandler([this] { layout(); });

    setLabel(area_.get(), shell::translated("Preview of the mixer"));
    gtk_drawing_area_set_draw_func(
        GTK_DRAWING_AREA(area_.get()),
        [](GtkDrawingArea*, cairo_t* context, int width, int height, gpointer self) {
            static_cast<MixerPreview*>(self)->draw(context, width, height);
        },
        this, nullptr);
    takeInput();
}

MixerPreview::~MixerPreview() {
    content_->setDamageHandler({});
    mixer_->setSizeHandler({});
    if (tick_) gtk_widget_remove_tick_callback(area_.get(), tick_);
    gtk_drawing_area_set_draw_func(GTK_DRAWING_AREA(area_.get()), nullptr, nullptr, nullptr);
    mixer_->dismiss();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void MixerPreview::show(const MixerFiles& files) {
    if (mixer_->isPresented() && files == shown_) return;
    shown_ = files;
    assemble();
}

void MixerPreview::setTallest(int height) {
    if (std::exchange(tallest_, height) != height) layout();
}

void MixerPreview::assemble() {
    mixer_->dismiss();
    write(shown_);
    nameCategories();
    mixer_->present();
    layout();
}

void MixerPreview::layout() {
    if (!mixer_->isPresented()) return;
    const shell::PanelContent content = shell::panelContent(*mixer_);
    const CGSize room = {longestSide, static_cast<CGFloat>(tallest_)};
    const shell::PanelLayout layout =
        shell::panelLayout(content.size, room, shell::PanelEdge::Hard);
    panel_->setWidgetView(content.view);
    panel_->setFrame({{0, 0}, layout.window});
    panel_->setLayout(layout, shell::PanelEdge::Hard);
    content_->setFrame({{0, 0}, layout.window});
    gtk_widget_set_size_request(area_.get(), static_cast<int>(layout.window.width),
                                static_cast<int>(layout.window.height));
    requestFrame();
}

void MixerPreview::draw(cairo_t* context, int width, int /*height*/) {
    // The area may be wider than the mixer.
    const double left = std::floor((width - content_->bounds().size.width) / 2);
    cairo_translate(context, left, 0);
    painting::CairoCanvas canvas(context, gtk_widget_get_scale_factor(area_.get()));
    content_->takeDamage();
    content_->layoutAndPaint(canvas, painting::clippedArea(context));
}

void MixerPreview::requestFrame() {
    if (tick_) return;
    tick_ = gtk_widget_add_tick_callback(
        area_.get(),
        [](GtkWidget*, GdkFrameClock*, gpointer self) {
            static_cast<MixerPreview*>(self)->frame();
            return G_SOURCE_REMOVE;
        },
        this, nullptr);
}

void MixerPreview::frame() {
    tick_ = 0;
    UIAnimator& animator = UIAnimator::shared();
    if (animator.isActive()) animator.advance(NSRunLoop::mainRunLoop().currentTime());
    gtk_widget_queue_draw(area_.get());
    if (animator.isActive()) requestFrame();
}

void MixerPreview::takeInput() {
    const auto placeAt = [this](double x, double y) {
        const double left =
            std::floor((gtk_widget_get_width(area_.get()) - content_->bounds().size.width) / 2);
        return CGPoint{static_cast<CGFloat>(x - left), static_cast<CGFloat>(y)};
    };
    GtkGesture* drag = gtk_gesture_drag_new();
    onSignalWith<double, double>(drag, "drag-begin", [this, placeAt](double x, double y) {
        dragStart_ = placeAt(x, y);
        content_->sendTouch(UITouchPhase::Began, dragStart_);
    });
    const auto go = [this](UITouchPhase phase) {
        return [this, phase](double dx, double dy) {
            content_->sendTouch(phase, {dragStart_.x + static_cast<CGFloat>(dx),
                                        dragStart_.y + static_cast<CGFloat>(dy)});
        };
    };
    onSignalWith<double, double>(drag, "drag-update", go(UITouchPhase::Moved));
    onSignalWith<double, double>(drag, "drag-end", go(UITouchPhase::Ended));
    onSignal(drag, "cancel", [this] { content_->cancelTouches(); });
    gtk_widget_add_controller(area_.get(), GTK_EVENT_CONTROLLER(drag));

    GtkEventController* wheel =
        gtk_event_controller_scroll_new(GTK_EVENT_CONTROLLER_SCROLL_VERTICAL);
    GtkEventController* pointer = gtk_event_controller_motion_new();
    onSignalWith<double, double>(pointer, "motion",
                                 [this, placeAt](double x, double y) { pointer_ = placeAt(x, y); });
    onSignalWith<double, double>(wheel, "scroll", [this](double, double down) {
        return gboolean{content_->sendScroll(pointer_, -down)};
    });
    gtk_widget_add_controller(area_.get(), pointer);
    gtk_widget_add_controller(area_.get(), wheel);
}

std::vector<Ref<GdkTexture>> MixerPreview::pictures(std::span<const MixerFiles> each, int width,
                                                    int scale) {
    const auto mixer = openMixer();
    std::vector<Ref<GdkTexture>> painted;
    for (const MixerFiles& files : each) {
        write(files);
        mixer->present();
        painted.push_back(paint(*mixer, width, scale));
        mixer->dismiss();
    }
    write(shown_);  // The preview counts its rows there.
    return painted;
}

}  // namespace settings
