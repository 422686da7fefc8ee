#include "tests/support/FakeImageDecoder.hpp"

std::optional<PixelSize> FakeImageDecoder::probe(const std::string& path) {
    probed_.push_back(path);
    const auto found = files_.find(path);
    if (found == files_.end()) return std::nullopt;
    return found->second.size;
}

std::shared_ptr<const UIBitmap> FakeImageDecoder::decode(const std::string& path) {
    decoded_.push_back(path);
    const auto found = files_.find(path);
    if (found == files_.end() || found->second.pixels == Pixels::Broken) return nullptr;
    return std::make_shared<FakeBitmap>(path, found->second.size);
}
