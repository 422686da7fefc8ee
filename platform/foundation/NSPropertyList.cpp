#include "platform/foundation/NSPropertyList.hpp"

#include "platform/foundation/FileContents.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"

#include <map>
#include <system_error>
#include <utility>
#include <vector>

namespace {

std::shared_ptr<const NSPropertyListCodec>& installedCodec() {
    static std::shared_ptr<const NSPropertyListCodec> codec;
    return codec;
}

/// Whether at most NSPropertyList::maximumDepth containers lie in each other.
bool isShallow(const PropertyValue& root) {
    struct Level {
        const PropertyValue* value;
        int depth;
    };
    std::vector<Level> open{{&root, 1}};
    while (!open.empty()) {
        const auto [value, depth] = open.back();
        open.pop_back();
        const auto* array = value->array();
        const auto* dictionary = value->dictionary();
        if ((array || dictionary) && depth > NSPropertyList::maximumDepth) return false;
        if (array) {
            for (const auto& element : *array)
                open.push_back({&element, depth + 1});
        }
        if (dictionary) {
            for (const auto& entry : *dictionary)
                open.push_back({&entry.second, depth + 1});
        }
    }
    return true;
}

PropertyListFile unreadable(std::string reason, TextPlace place = {}) {
    return {PropertyListFile::State::Unreadable, {}, {place, std::move(reason)}};
}

/// Its words are those of the system, without a capital: "permission denied".
std::string reasonOf(const std::error_code& error) {
    std::string words = error.message();
    if (!words.empty() && words[0] >= 'A' && words[0] <= 'Z') words[0] += 'a' - 'A';
    return words;
}

/// By path, as the caller names it.
std::map<std::string, std::string>& writeFailures() {
    static std::map<std::string, std::string> failures;
    return failures;
}

/// Whether replacing the file by a value of that kind may lose data.
OldFile fateOfOldFile(const PropertyValue& value, const std::string& path) {
    const PropertyListFile old = NSPropertyList::fileAt(path);
    const bool isSameKind = old.value.storage().index() == value.storage().index();
    return !old.value.isNil() && isSameKind ? OldFile::Dropped : OldFile::Kept;
}

/// Empty on success.
std::string failureOfWriting(const PropertyValue& value, const std::string& path) {
    if (!installedCodec()) return "there is no codec";
    if (!isShallow(value)) return "more containers in each other than could be read again";
    const auto bytes = installedCodec()->encode(value);
    if (!bytes) return "a value without a form in XML";
    if (bytes->size() > NSPropertyList::maximumFileBytes) return "larger than could be read again";
    const std::error_code error =
        writeFileAtomically(resolvedPath(path), *bytes, fateOfOldFile(value, path));
    return error ? reasonOf(error) : "";
}

}  // namespace

void NSPropertyList::setCodec(std::shared_ptr<const NSPropertyListCodec> codec) {
    installedCodec() = std::move(codec);
}

PropertyListFile NSPropertyList::fileAt(const std::string& path) {
    if (!installedCodec()) return {};
    std::error_code error;
    const auto bytes = contentsOfFile(resolvedPath(path), maximumFileBytes, &error);
    if (error == std::errc::no_such_file_or_directory) return {};
    if (!bytes) return unreadable(reasonOf(error));
    DecodedPropertyList decoded = installedCodec()->decode(*bytes);
    if (!decoded) return unreadable(decoded.error().reason, decoded.error().place);
    if (!isShallow(*decoded)) return unreadable("more containers in each other than can be read");
    return {PropertyListFile::State::Readable, *std::move(decoded), {}};
}

PropertyValue NSPropertyList::dictionaryWithContentsOfFile(const std::string& path) {
    PropertyValue value = fileAt(path).value;
    return value.dictionary() ? value : PropertyValue();
}

PropertyValue NSPropertyList::arrayWithContentsOfFile(const std::string& path) {
    PropertyValue value = fileAt(path).value;
    return value.array() ? value : PropertyValue();
}

std::vector<TextPlace> NSPropertyList::placesInFile(const std::string& path,
                                                    std::span<const PropertyListPath> paths) {
    const auto bytes = contentsOfFile(resolvedPath(path), maximumFileBytes);
    if (!bytes || !installedCodec()) return std::vector<TextPlace>(paths.size());
    return installedCodec()->placesOf(*bytes, paths);
}

bool NSPropertyList::writeToFileAtomically(const PropertyValue& value, const std::string& path) {
    const std::string failure = failureOfWriting(value, path);
    writeFailures()[path] = failure;
    return failure.empty();
}

std::string NSPropertyList::writeFailure(const std::string& path) {
    const auto found = writeFailures().find(path);
    return found == writeFailures().end() ? "" : found->second;
}
