#include "backends/plist/NodeWriter.hpp"

#include "backends/plist/ScalarForm.hpp"
#include "backends/plist/XmlText.hpp"
#include "platform/foundation/NSPropertyList.hpp"

namespace {

// Years of four digits, the only ones that the library writes as the format wants them.
constexpr double year1000 = -31588012800.0;   // Seconds since 1 January 2001.
constexpr double year10000 = 252423993600.0;  // Seconds since 1 January 2001.

PlistNode nodeAtDepth(const PropertyValue& value, int depth);

struct NodeMaker {
    int depth;

    PlistNode operator()(std::monostate) const { return nullptr; }
    PlistNode operator()(bool value) const { return PlistNode(plist_new_bool(value ? 1 : 0)); }
    PlistNode operator()(std::int64_t value) const { return nodeOfInteger(value); }
    PlistNode operator()(std::uint64_t value) const { return nodeOfInteger(value); }
    PlistNode operator()(double value) const { return PlistNode(plist_new_real(value)); }

    PlistNode operator()(const std::string& text) const {
        return canStandInXml(text) ? PlistNode(plist_new_string(text.c_str())) : nullptr;
    }

    PlistNode operator()(PropertyValue::Date date) const {
        const double seconds = date.secondsSinceReferenceDate;
        return seconds >= year1000 && seconds < year10000 ? nodeOfDate(date) : nullptr;
    }

    PlistNode operator()(const std::shared_ptr<const PropertyValue::Data>& data) const {
        return PlistNode(plist_new_data(reinterpret_cast<const char*>(data->data()), data->size()));
    }

    PlistNode operator()(const std::shared_ptr<const PropertyValue::Array>& elements) const {
        PlistNode array(plist_new_array());
        for (const PropertyValue& element : *elements) {
            PlistNode node = nodeAtDepth(element, depth + 1);
            if (!node) return nullptr;
            plist_array_append_item(array.get(), node.release());
        }
        return array;
    }

    PlistNode operator()(const std::shared_ptr<const PropertyValue::Dictionary>& entries) const {
        PlistNode dictionary(plist_new_dict());
        for (const auto& [key, value] : *entries) {
            PlistNode node = canStandInXml(key) ? nodeAtDepth(value, depth + 1) : nullptr;
            if (!node) return nullptr;
            plist_dict_set_item(dictionary.get(), key.c_str(), node.release());
        }
        return dictionary;
    }
};

PlistNode nodeAtDepth(const PropertyValue& value, int depth) {
    const bool isContainer = value.array() || value.dictionary();
    if (isContainer && depth > NSPropertyList::maximumDepth) return nullptr;
    return std::visit(NodeMaker{depth}, value.storage());
}

}  // namespace

PlistNode nodeOfValue(const PropertyValue& value) {
    return nodeAtDepth(value, 1);
}
