#include "shells/common/FileCheck.hpp"

#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/foundation/PrintableText.hpp"
#include "shells/common/NearestName.hpp"
#include "shells/common/Translation.hpp"

#include <algorithm>
#include <array>

namespace shell {
namespace {

// A file with more problems than these was written for something else.
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
    const auto nearest = nearestName(key, known);
    const char* what = nearest ? translated("there is no key {key}; did you mean '{suggestion}'?")
                               : translated("there is no key {key}");
    add({filled(what, {{"key", quoted(key)}, {"suggestion", nearest.value_or("")}}),
         translated("it is passed over"),
         {filled(translated("no key {key}"), {{"key", quoted(key, Length::Brief)}})},
         path});
}

void FileCheck::addUnreadable(const std::string& root, const std::string& instead,
                              const std::string& brief) {
    const bool isReadable = contents_.state == PropertyListFile::State::Readable;
    const TextPlace& place = contents_.fault.place;
    const std::string where = placeText(place);
    const char* located = translated("{problem}: {place}");
    FileProblem problem{
        isReadable ? filled(translated("the root is no <{element}>"), {{"element", root}})
                   : contents_.fault.reason,
        instead,
        {where.empty() ? brief : filled(located, {{"problem", brief}, {"place", where}})}};
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
        // TRANSLATORS: {file} is "Settings" or "List of rows".
        const char* text = problem.place.line > 0 ? translated("{file}, line {line}: {problem}")
                                                  : translated("{file}: {problem}");
        problem.brief.front() = filled(text, {{"file", name_},
                                              {"line", std::to_string(problem.place.line)},
                                              {"problem", problem.brief.front()}});
    }
    const auto orderOf = [](const FileProblem& problem) {
        return std::pair(problem.place.line, problem.place.column);
    };
    std::stable_sort(problems_.begin(), problems_.end(), [&](const auto& one, const auto& other) {
        return orderOf(one) < orderOf(other);
    });
    if (untold_ > 0) {
        // TRANSLATORS: Of the problems in a file.
        const std::string count = filled(translatedCount("{count} more", "{count} more", untold_),
                                         {{"count", std::to_string(untold_)}});
        const std::string brief =
            filled(translated("{file}: {problem}"), {{"file", name_}, {"problem", count}});
        const PropertyListPath behind = problems_.back().path;
        problems_.push_back({count, translated("they are not listed"), {brief}, behind});
        problems_.back().file = resolvedPath(path_);
    }
    return std::move(problems_);
}

std::string placeText(const TextPlace& place) {
    if (place.line == 0) return "";
    return filled(translated("line {line}, column {column}"),
                  {{"line", std::to_string(place.line)}, {"column", std::to_string(place.column)}});
}

std::string kindOf(const PropertyValue& value) {
    // TRANSLATORS: These kinds, up to "the text {text}", stand where other texts say {kind}:
    // "'visible' is a date, and not <true/> or <false/>".
    constexpr const char* number = translatable("a number");
    constexpr std::array<const char*, 10> kinds = {translatable("nothing"),
                                                   translatable("a boolean"),
                                                   number,
                                                   number,
                                                   number,
                                                   translatable("a text"),
                                                   translatable("a date"),
                                                   translatable("data"),
                                                   translatable("an array"),
                                                   translatable("a dictionary")};
    static_assert(kinds.size() == std::variant_size_v<PropertyValue::Storage>);
    const NSString text = value.string();
    return text ? filled(translated("the text {text}"), {{"text", quoted(*text)}})
                : translated(kinds[value.storage().index()]);
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

bool isQuestion(std::string_view text) {
    constexpr std::string_view marks[] = {"?", "\u061f", "\uff1f"};  // Also in Arabic and Chinese.
    return std::ranges::any_of(marks, [&](std::string_view mark) { return text.ends_with(mark); });
}

std::string lineOf(const FileProblem& problem) {
    std::string line = problem.file;
    if (problem.place.line > 0)
        line +=
            ":" + std::to_string(problem.place.line) + ":" + std::to_string(problem.place.column);
    // TRANSLATORS: A problem of a file and its consequence; the first with the problem as a
    // question.
    const char* both = isQuestion(problem.what) ? translated("{problem} {consequence}")
                                                : translated("{problem}; {consequence}");
    return line + ": " +
           filled(both, {{"problem", problem.what}, {"consequence", problem.instead}});
}

std::vector<FileProblem> problemsOfFiles() {
    std::vector<FileProblem> all = problemsOfSettings();
    std::ranges::move(problemsOfCategories(), std::back_inserter(all));
    // First the ones that explain why the whole list or all settings differ from the user's.
    const auto isOfWholeFile = [](const FileProblem& problem) { return problem.path.empty(); };
    std::stable_partition(all.begin(), all.end(), isOfWholeFile);
    return all;
}

}  // namespace shell
