#include "shells/settings/files/Autostart.hpp"

#include "platform/foundation/FileContents.hpp"
#include "shells/common/Translation.hpp"

#include <glib.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace settings {
namespace {

namespace fs = std::filesystem;

constexpr const char* fileName = "org.tarnwick.mixer-autostart.desktop";
constexpr const char* unitName = "tarnwick.service";
constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;
constexpr const char* hidden = G_KEY_FILE_DESKTOP_KEY_HIDDEN;
constexpr const char* exec = G_KEY_FILE_DESKTOP_KEY_EXEC;
constexpr const char* enabled = "X-GNOME-Autostart-enabled";
constexpr std::size_t mostBytes = std::size_t{1024} * 1024;

/// For a mixer that was installed without the system's file.
constexpr const char* ownEntry =
    "[Desktop Entry]\nType=Application\nName=Tarnwick\nExec=tarnwick --background\n"
    "Icon=org.tarnwick.mixer\nTerminal=false\nStartupNotify=false\n";

struct FreedByGLib {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(gchar* text) const { g_free(text); }
    void operator()(gchar** texts) const { g_strfreev(texts); }
};
template <class Type>
using Owned = std::unique_ptr<Type, FreedByGLib>;

/// A desktop entry, of which single lines are changed and all else stays byte for byte. GLib reads
/// it; what GLib writes has other blank lines.
class DesktopEntry {
 public:
    static Result<DesktopEntry> parsed(std::string text) {
        DesktopEntry entry;
        GError* failure = nullptr;
        g_key_file_load_from_data(entry.keys_.get(), text.data(), text.size(),
                                  G_KEY_FILE_KEEP_TRANSLATIONS, &failure);
        const Owned<GError> error(failure);
        if (error) return Failure{std::string(error->message)};
        entry.text_ = std::move(text);
        return entry;
    }

    static Result<DesktopEntry> at(const fs::path& file) {
        std::error_code error;
        auto text = contentsOfFile(file, mostBytes, &error);
        if (!text) return Failure{error.message()};
        return parsed(*std::move(text));
    }

    bool isOn() const { return !isTrue(hidden) && !isFalse(enabled) && has(exec); }
    bool has(const char* key) const {
        return g_key_file_has_key(keys_.get(), group, key, nullptr) != FALSE;
    }
    const std::string& text() const { return text_; }

    void switchOff() { putLine(hidden, "Hidden=true\n"); }
    void switchOn() {
        putLine(hidden, "");
        if (isFalse(enabled)) putLine(enabled, std::string(enabled) + "=true\n");
    }

    /// Takes the keys that it lacks from another entry.
    void complete(const DesktopEntry& other) {
        const Owned<gchar*> keys(g_key_file_get_keys(other.keys_.get(), group, nullptr, nullptr));
        for (gchar** key = keys.get(); key && *key; ++key) {
            const Owned<gchar> value(g_key_file_get_value(other.keys_.get(), group, *key, nullptr));
            if (!has(*key) && value && std::string_view(*key) != hidden)
                putLine(*key, std::string(*key) + "=" + value.get() + "\n");
        }
    }

 private:
    DesktopEntry() : keys_(g_key_file_new()) {}

    /// False for a key that is missing, or neither true nor false.
    bool isTrue(const char* key) const {
        return g_key_file_get_boolean(keys_.get(), group, key, nullptr) != FALSE;
    }
    bool isFalse(const char* key) const { return has(key) && !isTrue(key); }

    /// Puts a line in the place of the key's last one, or behind the group's last entry; an empty
    /// one takes all of the key's away.
    void putLine(std::string_view key, const std::string& line) {
        std::vector<std::string> lines = linesOf(text_);
        const auto isHeader = [](const std::string& each) { return each.starts_with('['); };
        const auto isOfKey = [&](const std::string& each) { return keyOf(each) == key; };
        const std::string header = "[" + std::string(group) + "]";
        auto first = std::ranges::find_if(
            lines, [&](const std::string& each) { return each.starts_with(header); });
        if (first == lines.end()) first = lines.insert(first, header + "\n");
        auto last = std::find_if(first + 1, lines.end(), isHeader);
        if (line.empty()) {
            lines.erase(std::remove_if(first, last, isOfKey), last);
        } else {
            while (last - 1 != first && keyOf(*(last - 1)).empty())
                --last;
            const auto known = std::find_if(std::make_reverse_iterator(last),
                                            std::make_reverse_iterator(first), isOfKey);
            if (known != std::make_reverse_iterator(first))
                *known = line;
            else
                lines.insert(last, line);
        }
        text_.clear();
        for (const std::string& each : lines)
            text_ += each;
    }

