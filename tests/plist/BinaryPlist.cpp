#include "tests/plist/BinaryPlist.hpp"

std::string bigEndian(std::uint64_t number, int bytes) {
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
        text += static_cast<char>(number >> shift);
    }
    return text;
}

std::string objectStart(int kind, std::uint64_t size) {
    if (size < 15) return std::string(1, static_cast<char>(kind | static_cast<int>(size)));
    return std::string(1, static_cast<char>(kind | 0xF)) + "\x13" + bigEndian(size, 8);
}

std::uint64_t BinaryPlist::addRaw(std::string bytes) {
    objects.push_back(std::move(bytes));
    return objects.size() - 1;
}

std::uint64_t BinaryPlist::addAscii(const std::string& text) {
    return addRaw(objectStart(0x50, text.size()) + text);
}

std::uint64_t BinaryPlist::addArray(const std::vector<std::uint64_t>& elements) {
    return addRaw(objectStart(0xA0, elements.size()) + references(elements));
}

std::uint64_t BinaryPlist::addDictionary(const std::vector<std::uint64_t>& keys,
                                         const std::vector<std::uint64_t>& values) {
    return addRaw(objectStart(0xD0, keys.size()) + references(keys) + references(values));
}

std::string BinaryPlist::references(const std::vector<std::uint64_t>& indexes) const {
    std::string bytes;
    for (const std::uint64_t index : indexes)
        bytes += bigEndian(index, referenceBytes);
    return bytes;
}

std::string BinaryPlist::file() const {
    std::string bytes = "bplist00";
    std::string table;
    for (const std::string& object : objects) {
        table += bigEndian(bytes.size(), offsetBytes);
        bytes += object;
    }
    const std::uint64_t tableOffset = bytes.size();
    return bytes + table + std::string(6, '\0') + bigEndian(offsetBytes, 1) +
           bigEndian(referenceBytes, 1) + bigEndian(objects.size(), 8) + bigEndian(root, 8) +
           bigEndian(tableOffset, 8);
}
