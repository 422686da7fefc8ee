#pragma once

#include "platform/foundation/NSPropertyList.hpp"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace shell {

/// A problem in one of the mixer's two files, in the user's language.
struct FileProblem {
    std::string what;                ///< The problem.
    std::string instead;             ///< Its consequence: the replacement, or the file kept.
    std::vector<std::string> brief;  ///< The same for a panel, in lines of about fifty letters.
    PropertyListPath path = {};      ///< Of the value in question.
    TextPlace place = {};            ///< Of that value in the file, where it can be told.
    std::string file = {};           ///< The actual path of the file.
};

/// "FILE:LINE:COLUMN: WHAT; INSTEAD", in one line.
std::string lineOf(const FileProblem& problem);

/// The problems of the settings file, in the order of the file.
std::vector<FileProblem> problemsOfSettings();
/// The problems of the category file, and of its last replacement.
std::vector<FileProblem> problemsOfCategories();

/// The problems of both files: what cannot be read, could not be written, or has no meaning; first
/// those of a file as a whole. Reads both files and changes nothing. Main thread.
std::vector<FileProblem> problemsOfFiles();

/// Collects the problems of one file while it is checked.
class FileCheck {
 public:
    /// Reads the file. `name` starts the panel's lines about it: "Settings".
    FileCheck(const std::string& path, std::string name);

    const PropertyListFile& contents() const { return contents_; }
    /// Adds a problem; with a path it gets the place of that value. `file` is a different file, or
    /// empty for this one.
    void add(FileProblem problem, const std::string& file = {});
    void addUnknownKey(const PropertyListPath& path, std::span<const std::string_view> known);
    /// For a file that cannot be read or whose root is not of that kind.
    void addUnreadable(const std::string& root, const std::string& instead,
                       const std::string& brief);
    /// All of them, with their places.
    std::vector<FileProblem> finish();

 private:
    std::string path_;
    std::string name_;
    PropertyListFile contents_;
    std::vector<FileProblem> problems_;
    std::size_t untold_ = 0;
};

/// How much of a text is shown.
enum class Length { Brief, Full };
/// A text from a file, in quotation marks.
std::string quoted(const std::string& text, Length length = Length::Full);
/// "line 3, column 7"; empty where the place cannot be told.
std::string placeText(const TextPlace& place);
/// The kind of a value with its article: "a text".
std::string kindOf(const PropertyValue& value);
/// Whether it is a boolean, a number, or a text that reads as a boolean.
bool readsAsBoolean(const PropertyValue& value);
/// Whether it ends with a question mark, of whatever script.
bool isQuestion(std::string_view text);

}  // namespace shell
