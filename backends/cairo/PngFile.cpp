#include "backends/cairo/PngFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

namespace painting {

std::optional<RegularFile> RegularFile::open(const std::string& path) {
    // Checked before it is opened, since opening a device can have side effects, and again
    // afterwards, since another file may have taken its place in between.
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) return std::nullopt;
    const int answer = ::fstat(descriptor, &status);
    RegularFile file(descriptor, {status.st_dev, status.st_ino, status.st_size,
                                  status.st_mtim.tv_sec, status.st_mtim.tv_nsec});
    if (answer != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return file;
}

RegularFile::RegularFile(int descriptor, const FileIdentity& identity)
    : descriptor_(descriptor), identity_(identity) {}

RegularFile::RegularFile(RegularFile&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), identity_(other.identity_) {}

RegularFile::~RegularFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

bool RegularFile::read(std::span<unsigned char> buffer) noexcept {
    while (!buffer.empty()) {
        const ssize_t count = ::read(descriptor_, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        buffer = buffer.subspan(std::size_t(count));
    }
    return true;
}

bool RegularFile::rewind() noexcept {
    return ::lseek(descriptor_, 0, SEEK_SET) == 0;
}

namespace {

constexpr std::uint32_t largestSide = 4096;  // pixels
// bytes; twice the pixels of the largest image. A larger file is an attack on the reader.
constexpr std::int64_t largestFile = std::int64_t(largestSide) * largestSide * 4 * 2;

// The signature, then a chunk of 13 bytes named IHDR, which begins with the two sizes.
constexpr std::array<unsigned char, 16> beginning = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n',
                                                     0,    0,   0,   13,  'I',  'H',  'D',  'R'};
constexpr std::size_t headerBytes = beginning.size() + 8;
constexpr std::size_t signatureBytes = 8;

std::uint32_t bigEndian(std::span<const unsigned char, 4> bytes) {
    return std::uint32_t(bytes[0]) << 24 | std::uint32_t(bytes[1]) << 16 |
           std::uint32_t(bytes[2]) << 8 | bytes[3];
}

bool isLetter(unsigned char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

/// Chunks whose names begin with a small letter are ancillary: the picture can do without them.
bool isNeeded(std::string_view name) {
    return name[0] >= 'A' && name[0] <= 'Z';
}

bool isName(std::string_view name) {
    constexpr std::string_view needed[] = {"IHDR", "PLTE", "IDAT", "IEND"};
    if (!std::ranges::all_of(name, isLetter)) return false;
    return !isNeeded(name) || std::ranges::find(needed, name) != std::end(needed);
}

/// The checksum of a chunk, as the format defines it.
class Checksum {
 public:
    void add(std::span<const unsigned char> bytes) {
        for (const unsigned char byte : bytes)
            state_ = table[(state_ ^ byte) & 0xFF] ^ state_ >> 8;
    }
    std::uint32_t value() const { return ~state_; }

 private:
    static constexpr std::array<std::uint32_t, 256> table = [] {
        constexpr std::uint32_t polynomial = 0xEDB88320;
        std::array<std::uint32_t, 256> remainders{};
        for (std::uint32_t byte = 0; byte < remainders.size(); ++byte) {
            remainders[byte] = byte;
            for (int bit = 0; bit < 8; ++bit)
                remainders[byte] = remainders[byte] >> 1 ^ (remainders[byte] & 1) * polynomial;
        }
        return remainders;
    }();
    std::uint32_t state_ = ~std::uint32_t{0};
};

/// The chunks after the signature, read one after the other.
class Chunks {
 public:
    explicit Chunks(RegularFile& file) : file_(file) {}

    bool areWhole() {
        bool hasPixels = false;
        for (;;) {
            std::array<unsigned char, 8> start;
            if (!file_.read(start)) return false;
            const std::span<const unsigned char, 8> bytes(start);
            const std::string_view name(reinterpret_cast<const char*>(&start[4]), 4);
            if (!isName(name) || !takeContents(bigEndian(bytes.first<4>()), name)) return false;
            hasPixels = hasPixels || name == "IDAT";
            if (name == "IEND") return hasPixels;
        }
    }

 private:
    bool takeContents(std::uint32_t length, std::string_view name) {
        Checksum sum;
        sum.add({reinterpret_cast<const unsigned char*>(name.data()), name.size()});
        std::array<unsigned char, 4096> block;
        while (length > 0) {
            const auto count = std::min<std::size_t>(length, block.size());
            const std::span<unsigned char> part(block.data(), count);
            if (!file_.read(part)) return false;
            sum.add(part);
            length -= std::uint32_t(count);
        }
        std::array<unsigned char, 4> expected;
        if (!file_.read(expected)) return false;
        return !isNeeded(name) || bigEndian(expected) == sum.value();
    }

    RegularFile& file_;
};

std::optional<PixelSize> sizeInHeader(RegularFile& file) {
    std::array<unsigned char, headerBytes> header;
    if (file.identity().bytes > largestFile || !file.read(header)) return std::nullopt;
    if (!std::equal(beginning.begin(), beginning.end(), header.begin())) return std::nullopt;

    const std::span<const unsigned char, headerBytes> bytes(header);
    const std::uint32_t width = bigEndian(bytes.subspan<16, 4>());
    const std::uint32_t height = bigEndian(bytes.subspan<20, 4>());
    if (width < 1 || width > largestSide || height < 1 || height > largestSide) return std::nullopt;
    return PixelSize{int(width), int(height)};
}

}  // namespace

std::optional<PixelSize> sizeOfWholePng(RegularFile& file) {
    const auto size = sizeInHeader(file);
    std::array<unsigned char, signatureBytes> signature;
    if (!size || !file.rewind() || !file.read(signature)) return std::nullopt;
    return Chunks(file).areWhole() ? size : std::nullopt;
}

}  // namespace painting
