#include "shells/desktop/DesktopOptions.hpp"

#include "shells/common/Translation.hpp"

#include <array>
#include <charconv>
#include <utility>

namespace desktop {
namespace {

using shell::Problem;
using shell::translatable;
using shell::translated;

Problem takeEdge(DrawerAnchor& anchor, std::string_view name) {
    constexpr std::array<std::pair<std::string_view, ScreenEdge>, 8> edges = {{
        {"top", ScreenEdge::Top},
        {"bottom", ScreenEdge::Bottom},
        {"left", ScreenEdge::Left},
        {"right", ScreenEdge::Right},
        {"top-left", ScreenEdge::TopLeft},
        {"top-right", ScreenEdge::TopRight},
        {"bottom-left", ScreenEdge::BottomLeft},
        {"bottom-right", ScreenEdge::BottomRight},
    }};
    for (const auto& [known, edge] : edges)
        if (known == name) {
            anchor.edge = edge;
            return std::nullopt;
        }
    return translated(
        "the edge is 'top', 'bottom', 'left' or 'right', a corner such as 'top-right'");
}

Problem takeMargin(DrawerAnchor& anchor, const std::string& text) {
    constexpr int widest = 1000;  // points
    int margin = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, margin);
    if (error != std::errc() || stop != end || margin < 0 || margin > widest)
        return translated("the margin is a number of points from 0 to 1000");
    anchor.margin = margin;
    return std::nullopt;
}

shell::Option flag(std::string_view name, const char* help, bool& target) {
    return {name, "", help, [&target](const std::string&) -> Problem {
                target = true;
                return std::nullopt;
            }};
}

/// The options for the program's part in its session.
std::vector<shell::Option> sessionOptions(DesktopOptions& target) {
    return {
        flag("--background", translatable("start hidden, and wait to be called"),
             target.background),
        {"--service", "",
         translatable("start hidden; used by the session bus, which calls the mixer next"),
         [&target](const std::string&) -> Problem {
             target.background = target.service = true;
             return std::nullopt;
         }},
        flag("--quit", translatable("end the mixer that runs in this session"), target.quit),
        flag("--settings", translatable("open the settings of the mixer instead of the mixer"),
             target.settings),
        flag("--new-instance",
             translatable("run beside the mixer that already runs in this session"),
             target.newInstance),
        {"--anchor", "EDGE",
         translatable("what the drawer hangs from: top, bottom, left or right, or a corner such as "
                      "top-right"),
         [&target](const std::string& name) { return takeEdge(target.anchor, name); }},
        {"--margin", "POINTS", translatable("the gap between the drawer and the edges"),
         [&target](const std::string& text) { return takeMargin(target.anchor, text); }},
    };
}

}  // namespace

std::vector<shell::Option> desktopOptions(DesktopOptions& target) {
    std::vector<shell::Option> options = {
        flag("--simulate", translatable("use a device without sound instead of the sound server"),
             target.simulate),
        {"--host", "current|legacy",
         translatable("the kind of host: the legacy one delivers only taps, and exists in 32-bit "
                      "builds only"),
         [&target](const std::string& kind) -> Problem {
             if (kind != "current" && kind != "legacy")
                 return translated("the host is 'current' or 'legacy'");
             target.host = kind == "legacy" ? shell::HostKind::Legacy : shell::HostKind::Current;
             return std::nullopt;
         }},
        {"--paint", "FILE",
         translatable("write a picture (PNG) of the widget and leave; needs no display"),
         [&target](const std::string& file) -> Problem {
             if (file.empty()) return translated("the value is empty");
             target.paint = file;
             return std::nullopt;
         }},
    };
    for (shell::Option& option : sessionOptions(target))
        options.push_back(std::move(option));
    for (shell::Option& option : shell::commonOptions(target.common))
        options.push_back(std::move(option));
    return options;
}

}  // namespace desktop
