#include "shells/desktop/EndSignals.hpp"

#include <glib-unix.h>

EndSignals::EndSignals(std::function<void()> end) : end_(std::move(end)) {
    const auto tell = +[](gpointer self) -> gboolean {
        static_cast<EndSignals*>(self)->end_();
        return G_SOURCE_CONTINUE;
    };
    for (std::size_t i = 0; i < signals.size(); ++i)
        sources_[i] = g_unix_signal_add(signals[i], tell, this);
}

EndSignals::~EndSignals() {
    for (const guint source : sources_)
        g_source_remove(source);
}
