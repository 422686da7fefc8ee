#include "shells/settings/CategoryWords.hpp"

#include "shells/common/Translation.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace settings {
namespace {

struct Own {
    std::string_view category;
    const char* caption;
    const char* words;
    const char* icon;
};

constexpr std::array own{
    Own{"Ringtone", shell::translatable("Ringtone"),
        shell::translatable("Ringtone and event sounds"),
        "preferences-system-notifications-symbolic"},
    Own{"Audio/Video", shell::translatable("Media"), shell::translatable("The output in use"),
        "audio-speakers-symbolic"},
    Own{"HeadphonesBT", shell::translatable("Bluetooth Headphones"),
        shell::translatable("Bluetooth while it plays music"), "audio-headphones-symbolic"},
    Own{"HeadsetBT", shell::translatable("Bluetooth Headset"),
        shell::translatable("Bluetooth during a call"), "audio-headset-symbolic"},
    Own{"PhoneCall", shell::translatable("Calls"), shell::translatable("Phone calls"),
        "call-start-symbolic"},
    Own{"VideoConference", shell::translatable("Video Conferences"),
        shell::translatable("Programs in a conference"), "camera-web-symbolic"},
};

struct Scheme {
    std::string_view prefix;
    const char* words;  ///< With "{name}".
    const char* icon;
};

constexpr std::array schemes{
    Scheme{"app:", shell::translatable("Everything that {name} plays"),
           "multimedia-player-symbolic"},
    Scheme{"role:", shell::translatable("Everything played as {name}"), "folder-music-symbolic"},
    Scheme{"sink:", shell::translatable("The output {name}"), "audio-speakers-symbolic"},
    Scheme{"source:", shell::translatable("The input {name}"), "audio-input-microphone-symbolic"},
};

template <class List>
auto found(const List& list, const auto& matches) -> const typename List::value_type* {
    const auto place = std::ranges::find_if(list, matches);
    return place == list.end() ? nullptr : &*place;
}

const Own* ownCalled(const std::string& category) {
    return found(own, [&](const Own& each) { return each.category == category; });
}

const Scheme* schemeOf(const std::string& category) {
    return found(schemes, [&](const Scheme& each) { return category.starts_with(each.prefix); });
}

}  // namespace

std::string wordsFor(const NSString& category) {
    if (!category) return shell::translated("Nothing: the entry names no category");
    if (const Own* known = ownCalled(*category)) return shell::translated(known->words);
    if (const Scheme* scheme = schemeOf(*category))
        return shell::filled(shell::translated(scheme->words),
                             {{"name", category->substr(scheme->prefix.size())}});
    return *category;
}

std::string captionFor(const std::string& category) {
    if (const Own* known = ownCalled(category)) return shell::translated(known->caption);
    const Scheme* scheme = schemeOf(category);
    return scheme ? category.substr(scheme->prefix.size()) : category;
}

const char* iconFor(const std::string& category) {
    if (const Own* known = ownCalled(category)) return known->icon;
    const Scheme* scheme = schemeOf(category);
    return scheme ? scheme->icon : "audio-volume-high-symbolic";
}

const std::vector<std::string>& ownCategories() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> each;
        each.reserve(own.size());
        for (const Own& known : own)
            each.emplace_back(known.category);
        return each;
    }();
    return names;
}

}  // namespace settings
