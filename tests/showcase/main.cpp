#include "backends/cairo/CairoCanvas.hpp"
#include "tests/support/MixerScene.hpp"

#include <cstdio>

// One picture of what the mixer can look like: its skins, some colours, and both ways to write a
// caption. Every panel shows a real mixer.

namespace {

// Points.
constexpr CGFloat margin = 40;
constexpr CGFloat gap = 24;
constexpr CGFloat narrow = 248;
constexpr CGFloat broad = 2 * narrow + gap;
constexpr CGFloat pictureWidth = 4 * narrow + 3 * gap + 2 * margin;
constexpr CGFloat headingHeight = 26;
constexpr CGFloat headingInset = 20;
constexpr CGFloat sectionGap = 30;
constexpr CGFloat panelRadius = 16;
constexpr double scale = 2;  // pixels a point

constexpr UIColor backdrop = {0.035, 0.035, 0.043, 1};
constexpr UIColor border = {1, 1, 1, 0.09};
constexpr UIColor heading = {1, 1, 1, 0.5};

struct Panel {
    std::string title;
    SceneSettings settings;
    std::optional<NSInteger> held = std::nullopt;  ///< The row with a finger on its thumb.
};

struct Section {
    std::vector<Panel> panels;
    CGFloat panelWidth;
    std::size_t rows;
};

CGFloat panelHeight(const Section& section) {
    return 50 * CGFloat(section.rows) + 20;
}

std::vector<Section> sections() {
    const std::string noPercentages = "<key>displayPercentage</key><false/>";
    return {
        {{{"Default iOS", {}},
          {"Cream Round", {.skin = "Cream Round"}, 2},
          {"Cream", {.skin = "Cream"}, 2},
          {"Metal", {.skin = "Metal"}, 2}},
         narrow,
         5},
        {{{"Yellow on grey", {.minimumTrack = 6, .maximumTrack = 2}},
          {"Green on grey", {.minimumTrack = 4, .maximumTrack = 2}},
          {"White on grey", {.minimumTrack = 3, .maximumTrack = 2}},
          {"Orange on brown", {.thumb = 7, .text = 7, .minimumTrack = 7, .maximumTrack = 9}}},
         narrow,
         2},
        {{{"With percentages", {.minimumTrack = 7, .maximumTrack = 2}},
          {"Without percentages", {.minimumTrack = 7, .maximumTrack = 2, .more = noPercentages}}},
         broad,
         2},
    };
}

CGFloat pictureHeight(const std::vector<Section>& all) {
    CGFloat height = 2 * margin - sectionGap - 8;
    for (const Section& section : all)
        height += headingHeight + panelHeight(section) + sectionGap;
    return height;
}

void paintPanel(Canvas& canvas, const Panel& panel, const CGRect& frame, std::size_t rows) {
    const CGRect title = CGRectMake(frame.origin.x + headingInset, frame.origin.y - headingHeight,
                                    frame.size.width - headingInset, headingHeight - 6);
    canvas.drawText(panel.title, UIFont::systemFontOfSize(11), heading, title,
                    NSTextAlignment::Natural);
    canvas.fillRounded(frame, panelRadius, MixerScene::panelColor);
    canvas.strokeRounded(frame, panelRadius, CGFloat(1 / scale), border);

    std::vector<test::CategoryEntry> categories = MixerScene::fiveCategories();
    categories.resize(rows);
    MixerScene scene(panel.settings, categories, frame.size.width, UIColor::clearColor());
    if (panel.held) scene.holdThumb(*panel.held);
    canvas.save();
    canvas.translate(frame.origin.x, frame.origin.y);
    scene.window()->layoutAndPaint(canvas, scene.window()->bounds());
    canvas.restore();
}

void paintPicture(Canvas& canvas, const std::vector<Section>& all) {
    canvas.fill(CGRectMake(0, 0, pictureWidth, pictureHeight(all)), backdrop);
    CGFloat y = margin - 8;
    for (const Section& section : all) {
        CGFloat x = margin;
        for (const Panel& panel : section.panels) {
            const CGRect frame =
                CGRectMake(x, y + headingHeight, section.panelWidth, panelHeight(section));
            paintPanel(canvas, panel, frame, section.rows);
            x += section.panelWidth + gap;
        }
        y += headingHeight + panelHeight(section) + sectionGap;
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s PICTURE.png\n", argv[0]);
        return 2;
    }
    const std::vector<Section> all = sections();
    const painting::CairoSurface surface(cairo_image_surface_create(
        CAIRO_FORMAT_RGB24, int(pictureWidth * scale), int(pictureHeight(all) * scale)));
    const painting::CairoContext context(cairo_create(surface.get()));
    cairo_scale(context.get(), scale, scale);
    painting::CairoCanvas canvas(context.get(), scale);
    paintPicture(canvas, all);
    if (cairo_surface_write_to_png(surface.get(), argv[1]) == CAIRO_STATUS_SUCCESS) return 0;
    std::fprintf(stderr, "%s cannot be written\n", argv[1]);
    return 1;
}
