#include "backends/plist/PlistCodec.hpp"

#include "backends/plist/Forms.hpp"

#include <algorithm>
#include <map>
#include <tuple>

namespace {

bool isBinary(std::string_view bytes) {
    return bytes.starts_with("bplist");
}

std::string_view withoutByteOrderMark(std::string_view bytes) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    return bytes.starts_with(byteOrderMark) ? bytes.substr(byteOrderMark.size()) : bytes;
}

}  // namespace

DecodedPropertyList PlistCodec::decode(std::string_view bytes) const {
    if (bytes.size() > NSPropertyList::maximumFileBytes)
        return Failure{PropertyListFault{{}, "the file is larger than can be read"}};
    return isBinary(bytes) ? readBinaryPropertyList(bytes)
                           : readXmlPropertyList(withoutByteOrderMark(bytes));
}

std::vector<TextPlace> PlistCodec::placesOf(std::string_view bytes,
                                            std::span<const PropertyListPath> paths) const {
    std::vector<TextPlace> places(paths.size());
    if (isBinary(bytes)) return places;
    const std::string_view text = withoutByteOrderMark(bytes);
    std::map<PropertyListPath, std::size_t> offsets;
    for (const PropertyListPath& path : paths)
        offsets[path] = std::string_view::npos;
    // What stands before a fault has its place all the same.
    std::ignore =
        readXmlPropertyList(text, [&](const PropertyListPath& path, const XmlPlace& place) {
            const auto wanted = offsets.find(path);
            // An entry that stands twice counts with its last value.
            if (wanted != offsets.end()) wanted->second = place.entry;
        });
    std::ranges::transform(paths, places.begin(), [&](const PropertyListPath& path) {
        const std::size_t offset = offsets.at(path);
        return offset == std::string_view::npos ? TextPlace() : placeInText(text, offset);
    });
    return places;
}

std::optional<std::string> PlistCodec::encode(const PropertyValue& value) const {
    return writeXmlPropertyList(value);
}
