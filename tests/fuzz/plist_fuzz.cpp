#include "backends/plist/PlistCodec.hpp"
#include "backends/plist/PropertyListEditor.hpp"

#include <cstdlib>

namespace {

/// A change may be refused for what a file can't hold, but its text must hold what was meant.
bool isDone(const PropertyListEditor::Trouble& trouble) {
    if (trouble == PropertyListEditor::Refusal::NotTheSame) std::abort();
    return !trouble;
}

void changeElement(const PropertyListEditor& original, std::size_t number) {
    PropertyListEditor list = original;
    const auto removed = list.remove({}, number);
    if (!removed) {
        isDone(removed.error());
        return;
    }
    const bool isBack = isDone(list.restore({}, number, *removed));
    if (isBack && !removed->text.empty() && list.bytes() != original.bytes()) std::abort();
    const std::size_t count = original.root().array()->size();
    isDone(list.move({}, number, count - 1 - number));
    isDone(list.insert({}, number, PropertyValue(PropertyValue::Array{removed->value})));
}

void changeEntry(const PropertyListEditor& original, const std::string& key) {
    PropertyListEditor list = original;
    isDone(list.set({}, key, PropertyValue(PropertyValue::Array{PropertyValue("<new>")})));
    isDone(list.removeKey({}, key));
    isDone(list.set({}, key, PropertyValue(true)));
}

/// Edits of it at both ends.
void change(const PropertyListEditor& list) {
    const auto* array = list.root().array();
    const auto* dictionary = list.root().dictionary();
    if (array && !array->empty()) {
        changeElement(list, 0);
        changeElement(list, array->size() - 1);
    }
    if (!dictionary) return;
    changeEntry(list, "a new key");
    if (dictionary->empty()) return;
    changeEntry(list, dictionary->front().first);
    changeEntry(list, dictionary->back().first);
}

}  // namespace

/// Whatever reads as a property list and can be written at all must read again, as the same: what
/// is written the second time is what was written the first time. Whatever is edited must read as
/// the edit says, and a removed element comes back as it was.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const PlistCodec codec;
    const auto value = codec.decode(bytes);
    const auto written = value ? codec.encode(*value) : std::nullopt;
    // Each edit reads and writes everything; a large tree can stand in few bytes of binary form.
    constexpr std::size_t largest = 200'000;
    const bool isSmall = written ? written->size() <= largest : !bytes.starts_with("bplist");
    if (value && isSmall && bytes.size() <= largest) change(*PropertyListEditor::reading(bytes));
    if (!written || written->size() > NSPropertyList::maximumFileBytes) return 0;
    const auto again = codec.decode(*written);
    if (!again || codec.encode(*again) != written) std::abort();
    return 0;
}
