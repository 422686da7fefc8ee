#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// One object of a binary property list, as far as its size and its references go.
struct BinaryObject {
    bool isContainer = false;
    std::uint64_t payloadBytes = 0;    ///< Of a text or data; of a number at most 16.
    std::uint64_t references = 0;      ///< To other objects: elements, or keys and values.
    std::uint64_t firstReference = 0;  ///< Where they begin in the file, in bytes.
};

/// The objects of a binary property list, read by their index without following references. Every
/// byte that it reads lies inside the file, whatever the file says. The bytes must outlive it.
class BinaryObjects {
 public:
    /// nullopt when the header or the trailer is wrong.
    static std::optional<BinaryObjects> in(std::string_view file);

    std::uint64_t count() const { return count_; }
    std::uint64_t root() const { return root_; }

    /// nullopt when the object is of no known kind, does not lie whole between the header and the
    /// table of offsets, is a text with a zero character, or a dictionary of too many entries.
    /// `index` is below count().
    std::optional<BinaryObject> object(std::uint64_t index) const;
    /// The index behind the object's nth reference; nullopt when there is no such object.
    std::optional<std::uint64_t> reference(const BinaryObject& object, std::uint64_t number) const;

 private:
    BinaryObjects() = default;
    std::optional<BinaryObject> plain(std::uint64_t start, std::uint64_t payloadBytes) const;
    std::optional<BinaryObject> text(std::uint64_t start, std::uint64_t characters,
                                     std::uint64_t characterBytes) const;
    std::optional<BinaryObject> sized(std::uint64_t markerOffset) const;

    std::string_view objects_;  ///< From the header to the table of offsets.
    std::string_view table_;
    std::uint64_t offsetBytes_ = 0;
    std::uint64_t referenceBytes_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t root_ = 0;
};
