#include "backends/pulse/outputs/OutputsJournal.hpp"

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

namespace pulse {
namespace {

using Choice = OutputsJournal::Choice;
using Phase = OutputsJournal::Phase;

constexpr const char* group = "outputs";
constexpr const char* keptGroup = "kept";

template <class Value>
struct Word {
    Value value;
    const char* word;
};
constexpr std::array choices = {
    Word<Choice>{Choice::Undecided, "undecided"}, Word<Choice>{Choice::Declined, "declined"},
    Word<Choice>{Choice::Apart, "apart"}, Word<Choice>{Choice::Shared, "shared"}};
constexpr std::array phases = {
    Word<Phase>{Phase::Down, "down"},           Word<Phase>{Phase::GoingUp, "going-up"},
    Word<Phase>{Phase::Returning, "returning"}, Word<Phase>{Phase::Up, "up"},
    Word<Phase>{Phase::Turning, "turning"},     Word<Phase>{Phase::GoingDown, "going-down"}};

struct KeyFileDeleter {
    void operator()(GKeyFile* file) const { g_key_file_unref(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, KeyFileDeleter>;

std::string textIn(GKeyFile* file, const char* key) {
    gchar* const text = g_key_file_get_string(file, group, key, nullptr);
    std::string result = text ? text : "";
    g_free(text);
    return result;
}

template <class Value, std::size_t count>
Value valueIn(GKeyFile* file, const char* key, const std::array<Word<Value>, count>& words) {
    const std::string text = textIn(file, key);
    const auto* found =
        std::ranges::find_if(words, [&](const auto& each) { return text == each.word; });
    return (found == words.end() ? words.front() : *found).value;
}

template <class Value, std::size_t count>
void put(GKeyFile* file, const char* key, Value value,
         const std::array<Word<Value>, count>& words) {
    g_key_file_set_string(file, group, key,
                          std::ranges::find(words, value, &Word<Value>::value)->word);
}

// A mute as 0 or 1, then each channel in the server's units.
void putLevel(GKeyFile* file, const std::string& name, const ObjectVolume& level) {
    std::array<gint, PA_CHANNELS_MAX + 1> numbers{level.mute == Mute::On ? 1 : 0};
    for (unsigned channel = 0; channel < level.volume.channels; ++channel)
        numbers.at(channel + 1) = static_cast<gint>(level.volume.values[channel]);
    g_key_file_set_integer_list(file, keptGroup, name.c_str(), numbers.data(),
                                level.volume.channels + std::size_t{1});
}

std::optional<ObjectVolume> levelIn(GKeyFile* file, const char* name) {
    gsize count = 0;
    gint* const numbers = g_key_file_get_integer_list(file, keptGroup, name, &count, nullptr);
    const std::unique_ptr<gint, decltype(&g_free)> owner(numbers, g_free);
    if (!numbers || count < 2 || count > PA_CHANNELS_MAX + 1) return std::nullopt;
    ObjectVolume level;
    level.mute = numbers[0] == 0 ? Mute::Off : Mute::On;
    level.volume.channels = static_cast<std::uint8_t>(count - 1);
    for (gsize channel = 1; channel < count; ++channel) {
        if (numbers[channel] < 0) return std::nullopt;
        level.volume.values[channel - 1] =
            std::min(static_cast<pa_volume_t>(numbers[channel]), pa_volume_t{PA_VOLUME_MAX});
    }
    return level;
}

}  // namespace

std::filesystem::path userStateFolder() {
    const char* const state = std::getenv("XDG_STATE_HOME");
    if (state && *state == '/') return state;
    return std::filesystem::path(g_get_home_dir()) / ".local" / "state";
}

OutputsFile::OutputsFile() : path_(userStateFolder() / "tarnwick" / "outputs") {}

OutputsJournal OutputsFile::read() const {
    const KeyFile file(g_key_file_new());
    OutputsJournal journal;
    if (!g_key_file_load_from_file(file.get(), path_.c_str(), G_KEY_FILE_NONE, nullptr))
        return journal;
    journal.choice = valueIn(file.get(), "choice", choices);
    journal.phase = valueIn(file.get(), "phase", phases);
    journal.real = textIn(file.get(), "real");
    gsize count = 0;
    gchar** const names = g_key_file_get_keys(file.get(), keptGroup, &count, nullptr);
    for (gsize i = 0; i < count; ++i)
        if (const auto level = levelIn(file.get(), names[i])) journal.kept[names[i]] = *level;
    g_strfreev(names);
    return journal;
}

NSString OutputsFile::write(const OutputsJournal& journal) const {
    const KeyFile file(g_key_file_new());
    g_key_file_set_comment(file.get(), nullptr, nullptr,
                           " Tarnwick's outputs for roles, and how far the last change got.",
                           nullptr);
    put(file.get(), "choice", journal.choice, choices);
    put(file.get(), "phase", journal.phase, phases);
    g_key_file_set_string(file.get(), group, "real", journal.real.c_str());
    for (const auto& [name, level] : journal.kept)
        putLevel(file.get(), name, level);
    GError* error = nullptr;
    if (g_key_file_save_to_file(file.get(), path_.c_str(), &error)) return std::nullopt;
    const std::string reason = error->message;
    g_error_free(error);
    return reason;
}

FileLock::State OutputsFile::lock() {
    constexpr int ownerOnly = 0700;
    g_mkdir_with_parents(path_.parent_path().c_str(), ownerOnly);
    return lock_.take(path_.string() + ".lock");
}

}  // namespace pulse
