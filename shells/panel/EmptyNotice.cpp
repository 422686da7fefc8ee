#include "shells/panel/EmptyNotice.hpp"

#include "platform/foundation/PreferencesDirectory.hpp"
#include "shells/common/ApplicationId.hpp"
#include "shells/panel/CentredLabel.hpp"

#include <glib.h>

namespace {

// Points.
constexpr CGFloat margin = 20;
constexpr CGFloat titleHeight = 22;
constexpr CGFloat lineHeight = 16;
constexpr CGFloat titleSize = 13;
constexpr CGFloat lineSize = 11;

constexpr UIColor titleColor = {1, 1, 1, 0.85};
constexpr UIColor lineColor = {1, 1, 1, 0.55};

void addLine(UIView& notice, CGFloat height, const std::string& text, const UIFont& font,
             const UIColor& color) {
    const CGSize size = notice.frame().size;
    auto label = std::make_shared<CentredLabel>(
        CGRectMake(margin, size.height - margin, size.width - 2 * margin, height));
    label->setText(text);
    label->setFont(font);
    label->setTextColor(color);
    notice.addSubview(label);
    notice.setFrame({{0, 0}, {size.width, size.height + height}});
}

/// As one writes it: "~/.config/tarnwick".
std::string readableFolder(std::string folder) {
    while (folder.size() > 1 && folder.ends_with('/'))
        folder.pop_back();
    const std::string home = g_get_home_dir();
    const bool inHome = folder.starts_with(home + "/");
    return inHome ? "~" + folder.substr(home.size()) : folder;
}

}  // namespace

std::shared_ptr<UIView> makeEmptyNotice(CGFloat width) {
    auto notice = std::make_shared<UIView>(CGRectMake(0, 0, width, 2 * margin));
    const UIFont small = UIFont::systemFontOfSize(lineSize);
    addLine(*notice, titleHeight, "No categories to show", UIFont::systemFontOfSize(titleSize),
            titleColor);
    addLine(*notice, lineHeight, "They are chosen in the file", small, lineColor);
    addLine(*notice, lineHeight, std::string(applicationId) + ".categories.plist", small,
            lineColor);
    addLine(*notice, lineHeight, "in " + readableFolder(preferencesDirectory()), small, lineColor);
    return notice;
}
