#pragma once

#include "platform/foundation/FileDescriptor.hpp"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace pulse {

/// Tells when a file comes to be, without waking up before: for one that is there already when it
/// is made anew. The folders above it may be missing too. Works on GLib's default main context.
class FileWatch {
 public:
    /// `file` is absolute. `appeared` is called from the main context and may destroy the watch.
    FileWatch(std::filesystem::path file, std::function<void()> appeared);
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;
    ~FileWatch();

 private:
    /// What is waited for: an entry of the lowest folder that is there.
    struct Awaited {
        std::filesystem::path folder;
        std::string name;
    };

    void arm();
    void watch(const std::filesystem::path& folder);
    bool readEvents();
    void becameReadable();
    bool isAboutAwaited(const char* name, unsigned mask) const;

    std::filesystem::path file_;
    std::function<void()> appeared_;
    Awaited awaited_;
    FileDescriptor events_;
    int folderWatch_ = -1;
    unsigned source_ = 0;
};

}  // namespace pulse
