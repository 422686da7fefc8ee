#pragma once

#include "platform/uikit/UIImage.hpp"

#include <map>
#include <memory>
#include <string>
#include <vector>

/// Pixels that remember only which file they stand for.
class FakeBitmap : public UIBitmap {
 public:
    FakeBitmap(std::string path, PixelSize size) : path_(std::move(path)), size_(size) {}
    PixelSize size() const override { return size_; }
    const std::string& path() const { return path_; }

 private:
    std::string path_;
    PixelSize size_;
};

/// A decoder of files that exist only in its map; it keeps what it was asked.
class FakeImageDecoder : public UIImageDecoder {
 public:
    enum class Pixels { Readable, Broken };

    void addFile(const std::string& path, PixelSize size, Pixels pixels = Pixels::Readable) {
        files_[path] = {size, pixels};
    }
    const std::vector<std::string>& probed() const { return probed_; }
    const std::vector<std::string>& decoded() const { return decoded_; }

    std::optional<PixelSize> probe(const std::string& path) override;
    std::shared_ptr<const UIBitmap> decode(const std::string& path) override;

 private:
    struct File {
        PixelSize size;
        Pixels pixels = Pixels::Readable;
    };
    std::map<std::string, File> files_;
    std::vector<std::string> probed_;
    std::vector<std::string> decoded_;
};

/// Installs a fake decoder for one scope.
class InstalledFakeDecoder {
 public:
    InstalledFakeDecoder() { UIImageDecoder::setDecoder(decoder_); }
    ~InstalledFakeDecoder() { UIImageDecoder::setDecoder(nullptr); }
    InstalledFakeDecoder(const InstalledFakeDecoder&) = delete;
    InstalledFakeDecoder& operator=(const InstalledFakeDecoder&) = delete;
    FakeImageDecoder* operator->() const { return decoder_.get(); }

    /// An image of that size in points at one pixel a point.
    std::shared_ptr<const UIImage> image(const std::string& path, PixelSize size) const {
        decoder_->addFile(path, size);
        return UIImage::imageWithContentsOfFile(path);
    }

 private:
    std::shared_ptr<FakeImageDecoder> decoder_ = std::make_shared<FakeImageDecoder>();
};
