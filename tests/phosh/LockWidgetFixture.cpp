#include "tests/phosh/LockWidgetFixture.hpp"

#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UILabel.hpp"
#include "platform/uikit/UISlider.hpp"
#include "platform/uikit/UIView.hpp"
#include "platform/uikit/UIWindow.hpp"
#include "tests/desktop/XServer.hpp"
#include "tests/rigs/Waiting.hpp"

#include <cstdlib>

namespace test {
namespace {

constexpr const char* identifier = "org.tarnwick.mixer.";

/// One server and one connection for the whole program, as the toolkit opens no second one.
void openDisplay() {
    static const XServer& server = *std::make_unique<XServer>().release();
    setenv("DISPLAY", server.displayName().c_str(), 1);
    setenv("GDK_BACKEND", "x11", 1);
    setenv("NO_AT_BRIDGE", "1", 1);
    setenv("GSETTINGS_BACKEND", "memory", 1);
    unsetenv("GDK_SCALE");
    ASSERT_TRUE(gtk_init_check(nullptr, nullptr)) << "Xvfb does not start";
    // The toolkit's complaints about what it is asked are failures.
    g_log_set_always_fatal(
        static_cast<GLogLevelFlags>(G_LOG_FATAL_MASK | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING));
}

std::vector<std::shared_ptr<UIView>> elements() {
    std::vector<std::shared_ptr<UIView>> all;
    for (const auto& window : UIWindow::windows())
        for (const auto& element : accessibilityElements(window))
            all.push_back(element);
    return all;
}

}  // namespace

LockWidgetFixture::LockWidgetFixture() {
    openDisplay();
    setenv("PULSE_SERVER", folder.address().c_str(), 1);
    setLogSink([](const std::string&) {});
    setPreferencesDirectory(files.folder().string());
    const auto note = [this](const NSNotification& notification) {
        if (notification.name.starts_with(identifier))
            announced.push_back(notification.name.substr(std::string(identifier).size()));
    };
    NSNotificationCenter::defaultCenter().add(observer_, note, std::nullopt, nullptr);
}

LockWidgetFixture::~LockWidgetFixture() {
    screen.reset();
    // A volume on its way keeps the connection a moment longer.
    EXPECT_TRUE(rigs::waitUntil([] { return !AVSystemController::sharedAVSystemController(); }));
    NSNotificationCenter::defaultCenter().removeObserver(observer_.get());
    setPreferencesDirectory("");
    setLogSink({});
    unsetenv("TARNWICK_BUNDLE");
}

void LockWidgetFixture::lock(int width, int height) {
    screen = std::make_unique<LockedScreen>(width, height);
}

void LockWidgetFixture::lockAtMixer() {
    lock();
    screen->showAtMixer();
    ASSERT_TRUE(waitUntilPresented());
}

/// A window may be in another size for a moment after it was made.
bool LockWidgetFixture::waitUntilPresented() const {
    return rigs::waitUntil([this] { return isPresented() && screen->isLaidOut(); });
}

bool LockWidgetFixture::waitUntilDismissed() const {
    return rigs::waitUntil([this] { return !announced.empty() && announced.back() == "ishidden"; });
}

std::vector<std::shared_ptr<UISlider>> LockWidgetFixture::sliders() {
    std::vector<std::shared_ptr<UISlider>> found;
    for (const auto& element : elements())
        if (const auto slider = std::dynamic_pointer_cast<UISlider>(element))
            found.push_back(slider);
    return found;
}

std::vector<std::string> LockWidgetFixture::labels() {
    std::vector<std::string> texts;
    for (const auto& element : elements())
        if (std::dynamic_pointer_cast<UILabel>(element))
            texts.push_back(element->accessibilityLabel().value_or("nil"));
    return texts;
}

CGPoint LockWidgetFixture::middleOf(const UISlider& slider) {
    slider.window()->layoutIfNeeded();
    const CGSize size = slider.frame().size;
    return slider.convertPointToView({size.width / 2, size.height / 2}, nullptr);
}

}  // namespace test
