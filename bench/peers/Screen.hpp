#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// The library's own header turns everyday words into macros.
typedef struct _XDisplay Display;

namespace peers {

using Clock = std::chrono::steady_clock;

/// What a window showed at one moment.
struct Picture {
    unsigned width = 0;   ///< Pixels.
    unsigned height = 0;  ///< Pixels.
    std::vector<std::uint32_t> pixels;

    bool operator==(const Picture&) const = default;
    /// Whether there is more to see than a few plain areas.
    bool showsSomething() const;
    /// For whoever wants to see it, as a portable pixmap.
    void save(const std::string& file) const;
};

/// Sees from outside what a program paints into its window: the X server tells it.
class Screen {
 public:
    explicit Screen(const std::string& displayName);

    /// Looks for the next window that comes, and forgets the one before.
    void lookForNewWindow();
    /// Waits until the window is painted into, and answers when that was told; nothing
    /// past the deadline.
    std::optional<Clock::time_point> waitForPaint(Clock::time_point deadline);
    /// Of the window that came; empty without one.
    Picture picture();
    /// The server's number for it; 0 without one.
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
