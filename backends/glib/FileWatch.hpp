#pragma once

#include "platform/foundation/FileDescriptor.hpp"

#include <filesystem>
#include <functional>
#include <string>

namespace glib {

/// Calls back when a file is created, replaced, or changed otherwise. Waits on inotify, so nothing
/// wakes up before. The folders above the file need not exist.
///
///     FileWatch watch("/run/user/1000/pulse/native", [&] { connectNow(); });
///     FileWatch watch(path, [&] { readAgain(); }, FileWatch::Tell::EachChange);
///
/// Works on GLib's default main context.
class FileWatch {
 public:
    enum class Tell {
        Appearance,  ///< The file is created or replaced.
        EachChange,  ///< Also a program closes it that could write, or it is removed or renamed.
    };

    /// `file` is absolute; where it is a symbolic link, the link is watched. `changed` is called
    /// from the main context, once for what happened since the last call, and may destroy the
    /// watch.
    FileWatch(std::filesystem::path file, std::function<void()> changed,
              Tell tell = Tell::Appearance);
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;
    ~FileWatch();

 private:
    /// The awaited entry of the deepest folder that exists.
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
    std::function<void()> changed_;
    Tell tell_;
    Awaited awaited_;
    FileDescriptor events_;
    int folderWatch_ = -1;
    unsigned source_ = 0;
};

}  // namespace glib
