#pragma once

#include "platform/foundation/NSObject.hpp"
#include "platform/uikit/SBUIWidgetViewController.hpp"
#include "shells/common/RowKeeper.hpp"
#include "shells/panel/PanelWidget.hpp"

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace shell {

/// The common part of widgets with a controller, under either host. Main thread.
class ControllerWidget : public PanelWidget {
 public:
    bool isPresented() const final { return presented_; }
    /// Sends "updateValues" if the controller responds to it, otherwise presents the widget again.
    /// At once, or when no slider of the widget is held.
    void readAgain() final;
    void assembleAgain() final;
    NSString categoryOf(const UIView& view) const final;
    void setSizeHandler(std::function<void()> handler) final { sizeHandler_ = std::move(handler); }

 protected:
    virtual NSObject& controller() = 0;
    /// Both return whether the state changed.
    bool becomesPresented() { return !std::exchange(presented_, true); }
    bool becomesDismissed();
    /// The widget has assembled its rows, in its view.
    void rowsAreThere() { rows_.follow(view()); }
    void sizeHasChanged() const {
        if (sizeHandler_) sizeHandler_();
    }

 private:
    void readRows();
    void assemble();

    bool presented_ = false;
    bool isAssemblyWanted_ = false;  ///< At the next reading of the rows.
    std::function<void()> sizeHandler_;
    RowKeeper rows_{[this] { readRows(); }};
};

/// The parent view's width for a machine model, at most `room`; points.
CGFloat parentWidthForModel(const std::string& model,
                            CGFloat room = std::numeric_limits<CGFloat>::infinity());

/// A widget under its host: gives the controller a parent and a host to talk to, loads its view,
/// presents and dismisses it, and keeps its container at its preferred size.
///
///     HostedWidget widget(controller, parentWidthForModel(machineModel()));
///     panel->setWidgetView(widget.view());
///     widget.present();
///
/// Main thread.
class HostedWidget final : public ControllerWidget {
 public:
    /// `parentWidth` is in points.
    HostedWidget(std::shared_ptr<_SBUIWidgetViewController> controller, CGFloat parentWidth);
    /// Dismisses it if it is presented.
    ~HostedWidget() override;

    std::shared_ptr<UIView> view() override { return controller_->view(); }
    CGSize preferredSize() override;
    void setParentWidth(CGFloat width) override;
    void present() override;
    void dismiss() override;

 protected:
    NSObject& controller() override { return *controller_; }

 private:
    class Host;

    void preferredSizeIs(const CGSize& size);
    void askForSizeLater();

    std::shared_ptr<_SBUIWidgetViewController> controller_;
    std::shared_ptr<UIViewController> parent_;
    std::shared_ptr<Host> host_;
    std::optional<CGSize> size_;
    bool presenting_ = false;  ///< Within the widget's own hostWillPresent.
};

}  // namespace shell
