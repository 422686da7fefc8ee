#include "backends/pulse/inventory/SessionManagerState.hpp"

#include "backends/pulse/categories/StreamGroups.hpp"
#include "backends/pulse/outputs/OutputsJournal.hpp"
#include "platform/foundation/FileContents.hpp"

#include <algorithm>
#include <optional>

namespace pulse {
namespace {

/// The name in a line for a stream's output that WirePlumber knows by it; nullopt for other lines.
std::optional<std::string_view> applicationOf(std::string_view line) {
    for (const std::string_view key :
         {"Output/Audio:application.name:", "Output/Audio:application.id:"}) {
        if (!line.starts_with(key)) continue;
        line.remove_prefix(key.size());
        const std::size_t end = line.find('=');  // One in a name is written as "\\e".
        if (end == std::string_view::npos) return std::nullopt;
        const bool isWholeStream = line.substr(end + 1).starts_with('{');
        line = line.substr(0, end);
        if (isWholeStream) return line;
        const std::size_t property = line.rfind(':');
        if (property == std::string_view::npos) return std::nullopt;
        return line.substr(0, property);
    }
    return std::nullopt;
}

/// Without the signs that stand for what a key cannot hold.
std::string unescaped(std::string_view key) {
    std::string text;
    for (std::size_t at = 0; at < key.size(); ++at) {
        if (key[at] != '\\' || at + 1 == key.size()) {
            text += key[at];
            continue;
        }
        switch (key[++at]) {
            case 's':
                text += ' ';
                break;
            case 'e':
                text += '=';
                break;
            case 'o':
                text += '[';
                break;
            case 'c':
                text += ']';
                break;
            default:
                text += key[at];
        }
    }
    return text;
}

}  // namespace

std::vector<std::string> applicationsIn(std::string_view streamState) {
    std::vector<std::string> names;
    while (!streamState.empty()) {
        const std::string_view line = streamState.substr(0, streamState.find('\n'));
        streamState.remove_prefix(std::min(line.size() + 1, streamState.size()));
        const auto key = applicationOf(line);
        if (!key || key->empty()) continue;
        std::string name = unescaped(*key);
        const auto isIt = [&](const std::string& other) { return isSameName(other, name); };
        if (std::ranges::none_of(names, isIt)) names.push_back(std::move(name));
    }
    return names;
}

std::vector<std::string> applicationsThatHavePlayed() {
    constexpr std::size_t mostBytes = 1 << 20;
    for (const char* file : {"stream-properties", "restore-stream"})
        if (const auto state =
                contentsOfFile((userStateFolder() / "wireplumber" / file).string(), mostBytes))
            return applicationsIn(*state);
    return {};
}

}  // namespace pulse
