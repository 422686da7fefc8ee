#pragma once

#include "platform/foundation/NSString.hpp"
#include "platform/uikit/UIView.hpp"

#include <functional>
#include <memory>

/// A widget as the panel sees it, whatever kind of host its controller wants. Main thread.
class PanelWidget {
 public:
    PanelWidget() = default;
    virtual ~PanelWidget() = default;
    PanelWidget(const PanelWidget&) = delete;
    PanelWidget& operator=(const PanelWidget&) = delete;

    /// The widget's container, loaded when first asked for.
    virtual std::shared_ptr<UIView> view() = 0;
    /// Points. What the widget last said, or says when it has not been asked yet.
    virtual CGSize preferredSize() = 0;
    /// From the next presentation on: the width of the view that the widget is put into, in points.
    /// Of no concern to one that has a width of its own.
    virtual void setParentWidth(CGFloat /*width*/) {}
    virtual void present() = 0;
    virtual void dismiss() = 0;
    virtual bool isPresented() const = 0;
    /// Lets it read its volumes again, while it is presented.
    virtual void readAgain() = 0;
    /// The audio category whose slider that view is, while it is presented; nil for any other view.
    virtual NSString categoryOf(const UIView& /*view*/) const { return std::nullopt; }
    /// Called after the preferred size has become another one.
    virtual void setSizeHandler(std::function<void()> handler) = 0;
};
