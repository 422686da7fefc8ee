#include "platform/foundation/NSPropertyList.hpp"

#include "platform/foundation/FileContents.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"

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

PropertyValue contentsOfPropertyList(const std::string& path) {
    if (!installedCodec()) return {};
    const auto bytes = contentsOfFile(resolvedPath(path), NSPropertyList::maximumFileBytes);
    if (!bytes) return {};
    const auto value = installedCodec()->decode(*bytes);
    return value && isShallow(*value) ? *value : PropertyValue();
}

}  // namespace

void NSPropertyList::setCodec(std::shared_ptr<const NSPropertyListCodec> codec) {
    installedCodec() = std::move(codec);
}

PropertyValue NSPropertyList::dictionaryWithContentsOfFile(const std::string& path) {
    const PropertyValue value = contentsOfPropertyList(path);
    return value.dictionary() ? value : PropertyValue();
}

PropertyValue NSPropertyList::arrayWithContentsOfFile(const std::string& path) {
    const PropertyValue value = contentsOfPropertyList(path);
    return value.array() ? value : PropertyValue();
}

bool NSPropertyList::writeToFileAtomically(const PropertyValue& value, const std::string& path) {
    if (!installedCodec() || !isShallow(value)) return false;
    const auto bytes = installedCodec()->encode(value);
    // What could not be read again is not written.
    if (!bytes || bytes->size() > maximumFileBytes) return false;
    return writeFileAtomically(resolvedPath(path), *bytes);
}
