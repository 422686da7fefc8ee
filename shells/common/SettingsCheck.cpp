#include "config/Settings.hpp"
#include "config/WidgetIdentifier.hpp"
#include "shells/common/FileCheck.hpp"
#include "shells/common/NearestName.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace shell {
namespace {

constexpr std::string_view skins[] = {"Default iOS", "Cream", "Cream Round", "Metal"};

constexpr const char* colorNames[] = {"red",  "black",  "gray",   "white",  "green",
                                      "blue", "yellow", "orange", "purple", "brown"};

void checkBoolean(FileCheck& check, const std::string& key, const PropertyValue& value) {
    if (readsAsBoolean(value)) return;
    check.add({"'" + key + "' is " + kindOf(value) + ", and not <true/> or <false/>",
               std::string("it is taken for ") + (value.boolValue() ? "true" : "false"),
               {key + " is neither true nor false"},
               {key}});
}

void checkSkin(FileCheck& check, const std::string& key, const PropertyValue& value) {
    const NSString name = value.string();
    if (!name) {
        check.add({"'" + key + "' is " + kindOf(value) + ", and not the name of a skin",
                   "the rows have no skin",
                   {key + " is no name"},
                   {key}});
        return;
    }
    // Whatever begins like these two is drawn as they are.
    if (*name == skins[0] || name->starts_with("Cream") || name->starts_with("Metal")) return;
    check.add(
        {"there is no skin " + quoted(*name) + suggestion(*name, skins),
         "the rows have no skin; those that there are: Default iOS, Cream, Cream Round, Metal",
         {"no skin " + quoted(*name, Length::Brief)},
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
    check.add({"'" + key + "' is " + shown + ", and not a colour's code from 0 to 9",
               std::string("it is taken for ") + (isInRange ? colorNames[code] : "white"),
               {key + " is no code from 0 to 9"},
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
    FileCheck check(settingsFilePath(), "Settings");
    const PropertyListFile& file = check.contents();
    if (file.state == PropertyListFile::State::Missing) return {};
    const PropertyValue::Dictionary* settings = file.value.dictionary();
    if (!settings) {
        check.addUnreadable("dict", "every setting has its default", "The settings can't be read");
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
