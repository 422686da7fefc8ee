#include "backends/pulse/FileWatch.hpp"

#include <glib-unix.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <system_error>
#include <utility>

namespace pulse {
namespace {

constexpr unsigned entryComes = IN_CREATE | IN_MOVED_TO;
constexpr unsigned folderGoes = IN_DELETE_SELF | IN_MOVE_SELF;

bool isThere(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

}  // namespace

FileWatch::FileWatch(std::filesystem::path file, std::function<void()> appeared)
    : file_(std::move(file)),
      appeared_(std::move(appeared)),
      events_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (!events_.isOpen()) return;  // Too many of them in use: the retries go on without it.
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

// A folder that came between the look and the watch is looked for again.
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
    folderWatch_ =
        inotify_add_watch(events_.get(), folder.c_str(), entryComes | folderGoes | IN_ONLYDIR);
    if (before >= 0 && before != folderWatch_) inotify_rm_watch(events_.get(), before);
}

bool FileWatch::isAboutAwaited(const char* name, unsigned mask) const {
    return (mask & folderGoes) || ((mask & entryComes) && awaited_.name == name);
}

// Whether anything was about what is awaited.
bool FileWatch::readEvents() {
    alignas(inotify_event) std::array<char, 4096> buffer;
    bool concerned = false;
    for (ssize_t got = 0; (got = read(events_.get(), buffer.data(), buffer.size())) > 0;) {
        for (ssize_t place = 0; place < got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + place);
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
    if (!isThere(file_)) return;
    const auto appeared = appeared_;  // It may end this.
    appeared();
}

}  // namespace pulse