    /// Each with its line end, also the last one.
    static std::vector<std::string> linesOf(std::string_view text) {
        std::vector<std::string> lines;
        while (!text.empty()) {
            const std::size_t size = std::min(text.find('\n'), text.size());
            lines.push_back(std::string(text.substr(0, size)) + "\n");
            text.remove_prefix(std::min(size + 1, text.size()));
        }
        return lines;
    }

    /// Empty for a line that is no entry.
    static std::string_view keyOf(std::string_view line) {
        if (line.starts_with('#') || line.find('=') == std::string_view::npos) return {};
        line = line.substr(0, line.find('='));
        return line.substr(0, line.find_last_not_of(" \t") + 1);
    }

    Owned<GKeyFile> keys_;  ///< As it was read.
    std::string text_;
};

Result<DesktopEntry> installedEntry(const fs::path& file) {
    return file.empty() ? DesktopEntry::parsed(ownEntry) : DesktopEntry::at(file);
}

/// `sentence` has a place for the reason.
Trouble failed(const char* sentence, const std::error_code& error) {
    if (!error) return std::nullopt;
    return shell::filled(sentence, {{"reason", error.message()}});
}

bool isThere(const fs::path& path) {
    std::error_code ignored;
    return !path.empty() && fs::exists(path, ignored);
}

}  // namespace

Autostart::Folders Autostart::folders() {
    Folders folders{g_get_user_config_dir(), {}};
    for (const gchar* const* folder = g_get_system_config_dirs(); *folder; ++folder)
        folders.system.emplace_back(*folder);
    if (isThere("/run/systemd/system"))
        folders.units = {"/etc/systemd/user", "/usr/local/lib/systemd/user",
                         "/usr/lib/systemd/user", "/lib/systemd/user"};
    return folders;
}

fs::path Autostart::userFile() const {
    return folders_.user / "autostart" / fileName;
}

/// Empty for none.
fs::path Autostart::systemFile() const {
    for (const fs::path& folder : folders_.system)
        if (const fs::path file = folder / "autostart" / fileName; isThere(file)) return file;
    return {};
}

fs::path Autostart::mask() const {
    return folders_.user / "systemd" / "user" / unitName;
}

bool Autostart::hasUnit() const {
    for (const fs::path& folder : folders_.units)
        if (isThere(folder / unitName)) return true;
    return false;
}

bool Autostart::isMasked() const {
    std::error_code error;
    return fs::read_symlink(mask(), error) == "/dev/null";
}

bool Autostart::isOn() const {
    if (hasUnit() && isMasked()) return false;
    const fs::path file = isThere(userFile()) ? userFile() : systemFile();
    if (file.empty()) return hasUnit();
    const auto entry = DesktopEntry::at(file);
    return entry && entry->isOn();
}

Trouble Autostart::set(Start start) const {
    if (const Trouble trouble = setInFile(start)) return trouble;
    return hasUnit() ? setMask(start) : std::nullopt;
}

Trouble Autostart::setInFile(Start start) const {
    const fs::path system = systemFile();
    const bool hasOwn = isThere(userFile());
    if (!hasOwn && system.empty() && (start == Start::No || hasUnit())) return std::nullopt;
    const auto given = installedEntry(system);
    auto entry = hasOwn ? DesktopEntry::at(userFile()) : installedEntry(system);
    if (!entry)
        return shell::filled(shell::translated("The autostart file cannot be read: {reason}"),
                             {{"reason", entry.error()}});
    const bool isFileThere = hasOwn || !system.empty();
    if (isFileThere && entry->isOn() == (start == Start::Yes)) return std::nullopt;
    if (start == Start::No)
        entry->switchOff();
    else
        entry->switchOn();
    // Without a command it was there to hide the system's entry only.
    if (hasOwn && !entry->has(exec) && given) entry->complete(*given);

    const char* const sentence =
        shell::translated("The autostart file cannot be written: {reason}");
    std::error_code error;
    // An entry like the system's needs no file: updates of that one count again.
    if (hasOwn && !system.empty() && given && entry->text() == given->text()) {
        fs::remove(userFile(), error);
        return failed(sentence, error);
    }
    return failed(sentence, writeFileAtomically(userFile(), entry->text()));
}

Trouble Autostart::setMask(Start start) const {
    std::error_code error;
    if (start == Start::Yes) {
        if (isMasked()) fs::remove(mask(), error);
        return failed(shell::translated("The mixer's unit cannot be switched on: {reason}"), error);
    }
    if (isMasked()) return std::nullopt;
    makeFoldersAbove(mask());
    fs::create_symlink("/dev/null", mask(), error);
    return failed(shell::translated("The mixer's unit cannot be switched off: {reason}"), error);
}

}  // namespace settings
