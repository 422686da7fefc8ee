#include "shells/control/LoopUntilEnd.hpp"

#include <glib-unix.h>
#include <unistd.h>

#include <csignal>

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
    // Without it the program would outlive its reader until the next change.
    sources_.push_back(g_unix_fd_add(STDOUT_FILENO, G_IO_ERR, readerGone, this));
}

LoopUntilEnd::~LoopUntilEnd() {
    for (const guint source : sources_)
        g_source_remove(source);
}

}  // namespace control
