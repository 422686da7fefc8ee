#include "config/Settings.hpp"
#include "config/WidgetIdentifier.hpp"
#include "shells/common/FileCheck.hpp"
#include "shells/common/NearestName.hpp"
#include "shells/common/Translation.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace shell {
namespace {

constexpr std::string_view skins[] = {"Default iOS", "Cream", "Cream Round", "Metal"};

constexpr const char* colorNames[] = {
    translatableIn("colour", "red"),    translatableIn("colour", "black"),
    translatableIn("colour", "gray"),   translatableIn("colour", "white"),
    translatableIn("colour", "green"),  translatableIn("colour", "blue"),
    translatableIn("colour", "yellow"), translatableIn("colour", "orange"),
    translatableIn("colour", "purple"), translatableIn("colour", "brown")};
constexpr NSInteger white = 3;

std::string takenFor(const char* value) {
    // TRANSLATORS: {value} is a colour, or "true" or "false" as they stand in the file.
    return filled(translated("it is taken for {value}"), {{"value", value}});
}

void checkBoolean(FileCheck& check, const std::string& key, const PropertyValue& value) {
    if (readsAsBoolean(value)) return;
    const char* what = translated("'{key}' is {kind}, and not <true/> or <false/>");
    check.add({filled(what, {{"key", key}, {"kind", kindOf(value)}}),
               takenFor(value.boolValue() ? "true" : "false"),
               {filled(translated("{key} is neither true nor false"), {{"key", key}})},
               {key}});
}

void checkSkin(FileCheck& check, const std::string& key, const PropertyValue& value) {
    const NSString name = value.string();
    if (!name) {
        const char* what = translated("'{key}' is {kind}, and not the name of a skin");
        check.add({filled(what, {{"key", key}, {"kind", kindOf(value)}}),
                   translated("the rows have no skin"),
                   {filled(translated("{key} is no name"), {{"key", key}})},
                   {key}});
        return;
    }
    // Every name that begins with one of these two words selects that skin.
    if (*name == skins[0] || name->starts_with("Cream") || name->starts_with("Metal")) return;
    const auto nearest = nearestName(*name, skins);
    const char* what = nearest ? translated("there is no skin {skin}; did you mean '{suggestion}'?")
                               : translated("there is no skin {skin}");
    check.add({filled(what, {{"skin", quoted(*name)}, {"suggestion", nearest.value_or("")}}),
               // TRANSLATORS: The skins' names are words of the file, and stay as they are.
               translated("the rows have no skin; those that there are: Default iOS, Cream, Cream "
                          "Round, Metal"),
               {filled(translated("no skin {skin}"), {{"skin", quoted(*name, Length::Brief)}})},
               {key}});
}

/// Whether the value, or a text as a whole, is a whole number.
bool isWholeNumber(const PropertyValue& value) {
    const PropertyValue::Storage& storage = value.storage();
    if (const auto* number = std::get_if<double>(&storage)) return std::fmod(*number, 1) == 0;
    if (const NSString text = value.string()) {
        const auto digits = text->find_first_not_of("+-");
        return digits <= 1 && text->find_first_not_of("0123456789", digits) == std::string::npos;
    }
    return std::holds_alternative<std::int64_t>(storage) ||
           std::holds_alternative<std::uint64_t>(storage);
}

void checkColor(FileCheck& check, const std::string& key, const PropertyValue& value) {
    const NSInteger code = value.integerValue();
    const bool isInRange = code >= 0 && code < std::ssize(colorNames);
    if (isWholeNumber(value) && isInRange) return;
    const std::string shown = isWholeNumber(value) ? std::to_string(code) : kindOf(value);
    const char* what = translated("'{key}' is {kind}, and not a colour's code from 0 to 9");
    check.add({filled(what, {{"key", key}, {"kind", shown}}),
               takenFor(translatedIn("colour", colorNames[isInRange ? code : white])),
               {filled(translated("{key} is no code from 0 to 9"), {{"key", key}})},
               {key}});
}

struct Key {
    std::string_view name;
    void (*check)(FileCheck& check, const std::string& key, const PropertyValue& value);
};
constexpr Key settingsKeys[] = {
    {"enableDebugLogging", checkBoolean},  {"bindRingerAndAV", checkBoolean},
    {"displayPercentage", checkBoolean},   {"selectedSkin", checkSkin},
    {"thumbTintColor", checkColor},        {"textColor", checkColor},
    {"minimumTrackTintColor", checkColor}, {"maximumTrackTintColor", checkColor},
};

constexpr auto keyNames = [] {
    std::array<std::string_view, std::size(settingsKeys)> names;
    std::ranges::transform(settingsKeys, names.begin(), &Key::name);
    return names;
}();

}  // namespace

std::vector<FileProblem> problemsOfSettings() {
    // TRANSLATORS: The file of the settings.
    FileCheck check(settingsFilePath(), translated("Settings"));
    const PropertyListFile& file = check.contents();
    if (file.state == PropertyListFile::State::Missing) return {};
    const PropertyValue::Dictionary* settings = file.value.dictionary();
    if (!settings) {
        check.addUnreadable("dict", translated("every setting has its default"),
                            translated("The settings can't be read"));
        return check.finish();
    }
    for (const auto& [name, value] : *settings) {
        const auto* key = std::ranges::find(settingsKeys, name, &Key::name);
        if (key != std::end(settingsKeys))
            key->check(check, name, value);
        else
            check.addUnknownKey({name}, keyNames);
    }
    return check.finish();
}

}  // namespace shell
