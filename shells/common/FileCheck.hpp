#pragma once

#include "shells/common/FileProblem.hpp"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace shell {

/// One file while it is looked through: gathers what is wrong with it.
class FileCheck {
 public:
    /// Reads the file. `name` begins what the panel says of a line of it: "Settings".
    FileCheck(const std::string& path, std::string name);

    const PropertyListFile& contents() const { return contents_; }
    /// With a path it is given the place of that value. `file` is another one than this, or empty.
    void add(FileProblem problem, const std::string& file = {});
    void addUnknownKey(const PropertyListPath& path, std::span<const std::string_view> known);
    /// Of a file that cannot be read or whose root is none of those elements.
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

/// How much of a text there is room for.
enum class Length { Brief, Full };
/// A text out of a file, in quotation marks.
std::string quoted(const std::string& text, Length length = Length::Full);
/// "line 3, column 7"; empty where the place cannot be told.
std::string placeText(const TextPlace& place);
/// What kind of value it is, with its article: "a text".
std::string kindOf(const PropertyValue& value);
/// Whether it is a boolean, a number, or a text that says yes or no.
bool readsAsBoolean(const PropertyValue& value);
/// "; did you mean 'x'?", or nothing.
std::string suggestion(const std::string& word, std::span<const std::string_view> known);

}  // namespace shell
