#include "shells/headless/WidgetHost.hpp"

namespace headless {

bool WidgetHostDelegate::respondsToSelector(std::string_view selector) const {
    return selector == sizeSelector && responds_ == YesNo::Yes;
}

void WidgetHostDelegate::widget(const std::shared_ptr<SBUIWidgetHost>& /*host*/,
                                const CGSize& preferredSize) {
    events_.write({{"event", "host"},
                   {"selector", sizeSelector},
                   {"width", jsonNumber(preferredSize.width)},
                   {"height", jsonNumber(preferredSize.height)}});
}

bool WidgetHost::respondsToSelector(std::string_view selector) const {
    return selector == invalidateSelector && responds_ == YesNo::Yes;
}

void WidgetHost::invalidatePreferredViewSize() {
    events_.write({{"event", "host"}, {"selector", invalidateSelector}});
}

bool WidgetHost::setResponds(std::string_view selector, YesNo responds) {
    if (selector == invalidateSelector)
        responds_ = responds;
    else if (selector == WidgetHostDelegate::sizeSelector)
        delegate_->setResponds(responds);
    else
        return false;
    return true;
}

}  // namespace headless
