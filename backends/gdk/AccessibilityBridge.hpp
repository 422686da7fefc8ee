#pragma once

#include "platform/uikit/UIWindow.hpp"

#include <gdk/gdk.h>

#include <functional>
#include <memory>
#include <string>

/// A window as assistive technology is to see it.
struct AccessibleWindow {
    std::shared_ptr<UIWindow> content;
    std::string title;
    /// Where the content's origin lies on the screen, in points.
    std::function<CGPoint()> originOnScreen;
};

enum class WindowActivity { Active, Inactive };

/// Tells assistive technology what a window shows, for as long as it lives. It lies in a module of
/// its own, which is loaded only where somebody listens. Main thread.
class AccessibilityBridge {
 public:
    virtual ~AccessibilityBridge() = default;
    /// What is shown may have changed: compares it with what was told before.
    virtual void contentMayHaveChanged() = 0;
    /// The window has got or lost the keyboard.
    virtual void activityChanged(WindowActivity activity) = 0;
    /// Tells a key of the window that goes down or up. True when it is a command to the assistive
    /// technology, and so none to the window; it is asked, and waited for.
    virtual bool takesKey(const GdkEventKey& event) = 0;
};

/// What the module exports, by this name. The caller owns the result, and the module stays loaded
/// until the process ends; nullptr when assistive technology cannot be reached.
using AccessibilityEntry = AccessibilityBridge* (*)(const AccessibleWindow& window);
inline constexpr const char* accessibilityEntryName = "tarnwick_accessibility_open";
inline constexpr const char* accessibilityModuleFile = "tarnwick-accessibility.so";
