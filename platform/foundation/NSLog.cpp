#include "platform/foundation/NSLog.hpp"

#include "platform/foundation/PrintableText.hpp"

#include <sys/stat.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <string_view>

namespace {

using Sink = std::function<void(const std::string& line)>;

struct SinkSlot {
    std::mutex mutex;
    std::shared_ptr<const Sink> sink;
};

SinkSlot& sinkSlot() {
    // Never destroyed: destructors of static objects may still log.
    static auto& slot = *std::make_unique<SinkSlot>().release();
    return slot;
}

/// Whether what goes to standard error ends up in the journal. The service manager names the
/// stream's device and file number; a program started with another standard error inherits the
/// variable all the same.
bool standardErrorIsTheJournal() {
    const char* stream = std::getenv("JOURNAL_STREAM");
    struct stat status {};
    if (!stream || fstat(STDERR_FILENO, &status) != 0) return false;
    return std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino) == stream;
}

bool isDebugged(std::string_view topic) {
    const char* value = std::getenv("TARNWICK_DEBUG");
    for (std::string_view left = value ? value : ""; !left.empty();) {
        const std::size_t end = std::min(left.find(','), left.size());
        if (left.substr(0, end) == topic) return true;
        left.remove_prefix(std::min(end + 1, left.size()));
    }
    return false;
}

/// In one piece where possible, so that lines of several programs do not mix.
void writeToStandardError(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(STDERR_FILENO, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return;
        }
    }
}

}  // namespace

void NSLog(const std::string& text) {
    std::string line = printableLine(text);
    std::shared_ptr<const Sink> sink;
    {
        const std::lock_guard lock(sinkSlot().mutex);
        sink = sinkSlot().sink;
    }
    if (sink) {
        (*sink)(line);
        return;
    }
    if (!standardErrorIsTheJournal()) syslog(LOG_USER | LOG_INFO, "%s", line.c_str());
    writeToStandardError(line += '\n');
}

void setLogSink(Sink sink) {
    auto shared = sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr;
    const std::lock_guard lock(sinkSlot().mutex);
    sinkSlot().sink.swap(shared);
}

void complain(std::string_view program, std::string_view what) {
    writeToStandardError(std::string(program) + ": " + printableLine(what) + "\n");
}

void debug(std::string_view topic, std::string_view what) {
    if (isDebugged(topic)) complain(topic, what);
}
