#include "backends/plist/PlistCodec.hpp"

#include "backends/plist/BinaryShape.hpp"
#include "backends/plist/NodeReader.hpp"
#include "backends/plist/NodeWriter.hpp"
#include "backends/plist/XmlShape.hpp"

#include <locale.h>

#include <cstdlib>

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

PlistNode nodeOfBinary(std::string_view bytes) {
    if (!isReadableBinary(bytes)) return nullptr;
    plist_t node = nullptr;
    plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    return PlistNode(node);
}

PlistNode nodeOfXml(std::string_view bytes) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
    if (!isReadableXml(bytes)) return nullptr;
    // A copy with a zero byte behind it, where the library's comparisons of text end.
    const std::string text(bytes);
    plist_t node = nullptr;
    plist_from_xml(text.c_str(), static_cast<std::uint32_t>(text.size()), &node);
    return PlistNode(node);
}

}  // namespace

std::optional<PropertyValue> PlistCodec::decode(std::string_view bytes) const {
    if (bytes.size() > NSPropertyList::maximumFileBytes) return std::nullopt;
    const InvariantLocale locale;
    const PlistNode node = bytes.starts_with("bplist") ? nodeOfBinary(bytes) : nodeOfXml(bytes);
    return node ? valueOfNode(node.get()) : std::nullopt;
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
