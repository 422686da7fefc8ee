#pragma once

#include "platform/uikit/UIImage.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace painting {

/// Identifies the content of a file: a file that was changed or replaced has another identity.
struct FileIdentity {
    std::uint64_t device;
    std::uint64_t inode;
    std::int64_t bytes;
    std::int64_t modifiedSeconds;
    std::int64_t modifiedNanoseconds;
    // The check takes the operator's generated comparison with 0 for a null pointer.
    // NOLINTNEXTLINE(modernize-use-nullptr)
    auto operator<=>(const FileIdentity&) const = default;
};

/// A regular file, open for reading. Folders, pipes and devices are refused, since they could
/// block.
class RegularFile {
 public:
    /// nullopt when it cannot be opened or is no regular file.
    static std::optional<RegularFile> open(const std::string& path);
    RegularFile(RegularFile&& other) noexcept;
    RegularFile& operator=(RegularFile&&) = delete;
    ~RegularFile();

    const FileIdentity& identity() const { return identity_; }
    /// Fills the whole buffer from where the last read ended; false when the file has less.
    bool read(std::span<unsigned char> buffer) noexcept;
    /// The next read begins at the start of the file; false when that fails.
    bool rewind() noexcept;

 private:
    RegularFile(int descriptor, const FileIdentity& identity);

    int descriptor_;
    FileIdentity identity_;
};

/// The size from the header of an intact PNG file: every critical chunk is there and its checksum
/// is right. nullopt otherwise, and for more than 4096 pixels in a direction. Reads the whole file
/// and decompresses nothing.
std::optional<PixelSize> sizeOfWholePng(RegularFile& file);

}  // namespace painting
