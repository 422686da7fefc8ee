#pragma once

#include <gdk/gdk.h>

/// A press beside a drawer, watched until it is let go. The drawer keeps the pointer that long:
/// what lies under it, a tray's icon for one, may take a release alone for a click.
class OutsidePress {
 public:
    /// What an event is of it: nothing, a part, or its end.
    enum class Step { None, Part, End };

    /// `isOutside` says where the event is, if it is a press.
    Step step(const GdkEvent& event, bool isOutside);

 private:
    bool isHeld_ = false;
};
