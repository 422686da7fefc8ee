#include "backends/glib/FileWatch.hpp"

#include <glib-unix.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

namespace glib {
namespace {

namespace fs = std::filesystem;

constexpr unsigned entryComes = IN_CREATE | IN_MOVED_TO;
constexpr unsigned entryChanges = entryComes | IN_CLOSE_WRITE | IN_DELETE | IN_MOVED_FROM;
constexpr unsigned folderGoes = IN_DELETE_SELF | IN_MOVE_SELF;

bool isThere(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
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

/// One for each link, and one for the file that they lead to.
std::vector<FileWatch::Awaited> FileWatch::entriesOnTheWay() const {
    constexpr int mostLinks = 40;  // As the kernel has it.
    std::vector<Awaited> entries;
    fs::path path = file_;
    for (int links = 0; links <= mostLinks; ++links) {
        fs::path entry = path;
        while (!isThere(entry.parent_path()) && entry.has_relative_path())
            entry = entry.parent_path();
        entries.push_back({entry.parent_path(), entry.filename().string()});
        std::error_code error;
        const fs::path target = fs::read_symlink(path, error);
        if (error) break;
        path = path.parent_path() / target;
    }
    return entries;
}

// Looks again for what has come after the look and before the watch.
void FileWatch::arm() {
    const unsigned entry = tell_ == Tell::EachChange ? entryChanges : entryComes;
    std::vector<Awaited> old = std::exchange(awaited_, {});
    const auto isSameEntry = [](const Awaited& one, const Awaited& other) {
        return one.folder == other.folder && one.name == other.name;
    };
    for (std::vector<Awaited> now = entriesOnTheWay();
         !std::ranges::equal(now, awaited_, isSameEntry); now = entriesOnTheWay()) {
        old.insert(old.end(), awaited_.begin(), awaited_.end());
        awaited_ = std::move(now);
        // For a folder that is watched already, the kernel answers with that watch.
        for (Awaited& each : awaited_)
            each.watch = inotify_add_watch(events_.get(), each.folder.c_str(),
                                           entry | folderGoes | IN_ONLYDIR);
    }
    for (const Awaited& each : old)
        if (std::ranges::find(awaited_, each.watch, &Awaited::watch) == awaited_.end())
            inotify_rm_watch(events_.get(), each.watch);
}

bool FileWatch::isAboutAwaited(int watch, const char* name, unsigned mask) const {
    return std::ranges::any_of(awaited_, [&](const Awaited& each) {
        return each.watch == watch &&
               ((mask & folderGoes) || ((mask & entryChanges) && each.name == name));
    });
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
            concerned |= isAboutAwaited(event->wd, event->len ? event->name : "", event->mask);
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
