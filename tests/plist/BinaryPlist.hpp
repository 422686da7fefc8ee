#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Builds binary property lists, wrong ones too.
struct BinaryPlist {
    std::vector<std::string> objects;
    std::uint64_t root = 0;
    int offsetBytes = 4;
    int referenceBytes = 2;

    // Each answers the index of the object that it adds.
    std::uint64_t addRaw(std::string bytes);
    std::uint64_t addAscii(const std::string& text);
    std::uint64_t addArray(const std::vector<std::uint64_t>& elements);
    std::uint64_t addDictionary(const std::vector<std::uint64_t>& keys,
                                const std::vector<std::uint64_t>& values);

    std::string file() const;

 private:
    std::string references(const std::vector<std::uint64_t>& indexes) const;
};

std::string bigEndian(std::uint64_t number, int bytes);
/// The start of an object: its kind (0xA0 for an array) and its size.
std::string objectStart(int kind, std::uint64_t size);
