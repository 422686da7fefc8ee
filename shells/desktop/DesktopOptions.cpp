#include "shells/desktop/DesktopOptions.hpp"

std::vector<shell::Option> desktopOptions(DesktopOptions& target) {
    std::vector<shell::Option> options = {
        {"--simulate", "", "use a device without sound instead of the sound server",
         [&target](const std::string&) -> std::optional<std::string> {
             target.simulate = true;
             return std::nullopt;
         }},
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
    for (shell::Option& option : shell::commonOptions(target.common))
        options.push_back(std::move(option));
    return options;
}
