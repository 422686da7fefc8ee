#include "shells/control/Watcher.hpp"

#include <glib-unix.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace control {

LoopUntilEnd::LoopUntilEnd() : loop_(g_main_loop_new(nullptr, FALSE)) {
    const auto interrupted = +[](gpointer self) -> gboolean {
        static_cast<LoopUntilEnd*>(self)->end();
        return G_SOURCE_CONTINUE;
    };
    const auto readerGone = +[](gint, GIOCondition, gpointer self) -> gboolean {
        static_cast<LoopUntilEnd*>(self)->end();
        return G_SOURCE_CONTINUE;
    };
    for (const int signal : {SIGINT, SIGTERM})
        sources_.push_back(g_unix_signal_add(signal, interrupted, this));
    // Otherwise the program would run on until its next write fails.
    sources_.push_back(g_unix_fd_add(STDOUT_FILENO, G_IO_ERR, readerGone, this));
}

LoopUntilEnd::~LoopUntilEnd() {
    for (const guint source : sources_)
        g_source_remove(source);
}

Watcher::Watcher(Service& service, CategoryList categories, LineFor lineFor, Tell tell)
    : service_(service),
      categories_(std::move(categories)),
      lineFor_(std::move(lineFor)),
      tell_(std::move(tell)) {
    for (const CategoryRecord& record : categories_)
        told_.push_back(lineNow(record));
    NSNotificationCenter::defaultCenter().add(
        observer_, [this](const NSNotification&) { compare(); },
        AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
    service_.volumes().setAvailabilityHandler([this] { compare(); });
}

Watcher::~Watcher() {
    service_.volumes().setAvailabilityHandler({});
    NSNotificationCenter::defaultCenter().removeObserver(observer_.get());
}

void Watcher::compare() {
    for (std::size_t i = 0; i < categories_.size(); ++i) {
        const std::string now = lineNow(categories_[i]);
        if (std::exchange(told_[i], now) != now) tell_(now);
    }
}

}  // namespace control
