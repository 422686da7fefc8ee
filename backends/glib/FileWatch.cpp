#include "backends/glib/FileWatch.hpp"

#include <glib-unix.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <system_error>
#include <utility>

namespace glib {
namespace {

constexpr unsigned entryComes = IN_CREATE | IN_MOVED_TO;
constexpr unsigned entryChanges = entryComes | IN_CLOSE_WRITE | IN_DELETE | IN_MOVED_FROM;
constexpr unsigned folderGoes = IN_DELETE_SELF | IN_MOVE_SELF;

bool isThere(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

}  // namespace

FileWatch::FileWatch(std::filesystem::path file, std::function<void()> changed, Tell tell)
    : file_(std::move(file)),
      changed_(std::move(changed)),
      tell_(tell),
      events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (!events_.isOpen())
        return;  // The limit of watches is reached: retries continue without one.
    source_ = g_unix_fd_add(
        events_.get(), G_IO_IN,
        [](int, GIOCondition, gpointer self) -> gboolean {
            static_cast<FileWatch*>(self)->becameReadable();
            return G_SOURCE_CONTINUE;
        },
        this);
    arm();
}

FileWatch::~FileWatch() {
    if (source_) g_source_remove(source_);
}

// Checks again for a folder that was created after the check and before the watch.
void FileWatch::arm() {
    for (;;) {
        std::filesystem::path entry = file_;
        while (!isThere(entry.parent_path()) && entry.has_relative_path())
            entry = entry.parent_path();
        awaited_ = {entry.parent_path(), entry.filename().string()};
        watch(awaited_.folder);
        if (entry == file_ || !isThere(entry)) return;
    }
}

void FileWatch::watch(const std::filesystem::path& folder) {
    const int before = folderWatch_;
    const unsigned entry = tell_ == Tell::EachChange ? entryChanges : entryComes;
    folderWatch_ =
        inotify_add_watch(events_.get(), folder.c_str(), entry | folderGoes | IN_ONLYDIR);
    if (before >= 0 && before != folderWatch_) inotify_rm_watch(events_.get(), before);
}

bool FileWatch::isAboutAwaited(const char* name, unsigned mask) const {
    return (mask & folderGoes) || ((mask & entryChanges) && awaited_.name == name);
}

// Whether any event was about the awaited entry.
bool FileWatch::readEvents() {
    alignas(inotify_event) std::array<char, 4096> buffer;
    bool concerned = false;
    for (ssize_t got = 0; (got = read(events_.get(), buffer.data(), buffer.size())) > 0;) {
        for (ssize_t place = 0; place < got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + place);
            // Where events were lost, any may have been about it.
            if (event->mask & IN_Q_OVERFLOW) concerned = true;
            if (event->wd == folderWatch_)
                concerned |= isAboutAwaited(event->len ? event->name : "", event->mask);
            place += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
    return concerned;
}

void FileWatch::becameReadable() {
    if (!readEvents()) return;
    arm();
    if (tell_ == Tell::Appearance && !isThere(file_)) return;
    const auto changed = changed_;  // It may end this.
    changed();
}

}  // namespace glib
