#include "shells/common/FileCheck.hpp"

#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/foundation/PrintableText.hpp"
#include "shells/common/NearestName.hpp"

#include <algorithm>
#include <array>

namespace shell {
namespace {

// More are those of a file that is something else altogether.
constexpr std::size_t mostTold = 50;

}  // namespace

FileCheck::FileCheck(const std::string& path, std::string name)
    : path_(path), name_(std::move(name)), contents_(NSPropertyList::fileAt(path)) {}

void FileCheck::add(FileProblem problem, const std::string& file) {
    if (problems_.size() == mostTold) {
        ++untold_;
        return;
    }
    problem.file = file.empty() ? resolvedPath(path_) : file;
    problems_.push_back(std::move(problem));
}

void FileCheck::addUnknownKey(const PropertyListPath& path,
                              std::span<const std::string_view> known) {
    const std::string& key = path.back();
    add({"there is no key " + quoted(key) + suggestion(key, known),
         "it is passed over",
         {"no key " + quoted(key, Length::Brief)},
         path});
}

void FileCheck::addUnreadable(const std::string& root, const std::string& instead,
                              const std::string& brief) {
    const bool isReadable = contents_.state == PropertyListFile::State::Readable;
    const TextPlace& place = contents_.fault.place;
    const std::string where = placeText(place);
    FileProblem problem{isReadable ? "the root is no <" + root + ">" : contents_.fault.reason,
                        instead,
                        {brief + (where.empty() ? "" : ": " + where)}};
    problem.place = place;
    add(std::move(problem));
}

std::vector<FileProblem> FileCheck::finish() {
    std::vector<PropertyListPath> paths;
    for (const FileProblem& problem : problems_)
        if (!problem.path.empty()) paths.push_back(problem.path);
    const auto places =
        paths.empty() ? std::vector<TextPlace>() : NSPropertyList::placesInFile(path_, paths);
    auto place = places.begin();
    for (FileProblem& problem : problems_) {
        if (problem.path.empty()) continue;
        problem.place = *place++;
        const std::string line =
            problem.place.line > 0 ? ", line " + std::to_string(problem.place.line) : "";
        problem.brief.front() = name_ + line + ": " + problem.brief.front();
    }
    const auto orderOf = [](const FileProblem& problem) {
        return std::pair(problem.place.line, problem.place.column);
    };
    std::stable_sort(problems_.begin(), problems_.end(), [&](const auto& one, const auto& other) {
        return orderOf(one) < orderOf(other);
    });
    if (untold_ > 0) {
        const std::string count = std::to_string(untold_) + " more";
        const PropertyListPath behind = problems_.back().path;
        problems_.push_back({count, "they are not listed", {name_ + ": " + count}, behind});
        problems_.back().file = resolvedPath(path_);
    }
    return std::move(problems_);
}

std::string placeText(const TextPlace& place) {
    if (place.line == 0) return "";
    return "line " + std::to_string(place.line) + ", column " + std::to_string(place.column);
}

std::string kindOf(const PropertyValue& value) {
    constexpr std::array<const char*, 10> kinds = {
        "nothing", "a boolean", "a number", "a number", "a number",
        "a text",  "a date",    "data",     "an array", "a dictionary"};
    static_assert(kinds.size() == std::variant_size_v<PropertyValue::Storage>);
    const NSString text = value.string();
    return text ? "the text " + quoted(*text) : kinds[value.storage().index()];
}

bool readsAsBoolean(const PropertyValue& value) {
    constexpr std::size_t lastNumber = 4;
    if (const NSString text = value.string()) {
        constexpr std::string_view words[] = {"yes", "true",  "y", "t", "1",
                                              "no",  "false", "n", "f", "0"};
        std::string word;
        std::ranges::transform(*text, std::back_inserter(word), [](char letter) {
            return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
        });
        return std::ranges::find(words, word) != std::end(words);
    }
    return !value.isNil() && value.storage().index() <= lastNumber;
}

std::string suggestion(const std::string& word, std::span<const std::string_view> known) {
    const auto nearest = nearestName(word, known);
    return nearest ? "; did you mean '" + *nearest + "'?" : "";
}

std::string quoted(const std::string& text, Length length) {
    const std::string line = printableLine(text);
    const std::size_t longest = length == Length::Brief ? 20 : 60;  // Bytes.
    if (line.size() <= longest) return "'" + line + "'";
    std::size_t end = longest;
    const auto isWithinCharacter = [&] {
        return (static_cast<unsigned char>(line[end]) & 0xC0U) == 0x80;
    };
    while (end > 0 && isWithinCharacter())
        --end;
    return "'" + line.substr(0, end) + "...'";
}

std::string lineOf(const FileProblem& problem) {
    std::string line = problem.file;
    if (problem.place.line > 0)
        line +=
            ":" + std::to_string(problem.place.line) + ":" + std::to_string(problem.place.column);
    return line + ": " + problem.what + (problem.what.ends_with('?') ? " " : "; ") +
           problem.instead;
}

std::vector<FileProblem> problemsOfFiles() {
    std::vector<FileProblem> all = problemsOfSettings();
    std::ranges::move(problemsOfCategories(), std::back_inserter(all));
    // Who finds another list than the own wants to know of that first.
    const auto isOfWholeFile = [](const FileProblem& problem) { return problem.path.empty(); };
    std::stable_partition(all.begin(), all.end(), isOfWholeFile);
    return all;
}

}  // namespace shell
