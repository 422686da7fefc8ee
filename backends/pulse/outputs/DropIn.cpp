#include "backends/pulse/outputs/DropIn.hpp"

#include "backends/pulse/outputs/RoleSinks.hpp"

#include <glib.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <system_error>

namespace pulse {
namespace {

constexpr const char* mark = "# Written by Tarnwick: \"tarnwickctl outputs off\" removes it.";

std::string inQuotes(const std::string& text) {
    return "\"" + text + "\"";
}

/// WirePlumber reads an array from 0.5 on, and words separated by blanks before.
std::string intendedRoles(const RoleSink& sink, const ServerMirror& mirror) {
    const bool isArray = mirror.readsRolesAsArray();
    std::string text;
    for (const std::string& role : sink.intendedRoles())
        text += (text.empty() ? "" : " ") + (isArray ? inQuotes(role) : role);
    return isArray ? "[ " + text + " ]" : inQuotes(text);
}

std::string moduleText(const RoleSink& sink, const ServerMirror& mirror) {
    const std::string role(sink.role);
    return "  { name = libpipewire-module-loopback\n"
           "    args = {\n"
           "      node.description = " +
           inQuotes(std::string(sink.description)) +
           "\n"
           "      audio.position = [ FL FR ]\n"
           "      node.link-group = " +
           roleSinkLinkGroup +
           "\n"
           "      capture.props = {\n"
           "        node.name = " +
           inQuotes(sink.name()) +
           "\n"
           "        media.class = Audio/Sink\n"
           "        device.intended-roles = " +
           intendedRoles(sink, mirror) +
           "\n"
           "        device.icon-name = audio-speakers\n"
           "        priority.session = 1\n"
           "        policy.role-based.priority = " +
           std::to_string(sink.priority) +
           "\n"
           "        node.virtual = true\n"
           "        " +
           ourOutputProperty +
           " = true\n"
           "      }\n"
           "      playback.props = {\n"
           "        node.name = " +
           inQuotes("output.loopback.sink.role." + role) +
           "\n"
           "        media.role = Loopback\n"
           "        node.passive = true\n"
           "      }\n"
           "    }\n"
           "  }\n";
}

std::filesystem::path configurationFolder() {
    const char* const folder = std::getenv("XDG_CONFIG_HOME");
    if (folder && *folder == '/') return folder;
    return std::filesystem::path(g_get_home_dir()) / ".config";
}

bool isAnythingAt(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

NSString notOurs() {
    return dropInPath().string() + " was not written by Tarnwick and is left as it is";
}

}  // namespace

std::filesystem::path dropInPath() {
    return configurationFolder() / "pipewire" / "pipewire.conf.d" / "50-tarnwick-role-outputs.conf";
}

std::string dropInText(const ServerMirror& mirror) {
    std::string text = std::string(mark) +
                       "\n"
                       "# An output for each kind of sound, in front of the real one.\n"
                       "context.modules = [\n";
    for (const RoleSink& sink : roleSinks)
        text += moduleText(sink, mirror);
    return text + "]\n";
}

bool hasDropIn() {
    std::error_code ignored;
    const std::filesystem::file_status status =
        std::filesystem::symlink_status(dropInPath(), ignored);
    if (!std::filesystem::is_regular_file(status)) return false;
    std::ifstream file(dropInPath());
    std::string first(std::strlen(mark), '\0');
    file.read(first.data(), static_cast<std::streamsize>(first.size()));
    return file && first == mark;
}

NSString installDropIn(const ServerMirror& mirror) {
    const std::filesystem::path path = dropInPath();
    if (isAnythingAt(path) && !hasDropIn()) return notOurs();
    constexpr int forEverybody = 0755;
    if (g_mkdir_with_parents(path.parent_path().c_str(), forEverybody) != 0)
        return path.parent_path().string() + " cannot be made: " + std::strerror(errno);
    const std::string text = dropInText(mirror);
    GError* error = nullptr;
    if (g_file_set_contents(path.c_str(), text.data(), static_cast<gssize>(text.size()), &error))
        return std::nullopt;
    const std::string reason = error->message;
    g_error_free(error);
    return reason;
}

NSString removeDropIn() {
    if (!hasDropIn()) return std::nullopt;
    std::error_code error;
    std::filesystem::remove(dropInPath(), error);
    if (!error) return std::nullopt;
    return dropInPath().string() + " cannot be removed: " + error.message();
}

}  // namespace pulse
