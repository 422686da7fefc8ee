#include "shells/panel/Notices.hpp"

#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/foundation/PrintableText.hpp"
#include "platform/uikit/UIView.hpp"
#include "shells/common/Installation.hpp"
#include "shells/common/Translation.hpp"
#include "shells/panel/PanelButtons.hpp"

#include <glib.h>

namespace shell {
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

void addSettingsButton(const std::shared_ptr<UIView>& notice, std::function<void()> openSettings) {
    const CGSize size = notice->frame().size;
    const std::shared_ptr<PlateButton> button = makeSettingsButton();
    button->placeIn({{margin, size.height - margin / 2}, {size.width - 2 * margin, 0}});
    button->addAction(
        notice, UIControlEventTouchUpInside,
        [openSettings = std::move(openSettings)](const auto& /*button*/) { openSettings(); });
    notice->addSubview(button);
    notice->setFrame({{0, 0}, {size.width, CGRectGetMaxY(button->frame()) + margin}});
}

/// The path as users write it: "~/.config/tarnwick".
std::string readableFolder(std::string folder) {
    while (folder.size() > 1 && folder.ends_with('/'))
        folder.pop_back();
    const std::string home = g_get_home_dir();
    const bool inHome = folder.starts_with(home + "/");
    return inHome ? "~" + folder.substr(home.size()) : folder;
}

/// Where to break the line that begins there: at the last blank or before the last wide letter that
/// it has room for; npos if the rest fits or has no such place.
std::size_t endOfLine(const std::string& text, std::size_t start, std::size_t columns) {
    std::size_t width = 0;
    std::size_t last = std::string::npos;
    for (std::size_t at = start; at < text.size();) {
        const DecodedCharacter letter = firstCharacter(std::string_view(text).substr(at));
        const bool isWide = g_unichar_iswide(letter.code) != FALSE;
        // No line begins with the full stop or the comma of a sentence.
        const bool mayBreak = letter.code == U' ' || (isWide && g_unichar_isalpha(letter.code));
        if (mayBreak && at > start && width <= columns) last = at;
        width += isWide ? 2 : 1;
        at += letter.bytes;
    }
    return width > columns ? last : std::string::npos;
}

// Points.
constexpr CGSize ownSize = {280, 50};
constexpr CGFloat textMargin = 20;
constexpr CGFloat textHeight = 18;
constexpr CGFloat textSize = 12;
constexpr CGFloat opacity = 0.6;

}  // namespace

std::string wrapped(const std::string& sentence, std::size_t columns) {
    constexpr int mostBreaks = 2;
    std::string lines = printableLine(sentence);  // Valid UTF-8.
    std::size_t start = 0;
    for (int breaks = 0; breaks < mostBreaks; ++breaks) {
        const std::size_t end = endOfLine(lines, start, columns);
        if (end == std::string::npos) break;
        if (lines[end] == ' ')
            lines[end] = '\n';
        else
            lines.insert(end, 1, '\n');
        start = end + 1;
    }
    return lines;
}

std::shared_ptr<UIView> makeEmptyNotice(CGFloat width, std::function<void()> openSettings) {
    auto notice = std::make_shared<UIView>(CGRectMake(0, 0, width, 2 * margin));
    const UIFont small = UIFont::systemFontOfSize(lineSize);
    // TRANSLATORS: The notice in a mixer without rows: this title, and below it three lines, of
    // which the second is the file's name.
    addLine(*notice, titleHeight, translated("No categories to show"),
            UIFont::systemFontOfSize(titleSize), titleColor);
    addLine(*notice, lineHeight, translated("They are chosen in the file"), small, lineColor);
    addLine(*notice, lineHeight, std::string(applicationId) + ".categories.plist", small,
            lineColor);
    const std::string folder = readableFolder(preferencesDirectory());
    // TRANSLATORS: The third line, behind the file's name.
    addLine(*notice, lineHeight, filled(translated("in {folder}"), {{"folder", folder}}), small,
            lineColor);
    if (openSettings) addSettingsButton(notice, std::move(openSettings));
    return notice;
}

PanelContent panelContent(PanelWidget& widget, const std::function<void()>& openSettings) {
    const CGSize wanted = widget.preferredSize();
    if (!accessibilityElements(widget.view()).empty()) return {widget.view(), wanted};
    const std::shared_ptr<UIView> notice = makeEmptyNotice(wanted.width, openSettings);
    return {notice, notice->frame().size};
}

MissingWidget::MissingWidget(const std::string& name)
    : view_(std::make_shared<UIView>(CGRect{{0, 0}, ownSize})) {
    auto label = std::make_shared<CentredLabel>(CGRectMake(
        textMargin, (ownSize.height - textHeight) / 2, ownSize.width - 2 * textMargin, textHeight));
    label->setText(filled(translated("{name} could not be loaded"), {{"name", name}}));
    label->setFont(UIFont::systemFontOfSize(textSize));
    UIColor color = UILabel::defaultTextColor();
    color.alpha *= opacity;
    label->setTextColor(color);
    view_->addSubview(label);
}

CGSize MissingWidget::preferredSize() {
    return ownSize;
}

}  // namespace shell
