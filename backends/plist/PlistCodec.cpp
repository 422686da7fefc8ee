#include "backends/plist/PlistCodec.hpp"

#include "backends/plist/BinaryShape.hpp"
#include "backends/plist/NodeReader.hpp"
#include "backends/plist/NodeWriter.hpp"
#include "backends/plist/XmlShape.hpp"

#include <locale.h>

#include <cstdlib>
#include <map>

namespace {

/// The library reads and writes fractions by the locale of its caller, where the decimal point may
/// be a comma.
class InvariantLocale {
 public:
    InvariantLocale() : previous_(uselocale(invariant())) {}
    ~InvariantLocale() { uselocale(previous_); }
    InvariantLocale(const InvariantLocale&) = delete;
    InvariantLocale& operator=(const InvariantLocale&) = delete;

 private:
    static locale_t invariant() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }
    locale_t previous_;
};

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view withoutByteOrderMark(std::string_view bytes) {
    return bytes.starts_with(byteOrderMark) ? bytes.substr(byteOrderMark.size()) : bytes;
}

bool isBinary(std::string_view bytes) {
    return bytes.starts_with("bplist");
}

DecodedPropertyList refused(TextPlace place, std::string reason) {
    return {std::nullopt, {place, std::move(reason)}};
}

DecodedPropertyList valueOf(const PlistNode& node) {
    auto value = node ? valueOfNode(node.get()) : std::nullopt;
    if (!value) return refused({}, "this is not a property list");
    return {std::move(value), {}};
}

DecodedPropertyList valueOfBinary(std::string_view bytes) {
    if (const auto reason = faultInBinary(bytes)) return refused({}, *reason);
    plist_t node = nullptr;
    plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    return valueOf(PlistNode(node));
}

DecodedPropertyList valueOfXml(std::string_view bytes) {
    if (const auto fault = faultInXml(bytes))
        return refused(placeInText(bytes, fault->offset), fault->reason);
    // A copy with a zero byte behind it, where the library's comparisons of text end.
    const std::string text(bytes);
    plist_t node = nullptr;
    plist_from_xml(text.c_str(), static_cast<std::uint32_t>(text.size()), &node);
    return valueOf(PlistNode(node));
}

}  // namespace

DecodedPropertyList PlistCodec::decode(std::string_view bytes) const {
    if (bytes.size() > NSPropertyList::maximumFileBytes)
        return refused({}, "the file is larger than can be read");
    const InvariantLocale locale;
    return isBinary(bytes) ? valueOfBinary(bytes) : valueOfXml(withoutByteOrderMark(bytes));
}

std::vector<TextPlace> PlistCodec::placesOf(std::string_view bytes,
                                            std::span<const PropertyListPath> paths) const {
    std::map<PropertyListPath, std::optional<std::size_t>> offsets;
    for (const PropertyListPath& path : paths)
        offsets[path] = std::nullopt;
    const std::string_view text = withoutByteOrderMark(bytes);
    const auto note = [&](const PropertyListPath& path, std::size_t offset) {
        const auto wanted = offsets.find(path);
        // An entry that stands twice counts with its last value.
        if (wanted != offsets.end()) wanted->second = offset;
    };
    if (!isBinary(bytes)) faultInXml(text, note);
    std::vector<TextPlace> places;
    for (const PropertyListPath& path : paths) {
        const auto offset = offsets[path];
        places.push_back(offset ? placeInText(text, *offset) : TextPlace());
    }
    return places;
}

std::optional<std::string> PlistCodec::encode(const PropertyValue& value) const {
    const InvariantLocale locale;
    const PlistNode node = nodeOfValue(value);
    if (!node) return std::nullopt;
    char* raw = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node.get(), &raw, &length);
    const std::unique_ptr<char, decltype(&std::free)> text(raw, &std::free);
    return raw ? std::optional(std::string(raw, length)) : std::nullopt;
}
