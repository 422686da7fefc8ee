#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

/// What tells one state of a file from another.
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

/// A regular file, open for reading. Folders, pipes and devices are none: they could block.
class RegularFile {
 public:
    static std::optional<RegularFile> open(const std::string& path);
    RegularFile(RegularFile&& other) noexcept;
    RegularFile& operator=(RegularFile&&) = delete;
    ~RegularFile();

    const FileIdentity& identity() const { return identity_; }
    /// Fills the whole buffer from where the last reading ended; false when the file has less.
    bool read(std::span<unsigned char> buffer) noexcept;
    /// The next reading begins at the file's beginning again.
    bool rewind() noexcept;

 private:
    RegularFile(int descriptor, const FileIdentity& identity);

    int descriptor_;
    FileIdentity identity_;
};
