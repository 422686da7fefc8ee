#include "shells/desktop/DesktopOptions.hpp"

#include <array>
#include <charconv>
#include <utility>

namespace {

using Taken = std::optional<std::string>;  // What is wrong; nothing when all is well.

Taken takeEdge(DrawerAnchor& anchor, std::string_view name) {
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
    return "the edge is 'top', 'bottom', 'left' or 'right', a corner such as 'top-right'";
}

Taken takeMargin(DrawerAnchor& anchor, const std::string& text) {
    constexpr int widest = 1000;  // points
    int margin = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, margin);
    if (error != std::errc() || stop != end || margin < 0 || margin > widest)
        return "the margin is a number of points from 0 to 1000";
    anchor.margin = margin;
    return std::nullopt;
}

shell::Option flag(std::string_view name, std::string_view help, bool& target) {
    return {name, "", help, [&target](const std::string&) -> Taken {
                target = true;
                return std::nullopt;
            }};
}

/// How the program lives in its session.
std::vector<shell::Option> sessionOptions(DesktopOptions& target) {
    return {
        flag("--background", "begin hidden, and wait to be called", target.background),
        {"--service", "", "begin hidden for a call of the session's bus, which starts it so",
         [&target](const std::string&) -> Taken {
             target.background = target.service = true;
             return std::nullopt;
         }},
        flag("--quit", "end the mixer that runs in this session", target.quit),
        flag("--new-instance", "a mixer of its own beside the one that runs in this session",
             target.newInstance),
        {"--anchor", "EDGE",
         "what the drawer hangs from: top, bottom, left or right, or a corner such as top-right",
         [&target](const std::string& name) { return takeEdge(target.anchor, name); }},
        {"--margin", "POINTS", "the gap between the drawer and the edges",
         [&target](const std::string& text) { return takeMargin(target.anchor, text); }},
    };
}

}  // namespace

std::vector<shell::Option> desktopOptions(DesktopOptions& target) {
    std::vector<shell::Option> options = {
        flag("--simulate", "use a device without sound instead of the sound server",
             target.simulate),
        {"--host", "current|legacy",
         "the kind of host to be: the legacy one knows only taps, and is there on 32 bits alone",
         [&target](const std::string& kind) -> std::optional<std::string> {
             if (kind != "current" && kind != "legacy") return "the host is 'current' or 'legacy'";
             target.host = kind == "legacy" ? HostKind::Legacy : HostKind::Current;
             return std::nullopt;
         }},
        {"--paint", "FILE", "write a picture (PNG) of the widget and leave; needs no display",
         [&target](const std::string& file) -> std::optional<std::string> {
             if (file.empty()) return "the value is empty";
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
