#include "config/CategoryList.hpp"
#include "config/WidgetIdentifier.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/foundation/PrintableText.hpp"
#include "shells/common/FileCheck.hpp"

#include <algorithm>
#include <array>
#include <filesystem>

namespace shell {
namespace {

using State = PropertyListFile::State;

constexpr std::string_view recordKeys[] = {"categoryName", "prettyCategoryName", "visible"};

constexpr std::string_view categories[] = {"Ringtone",     "Audio/Video", "HeadsetBT",
                                           "HeadphonesBT", "PhoneCall",   "VideoConference"};
constexpr std::string_view schemes[] = {"app:", "role:", "sink:", "source:"};

bool isCategory(std::string_view name) {
    if (std::ranges::find(categories, name) != std::end(categories)) return true;
    return std::ranges::any_of(schemes, [&](std::string_view scheme) {
        return name.size() > scheme.size() && name.starts_with(scheme);
    });
}

/// One entry of the list while it is looked through.
struct Entry {
    FileCheck& check;
    const PropertyValue& value;
    std::string number;  ///< From 0, as a path has it.

    void add(const char* key, const std::string& what, const char* instead,
             const std::string& brief) const {
        PropertyListPath path{number};
        if (!value.objectForKey(key).isNil()) path.emplace_back(key);
        check.add({what, instead, {brief}, std::move(path)});
    }

    void checkText(const char* key, const char* instead) const {
        const PropertyValue text = value.objectForKey(key);
        if (text.string()) return;
        const std::string quotedKey = "'" + std::string(key) + "'";
        if (text.isNil())
            add(key, "the entry has no " + quotedKey, instead, "no " + std::string(key));
        else
            add(key, quotedKey + " is " + kindOf(text) + ", and not a text", instead,
                std::string(key) + " is no text");
    }

    void checkCategory() const {
        const NSString name = value.objectForKey("categoryName").string();
        if (!name || isCategory(*name)) return;
        add("categoryName", "there is no category " + quoted(*name) + suggestion(*name, categories),
            "its row stays unknown", "no category " + quoted(*name, Length::Brief));
    }

    void checkVisible() const {
        const PropertyValue visible = value.objectForKey("visible");
        if (visible.isNil())
            add("visible", "the entry has no 'visible'", "it has no row", "no visible");
        else if (!readsAsBoolean(visible))
            add("visible", "'visible' is " + kindOf(visible) + ", and not <true/> or <false/>",
                visible.boolValue() ? "it has a row" : "it has no row",
                "visible is neither true nor false");
    }

    void checkAll() const {
        const PropertyValue::Dictionary* entries = value.dictionary();
        if (!entries) {
            check.add({"the entry is " + kindOf(value) + ", and not a <dict>",
                       "it has no row",
                       {"an entry that is no <dict>"},
                       {number}});
            return;
        }
        for (const auto& [key, ignored] : *entries)
            if (std::ranges::find(recordKeys, key) == std::end(recordKeys))
                check.addUnknownKey({number, key}, recordKeys);
        checkText("categoryName", "its row stays unknown");
        checkText("prettyCategoryName", "its row has no name");
        checkCategory();
        checkVisible();
    }
};

/// Whether the mixer wrote that, on whatever machine.
bool isInitialList(const PropertyValue& root) {
    const auto isOf = [&](const DeviceKind& device) {
        PropertyValue::Array records;
        for (const CategoryRecord& record : initialCategoryList(device))
            records.push_back(record.value());
        return root == PropertyValue(std::move(records));
    };
    return isOf({}) || isOf({.isIpad = true});
}

/// The file that was kept last; empty for none.
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
    FileProblem problem{isUnreadable ? file.fault.reason : "this list could not be read",
                        "it is kept here, and the list that a new user begins with stands in its "
                        "place until that is edited or this file removed",
                        {"Your list can't be read" + (where.empty() ? "" : " (" + where + ")"),
                         "It is kept as " + shortName(kept)}};
    problem.place = file.fault.place;
    check.add(std::move(problem), kept);
}

}  // namespace

std::vector<FileProblem> problemsOfCategories() {
    const std::string path = categoryFilePath();
    FileCheck check(path, "List of rows");
    const PropertyListFile& file = check.contents();
    const std::string failure = NSPropertyList::writeFailure(path);
    const std::string inItsPlace = "the list that a new user begins with stands in its place";
    const PropertyValue::Array* list = file.value.array();
    if (list) {
        for (std::size_t i = 0; i < list->size(); ++i)
            Entry{check, (*list)[i], std::to_string(i)}.checkAll();
        if (isInitialList(file.value)) addReplacement(check);
    } else if (file.state != State::Missing) {
        const std::string kept =
            failure.empty() ? "" : "; the file stays as it is, since it cannot be kept: " + failure;
        check.addUnreadable("array", inItsPlace + kept, "Your list can't be read");
    } else if (!failure.empty()) {
        check.add({"the list cannot be written: " + failure,
                   "it is made anew each time",
                   {"The list can't be written", failure}});
    }
    return check.finish();
}

}  // namespace shell
