#pragma once

#include "platform/uikit/UIWindow.hpp"

#include <gdk/gdk.h>

#include <functional>
#include <memory>
#include <string>

namespace windowing {

/// A window as presented to assistive technology.
struct AccessibleWindow {
    std::shared_ptr<UIWindow> content;
    std::string title;
    /// Where the content's origin lies on the screen, in points.
    std::function<CGPoint()> originOnScreen;
};

enum class WindowActivity { Active, Inactive };

/// Presents a window to assistive technology while it exists. It is in a module of its own, which
/// is loaded only while assistive technology runs. Main thread.
class AccessibilityBridge {
 public:
    virtual ~AccessibilityBridge() = default;
    /// The content may have changed: compares it with what was last announced.
    virtual void contentMayHaveChanged() = 0;
    /// The window has got or lost the keyboard.
    virtual void activityChanged(WindowActivity activity) = 0;
    /// Reports a key press or release in the window, and waits for the answer. True if it is a
    /// command for assistive technology and must not reach the window.
    virtual bool takesKey(const GdkEventKey& event) = 0;
};

/// The function that the module exports under this name. The caller owns the result, and the module
/// stays loaded until the process ends; nullptr if assistive technology cannot be reached.
using AccessibilityEntry = AccessibilityBridge* (*)(const AccessibleWindow& window);
inline constexpr const char* accessibilityEntryName = "tarnwick_accessibility_open";
inline constexpr const char* accessibilityModuleFile = "tarnwick-accessibility.so";

}  // namespace windowing
