#include "backends/plist/NodeReader.hpp"

#include "backends/plist/ScalarForm.hpp"
#include "platform/foundation/NSPropertyList.hpp"

#include <cstdlib>

namespace {

struct CFree {
    void operator()(void* memory) const { std::free(memory); }
};

std::optional<PropertyValue> valueAtDepth(plist_t node, int depth);

PropertyValue stringOf(plist_t node) {
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return PropertyValue(text ? std::string(text, length) : std::string());
}

PropertyValue dataOf(plist_t node) {
    std::uint64_t length = 0;
    const auto* bytes = reinterpret_cast<const std::byte*>(plist_get_data_ptr(node, &length));
    return PropertyValue(bytes ? PropertyValue::Data(bytes, bytes + length)
                               : PropertyValue::Data());
}

PropertyValue booleanOf(plist_t node) {
    std::uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return PropertyValue(value != 0);
}

PropertyValue realOf(plist_t node) {
    double value = 0;
    plist_get_real_val(node, &value);
    return PropertyValue(value);
}

std::optional<PropertyValue> arrayOf(plist_t node, int depth) {
    PropertyValue::Array elements;
    plist_array_iter raw = nullptr;
    plist_array_new_iter(node, &raw);
    const std::unique_ptr<void, CFree> iterator(raw);
    for (;;) {
        plist_t item = nullptr;
        plist_array_next_item(node, iterator.get(), &item);
        if (!item) return PropertyValue(std::move(elements));
        auto element = valueAtDepth(item, depth + 1);
        if (!element) return std::nullopt;
        elements.push_back(std::move(*element));
    }
}

std::optional<PropertyValue> dictionaryOf(plist_t node, int depth) {
    PropertyValue::Dictionary entries;
    plist_dict_iter raw = nullptr;
    plist_dict_new_iter(node, &raw);
    const std::unique_ptr<void, CFree> iterator(raw);
    for (;;) {
        char* rawKey = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator.get(), &rawKey, &item);
        const std::unique_ptr<char, CFree> key(rawKey);
        if (!item) return PropertyValue(std::move(entries));
        auto value = valueAtDepth(item, depth + 1);
        if (!value) return std::nullopt;
        if (!value->isNil()) entries.emplace_back(key ? key.get() : "", std::move(*value));
    }
}

std::optional<PropertyValue> valueAtDepth(plist_t node, int depth) {
    const plist_type type = plist_get_node_type(node);
    const bool isContainer = type == PLIST_ARRAY || type == PLIST_DICT;
    if (isContainer && depth > NSPropertyList::maximumDepth) return std::nullopt;
    switch (type) {
        case PLIST_ARRAY:
            return arrayOf(node, depth);
        case PLIST_DICT:
            return dictionaryOf(node, depth);
        case PLIST_STRING:
            return stringOf(node);
        case PLIST_BOOLEAN:
            return booleanOf(node);
        case PLIST_UINT:
            return integerOfNode(node);
        case PLIST_REAL:
            return realOf(node);
        case PLIST_DATE:
            return dateOfNode(node);
        case PLIST_DATA:
            return dataOf(node);
        default:
            return PropertyValue();
    }
}

}  // namespace

std::optional<PropertyValue> valueOfNode(plist_t node) {
    return valueAtDepth(node, 1);
}
