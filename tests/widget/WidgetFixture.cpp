#include "tests/widget/WidgetFixture.hpp"

#include "backends/cairo/CairoImageDecoder.hpp"
#include "backends/plist/PlistCodec.hpp"
#include "platform/foundation/MachineModel.hpp"
#include "platform/foundation/NSLog.hpp"
#include "platform/foundation/NSPropertyList.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "platform/foundation/PreferencesDirectory.hpp"

#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

void writeFile(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path) << text;
}

std::string propertyList(const std::string& root) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\">" + root + "</plist>";
}

}  // namespace

std::string record(const std::string& name, const std::string& pretty, const std::string& visible) {
    return "<dict><key>categoryName</key><string>" + name +
           "</string><key>prettyCategoryName</key><string>" + pretty + "</string>" +
           (visible.empty() ? "" : "<key>visible</key>" + visible) + "</dict>";
}

bool ScriptedService::getVolume(float& volume, const NSString& category) {
    volumesAsked.push_back(category);
    const auto found = volumes.find(category.value_or(""));
    if (found == volumes.end()) return false;
    volume = found->second;
    return true;
}

bool ScriptedService::setVolumeTo(float volume, const NSString& category) {
    sets.emplace_back(category, volume);
    return true;
}

// Both are for those beside the widget, which knows no mute.
std::optional<AVSystemController::Level> ScriptedService::levelOf(const NSString& category) {
    ADD_FAILURE() << "somebody asked for the level of " << describe(category);
    return std::nullopt;
}

bool ScriptedService::setMute(Mute /*mute*/, const NSString& category) {
    ADD_FAILURE() << "somebody muted " << describe(category);
    return false;
}

NSString ScriptedService::routeForCategory(const NSString& category) {
    routesAsked.push_back(category);
    const auto found = routes.find(category.value_or(""));
    return found == routes.end() ? std::nullopt : NSString(found->second);
}

void WidgetTest::SetUp() {
    std::string name = (std::filesystem::temp_directory_path() / "tarnwick-XXXXXX").string();
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    folder = name;
    setPreferencesDirectory(folder.string());
    NSPropertyList::setCodec(std::make_shared<PlistCodec>());
    UIImageDecoder::setDecoder(std::make_shared<painting::CairoImageDecoder>());
    setMachineModel("iPhone6,1");
    setLogSink([this](const std::string& line) { log.push_back(line); });
    NSRunLoop::mainRunLoop().setClock([] { return 0.0; });
    service = std::make_shared<ScriptedService>();
    for (const char* category :
         {"Ringtone", "Audio/Video", "HeadsetBT", "HeadphonesBT", "PhoneCall", "VideoConference"}) {
        service->volumes[category] = 0.5F;
        service->routes[category] = "Speaker";
    }
    AVSystemController::setSharedAVSystemController(service);
    bundle = NSBundle::bundleWithPath(TARNWICK_BUNDLE_DIR);
    ASSERT_NE(bundle, nullptr);
}

void WidgetTest::TearDown() {
    setLogSink({});
    AVSystemController::setSharedAVSystemController(nullptr);
    setPreferencesDirectory("");
    setMachineModel("");
    std::filesystem::remove_all(folder);
}

std::filesystem::path WidgetTest::settingsFile() const {
    return folder / "org.tarnwick.mixerprefs.plist";
}

std::filesystem::path WidgetTest::categoryFile() const {
    return folder / "org.tarnwick.mixer.categories.plist";
}

void WidgetTest::writeSettings(const std::string& entries) const {
    writeFile(settingsFile(), propertyList("<dict>" + entries + "</dict>"));
}

void WidgetTest::writeCategories(const std::string& records) const {
    writeCategoryFile(propertyList("<array>" + records + "</array>"));
}

void WidgetTest::writeCategoryFile(const std::string& text) const {
    writeFile(categoryFile(), text);
}

std::string WidgetTest::categoryFileText() const {
    std::ostringstream text;
    text << std::ifstream(categoryFile()).rdbuf();
    return text.str();
}

std::shared_ptr<MixerUnderTest> WidgetTest::newMixer(CGFloat width) {
    parent = std::make_shared<UIView>(CGRectMake(0, 0, width, 300));
    auto mixer = std::make_shared<MixerUnderTest>(CGRectMake(0, 0, width, 300));
    parent->addSubview(mixer);
    return mixer;
}

std::shared_ptr<MixerUnderTest> WidgetTest::assembledMixer(CGFloat width) {
    auto mixer = newMixer(width);
    assemble(*mixer);
    return mixer;
}

void WidgetTest::assemble(MixerUnderTest& mixer) {
    mixer.loadFullViewWithResourcesBundle(bundle);
}

void WidgetTest::announce(const NSString& category, std::optional<double> volume) {
    PropertyValue::Dictionary userInfo;
    if (category)
        userInfo.emplace_back("AVSystemController_EffectiveVolumeNotificationParameter_Category",
                              PropertyValue(*category));
    if (volume)
        userInfo.emplace_back("AVSystemController_EffectiveVolumeNotificationParameter_Volume",
                              PropertyValue(*volume));
    NSNotificationCenter::defaultCenter().postNotificationName(
        "AVSystemController_EffectiveVolumeDidChangeNotification", nullptr,
        PropertyValue(std::move(userInfo)));
}

std::size_t WidgetTest::timesLogged(const std::string& line) const {
    return static_cast<std::size_t>(std::ranges::count(log, line));
}
