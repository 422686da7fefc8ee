#pragma once

#include "platform/foundation/FileDescriptor.hpp"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace glib {

/// Calls back when a file is created, replaced, or changed otherwise. Waits on inotify, so nothing
/// wakes up before. The folders above the file need not exist. Where the file is a symbolic link,
/// what it leads to is watched too, through any number of further links.
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

    /// `file` is absolute. `changed` is called from the main context, once for what happened since
    /// the last call, and may destroy the watch.
    FileWatch(std::filesystem::path file, std::function<void()> changed,
              Tell tell = Tell::Appearance);
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;
    ~FileWatch();

 private:
    /// An entry of a folder that exists: the file, a link on the way to it, or the first folder
    /// that is missing on that way.
    struct Awaited {
        std::filesystem::path folder;
        std::string name;
        int watch = -1;
    };

    std::vector<Awaited> entriesOnTheWay() const;
    void arm();
    bool readEvents();
    void becameReadable();
    bool isAboutAwaited(int watch, const char* name, unsigned mask) const;

    std::filesystem::path file_;
    std::function<void()> changed_;
    Tell tell_;
    std::vector<Awaited> awaited_;
    FileDescriptor events_;
    unsigned source_ = 0;
};

}  // namespace glib
