#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// The library's header defines macros with common names, so its types are declared here.
typedef struct _XDisplay Display;

namespace peers {

using Clock = std::chrono::steady_clock;

/// A window's content at one moment.
struct Picture {
    unsigned width = 0;   ///< Pixels.
    unsigned height = 0;  ///< Pixels.
    std::vector<std::uint32_t> pixels;

    bool operator==(const Picture&) const = default;
    /// Whether it shows more than a few plain areas.
    bool showsSomething() const;
    /// Saves it as a portable pixmap.
    void save(const std::string& file) const;
};

/// Observes from outside what a program paints into its window, by the X server's damage events.
class Screen {
 public:
    explicit Screen(const std::string& displayName);

    /// Forgets the current window and waits for the next one to appear.
    void lookForNewWindow();
    /// Waits until something is painted into the window. Returns when the event arrived, or
    /// nullopt after the deadline.
    std::optional<Clock::time_point> waitForPaint(Clock::time_point deadline);
    /// The window's content; empty if there is no window.
    Picture picture();
    /// The window's id; 0 if there is none.
    unsigned long window() const { return window_; }

 private:
    struct Close {
        void operator()(Display* display) const;
    };
    bool takeEvent();

    std::unique_ptr<Display, Close> display_;
    int damageEvent_ = 0;
    unsigned long window_ = 0;
};

}  // namespace peers
