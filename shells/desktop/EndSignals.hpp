#pragma once

#include <glib.h>

#include <array>
#include <csignal>
#include <functional>
#include <utility>

/// Tells when the program is to end, as by Ctrl-C in its terminal or at the session's end, so that
/// it can do so in good order: the widget is dismissed and the last volume arrives.
class EndSignals {
 public:
    explicit EndSignals(std::function<void()> end);
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

 private:
    static constexpr std::array signals = {SIGINT, SIGTERM, SIGHUP};

    std::function<void()> end_;
    std::array<guint, signals.size()> sources_{};
};
