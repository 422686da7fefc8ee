#pragma once

#include "platform/foundation/NSString.hpp"
#include "platform/uikit/UIView.hpp"

#include <functional>
#include <memory>

namespace shell {

/// A widget as the panel sees it, whatever kind of host its controller needs. Main thread.
class PanelWidget {
 public:
    PanelWidget() = default;
    virtual ~PanelWidget() = default;
    PanelWidget(const PanelWidget&) = delete;
    PanelWidget& operator=(const PanelWidget&) = delete;

    /// The widget's container, loaded on the first call.
    virtual std::shared_ptr<UIView> view() = 0;
    /// The preferred size in points: the last one reported, or the controller's answer if there is
    /// none.
    virtual CGSize preferredSize() = 0;
    /// The width of the widget's parent view in points, from the next presentation on. Ignored by a
    /// widget with a fixed width.
    virtual void setParentWidth(CGFloat /*width*/) {}
    virtual void present() = 0;
    virtual void dismiss() = 0;
    virtual bool isPresented() const = 0;
    /// Makes a presented widget read its volumes again.
    virtual void readAgain() = 0;
    /// Dismisses and presents a presented widget, so that it reads the mixer's files again: at
    /// once, or when none of its sliders is held. The focus stays in the row of its category.
    virtual void assembleAgain() {}
    /// The audio category of a slider of the presented widget; nil for any other view.
    virtual NSString categoryOf(const UIView& /*view*/) const { return std::nullopt; }
    /// Called after the preferred size has changed.
    virtual void setSizeHandler(std::function<void()> handler) = 0;
};

}  // namespace shell
