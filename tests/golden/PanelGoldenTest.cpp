#include "platform/celestial/SimulatedAudioDevice.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"
#include "platform/uikit/UILabel.hpp"
#include "shells/common/WidgetBundle.hpp"
#include "shells/desktop/PanelPicture.hpp"
#include "shells/panel/HostedWidget.hpp"
#include "tests/support/FakeRoleOutputs.hpp"
#include "tests/support/Golden.hpp"
#include "tests/support/MixerFiles.hpp"
#include "tests/support/Paper.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using namespace desktop;
using namespace shell;

namespace {

/// What the desktop program shows around the widget.
class GoldenPanel : public testing::Test {
 protected:
    GoldenPanel() {
        shell::installBackends();
        setLogSink([](const std::string&) {});
        UILabel::setDefaultTextColor(UIColor::whiteColor());
        setMachineModel("iPhone6,1");
        AVSystemController::setSharedAVSystemController(std::make_shared<SimulatedAudioDevice>());
    }
    ~GoldenPanel() override {
        AVSystemController::setSharedAVSystemController(nullptr);
        setPreferencesDirectory("");
        setLogSink({});
    }
    void expectGolden(const std::string& name) {
        const auto created = shell::createController(TARNWICK_BUNDLE_DIR);
        ASSERT_TRUE(created) << created.error();
        constexpr CGFloat parentWidth = 320;  // points
        HostedWidget widget(*created, parentWidth);
        const std::string path = pictures.path("panel.png");
        ASSERT_TRUE(paintPanelPicture(widget, panel, path));
        EXPECT_TRUE(fileMatchesGolden(path, name));
    }

    std::shared_ptr<PanelView> panel = std::make_shared<PanelView>();
    TemporaryFolder pictures;
    test::MixerFiles files;
};

TEST_F(GoldenPanel, HasTheRowsOnItAndAShadowAround) {
    setPreferencesDirectory(files.folder().string());
    files.writeCategories({{"Ringtone", "Ringtone"}, {"Audio/Video", "Media"}});
    expectGolden("panel@2x");
}

TEST_F(GoldenPanel, HasANoticeBelowTheRows) {
    setPreferencesDirectory(files.folder().string());
    files.writeCategories({{"Nobody", "Media"}});
    panel->setNotice("No sound server answers");
    expectGolden("panel-notice@2x");
}

TEST_F(GoldenPanel, LeadsToTheSettingsByAGearAndBelowANotice) {
    setPreferencesDirectory(files.folder().string());
    files.writeCategories({{"Ringtone", "Ringtone"}, {"Audio/Video", "Media"}});
    panel->setSettingsHandler([] {});
    panel->setNotice("No sound server answers");
    expectGolden("panel-settings@2x");
}

TEST_F(GoldenPanel, OffersOutputsForRolesBelowTheRows) {
    setPreferencesDirectory(files.folder().string());
    files.writeCategories({{"Ringtone", "Ringtone"}, {"Audio/Video", "Media"}});
    test::FakeRoleOutputs outputs;
    outputs.follow();
    panel->setOutputs(&outputs);
    expectGolden("panel-offer@2x");
}

TEST_F(GoldenPanel, TellsThatThereAreNoRows) {
    // In a home of its own, so that the picture names the same folder everywhere.
    setenv("HOME", files.folder().c_str(), 1);
    const std::filesystem::path folder = files.folder() / ".config/tarnwick";
    std::filesystem::create_directories(folder);
    files.writeCategories({});
    std::filesystem::rename(files.categoryFile(), folder / files.categoryFile().filename());
    setPreferencesDirectory(folder.string());
    expectGolden("panel-empty@2x");
}

}  // namespace
