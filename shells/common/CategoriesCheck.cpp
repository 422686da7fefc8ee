#include "config/CategoryList.hpp"
#include "config/WidgetIdentifier.hpp"
#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/foundation/PrintableText.hpp"
#include "shells/common/FileCheck.hpp"
#include "shells/common/NearestName.hpp"
#include "shells/common/Translation.hpp"

#include <algorithm>
#include <array>
#include <filesystem>

namespace shell {
namespace {

using State = PropertyListFile::State;

constexpr std::string_view recordKeys[] = {"categoryName", "prettyCategoryName", "visible"};

constexpr std::string_view schemes[] = {"app:", "role:", "sink:", "source:"};

bool isCategory(std::string_view name) {
    if (std::ranges::find(AudioCategory::all, name) != std::end(AudioCategory::all)) return true;
    return std::ranges::any_of(schemes, [&](std::string_view scheme) {
        return name.size() > scheme.size() && name.starts_with(scheme);
    });
}

/// One entry of the list being checked.
struct Entry {
    FileCheck& check;
    const PropertyValue& value;
    std::string number;  ///< From 0, as a path has it.

    /// The texts may name the key, "{key}", and the kind of its value, "{kind}".
    void add(const char* key, const char* what, const char* instead, const char* brief) const {
        PropertyListPath path{number};
        const PropertyValue entry = value.objectForKey(key);
        if (!entry.isNil()) path.emplace_back(key);
        check.add({filled(what, {{"key", key}, {"kind", kindOf(entry)}}),
                   instead,
                   {filled(brief, {{"key", key}})},
                   std::move(path)});
    }

    void checkText(const char* key, const char* instead) const {
        const PropertyValue text = value.objectForKey(key);
        if (text.string()) return;
        // TRANSLATORS: {key} is a word of the file, such as categoryName.
        if (text.isNil())
            add(key, translated("the entry has no '{key}'"), instead, translated("no {key}"));
        else
            add(key, translated("'{key}' is {kind}, and not a text"), instead,
                translated("{key} is no text"));
    }

    void checkCategory() const {
        const NSString name = value.objectForKey("categoryName").string();
        if (!name || isCategory(*name)) return;
        const auto nearest = nearestName(*name, AudioCategory::all);
        const char* what =
            nearest ? translated("there is no category {category}; did you mean '{suggestion}'?")
                    : translated("there is no category {category}");
        const std::string brief = filled(translated("no category {category}"),
                                         {{"category", quoted(*name, Length::Brief)}});
        check.add(
            {filled(what, {{"category", quoted(*name)}, {"suggestion", nearest.value_or("")}}),
             translated("its row stays unknown"),
             {brief},
             {number, "categoryName"}});
    }

    void checkVisible() const {
        const PropertyValue visible = value.objectForKey("visible");
        if (visible.isNil())
            add("visible", translated("the entry has no '{key}'"), translated("it has no row"),
                translated("no {key}"));
        else if (!readsAsBoolean(visible))
            add("visible", translated("'{key}' is {kind}, and not <true/> or <false/>"),
                visible.boolValue() ? translated("it has a row") : translated("it has no row"),
                translated("{key} is neither true nor false"));
    }

    void checkAll() const {
        const PropertyValue::Dictionary* entries = value.dictionary();
        if (!entries) {
            const char* what = translated("the entry is {kind}, and not a <dict>");
            check.add({filled(what, {{"kind", kindOf(value)}}),
                       translated("it has no row"),
                       {translated("an entry that is no <dict>")},
                       {number}});
            return;
        }
        for (const auto& [key, ignored] : *entries)
            if (std::ranges::find(recordKeys, key) == std::end(recordKeys))
                check.addUnknownKey({number, key}, recordKeys);
        checkText("categoryName", translated("its row stays unknown"));
        checkText("prettyCategoryName", translated("its row has no name"));
        checkCategory();
        checkVisible();
    }
};

/// The last kept file; empty for none.
std::string lastKeptList() {
    std::error_code error;
    const std::filesystem::path list =
        std::filesystem::canonical(resolvedPath(categoryFilePath()), error);
    std::string last;
    for (int number = 1; !error; ++number) {
        const std::string kept = list.string() + ".unreadable-" + std::to_string(number);
        if (!std::filesystem::exists(std::filesystem::symlink_status(kept, error))) break;
        last = kept;
    }
    return last;
}

/// The file's name without what both of the mixer's files begin with.
std::string shortName(const std::string& path) {
    const std::string name = printableLine(std::filesystem::path(path).filename().string());
    const std::string beginning = std::string(WidgetIdentifier) + ".";
    return name.starts_with(beginning) ? "\u2026" + name.substr(beginning.size()) : name;
}

void addReplacement(FileCheck& check) {
    const std::string kept = lastKeptList();
    if (kept.empty()) return;
    const PropertyListFile file = NSPropertyList::fileAt(kept);
    const bool isUnreadable = file.state == State::Unreadable;
    const std::string where = placeText(file.fault.place);
    const char* brief = where.empty() ? translated("Your list can't be read")
                                      : translated("Your list can't be read ({place})");
    FileProblem problem{
        isUnreadable ? file.fault.reason : translated("this list could not be read"),
        translated("it is kept here, and the list that a new user begins with stands in its place "
                   "until that is edited or this file removed"),
        {filled(brief, {{"place", where}}),
         filled(translated("It is kept as {file}"), {{"file", shortName(kept)}})}};
    problem.place = file.fault.place;
    check.add(std::move(problem), kept);
}

}  // namespace

std::vector<FileProblem> problemsOfCategories() {
    const std::string path = categoryFilePath();
    FileCheck check(path, translated("List of rows"));
    const PropertyListFile& file = check.contents();
    const std::string failure = NSPropertyList::writeFailure(path);
    const PropertyValue::Array* list = file.value.array();
    if (list) {
        for (std::size_t i = 0; i < list->size(); ++i)
            Entry{check, (*list)[i], std::to_string(i)}.checkAll();
        if (isInitialCategoryList(file.value)) addReplacement(check);
    } else if (file.state != State::Missing) {
        const char* instead =
            failure.empty()
                ? translated("the list that a new user begins with stands in its place")
                : translated(
                      "the list that a new user begins with stands in its place; the file "
                      "stays as it is, since it cannot be kept: {reason}");
        check.addUnreadable("array", filled(instead, {{"reason", failure}}),
                            translated("Your list can't be read"));
    } else if (!failure.empty()) {
        const char* what = translated("the list cannot be written: {reason}");
        check.add({filled(what, {{"reason", failure}}),
                   translated("it is made anew each time"),
                   {translated("The list can't be written"), failure}});
    }
    return check.finish();
}

}  // namespace shell
