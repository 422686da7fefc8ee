#pragma once

#include "platform/uikit/Geometry.hpp"

#include <map>
#include <memory>
#include <string>
#include <vector>

// The library's own header turns everyday words into macros.
typedef struct _XDisplay Display;

namespace test {

struct XClose {
    void operator()(Display* display) const;
};
using XConnection = std::unique_ptr<Display, XClose>;

/// Sees which parts of a window are painted.
class PaintWatch {
 public:
    PaintWatch(const std::string& displayName, unsigned long window);
    /// What has been painted since the last call, in pixels of the window.
    std::vector<CGRect> take();

 private:
    XConnection display_;
    int damageEvent_ = 0;
};

/// Says that windows may have shadows of their own, for as long as it lives, as most window
/// managers do. Programs look for one at most once in 15 seconds: best before the first window.
class WindowManager {
 public:
    explicit WindowManager(const std::string& displayName);

 private:
    XConnection display_;
};

/// Says that windows are blended with what lies below them, for as long as it lives, as a
/// compositing manager does when it starts.
class Compositor {
 public:
    explicit Compositor(const std::string& displayName);

 private:
    XConnection display_;
};

/// Tells programs the desktop's settings, for as long as it lives: by the names of the settings
/// protocol ("Xft/Antialias"), whole numbers only.
class SettingsManager {
 public:
    explicit SettingsManager(const std::string& displayName);
    void set(const std::map<std::string, int>& settings);

 private:
    XConnection display_;
    unsigned long window_ = 0;
    unsigned serial_ = 0;
};

}  // namespace test
