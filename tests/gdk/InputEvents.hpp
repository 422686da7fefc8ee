#pragma once

#include "platform/uikit/UIWindow.hpp"

#include <gdk/gdk.h>

#include <string>
#include <vector>

/// Events as GDK delivers them, without a display.
GdkEvent buttonEvent(GdkEventType type, double x, double y, guint button = GDK_BUTTON_PRIMARY);
GdkEvent motionEvent(double x, double y);
/// `finger` stands for the sequence, of which GDK shows only the address.
GdkEvent touchEvent(GdkEventType type, int finger, double x, double y);
GdkEvent wheelEvent(GdkScrollDirection direction, guint state = 0);
GdkEvent smoothEvent(double deltaX, double deltaY, guint state = 0);
GdkEvent keyEvent(guint keyval, guint state = 0);
GdkEvent leaveEvent(GdkCrossingMode mode);

/// Writes down the input that comes to it: "began 1,2", "scrolled 3", "key End".
class InputRecorder : public UIView {
 public:
    using UIView::UIView;

    std::vector<std::string> log;

    void touchesBegan(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesMoved(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesEnded(const UITouchSet& touches, const std::shared_ptr<UIEvent>& event) override;
    void touchesCancelled(const UITouchSet& touches,
                          const std::shared_ptr<UIEvent>& event) override;
    bool scrolled(const CGPoint& point, double steps) override;
    bool keyPressed(UIKey key) override;
    bool canBecomeFocused() const override { return true; }

 private:
    void record(const char* what, const UITouchSet& touches);
};
