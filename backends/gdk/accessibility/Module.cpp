#include "backends/gdk/accessibility/Application.hpp"
#include "backends/gdk/accessibility/Frame.hpp"

#include <atk-bridge.h>

namespace windowing {

namespace {

class Bridge : public AccessibilityBridge {
 public:
    explicit Bridge(const AccessibleWindow& window)
        : frame_(newFrame(accessibleApplication(), window)) {
        tellFrameChanges(frame_.get());
        addToApplication(frame_.get());
    }
    ~Bridge() override { removeFromApplication(frame_.get()); }
    Bridge(const Bridge&) = delete;
    Bridge& operator=(const Bridge&) = delete;

    void contentMayHaveChanged() override { tellFrameChanges(frame_.get()); }
    void activityChanged(WindowActivity activity) override {
        tellFrameActivity(frame_.get(), activity);
    }
    bool takesKey(const GdkEventKey& event) override { return tellKeyListeners(event); }

 private:
    AtkObjectPtr frame_;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) AccessibilityBridge* tarnwick_accessibility_open(
    const AccessibleWindow& window) {
    accessibleApplication();  // The library's bridge wants to know the root at once.
    if (atk_bridge_adaptor_init(nullptr, nullptr) != 0) return nullptr;
    return std::make_unique<Bridge>(window).release();
}

}  // namespace windowing
