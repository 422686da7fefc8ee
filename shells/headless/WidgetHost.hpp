#pragma once

#include "platform/uikit/SBUIWidgetViewController.hpp"
#include "shells/headless/Events.hpp"
#include "shells/headless/Words.hpp"

#include <memory>
#include <string_view>

namespace headless {

/// Reports the sizes that widgets tell the host's delegate.
class WidgetHostDelegate : public SBUIWidgetHostDelegate {
 public:
    static constexpr std::string_view sizeSelector = "widget:didUpdatePreferredSize:";

    explicit WidgetHostDelegate(EventSink& events) : events_(events) {}
    std::string_view className() const override { return "WidgetHostDelegate"; }
    bool respondsToSelector(std::string_view selector) const override;
    void setResponds(YesNo responds) { responds_ = responds; }
    void widget(const std::shared_ptr<SBUIWidgetHost>& host, const CGSize& preferredSize) override;

 private:
    EventSink& events_;
    YesNo responds_ = YesNo::Yes;
};

/// The host that the controller talks to. Responds to both optional messages by default.
class WidgetHost : public SBUIWidgetHost {
 public:
    static constexpr std::string_view invalidateSelector = "invalidatePreferredViewSize";

    explicit WidgetHost(EventSink& events)
        : events_(events), delegate_(std::make_shared<WidgetHostDelegate>(events)) {}
    std::string_view className() const override { return "WidgetHost"; }
    bool respondsToSelector(std::string_view selector) const override;
    std::shared_ptr<SBUIWidgetHostDelegate> delegate() override { return delegate_; }
    void invalidatePreferredViewSize() override;

    /// False if neither the host nor its delegate knows the selector.
    bool setResponds(std::string_view selector, YesNo responds);

 private:
    EventSink& events_;
    std::shared_ptr<WidgetHostDelegate> delegate_;
    YesNo responds_ = YesNo::Yes;
};

}  // namespace headless
