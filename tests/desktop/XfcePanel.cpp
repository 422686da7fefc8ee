#include "tests/desktop/XfcePanel.hpp"

#include "tests/rigs/Waiting.hpp"

#include <csignal>
#include <stdexcept>
#include <string_view>

namespace test {
namespace {

constexpr const char* panelClass = "Xfce4-panel";

/// Above, over the whole width: perhaps the button, an empty part that takes what is left, and the
/// tray.
constexpr const char* configuration = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array">
        @BUTTON@<value type="int" value="1"/>
        <value type="int" value="2"/><value type="int" value="3"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray"/>
    <property name="plugin-3" type="string" value="separator">
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-4" type="string" value="pulseaudio"/>
  </property>
</channel>
)";

std::string configurationWith(VolumeButton button) {
    constexpr std::string_view place = "@BUTTON@";
    std::string text = configuration;
    return text.replace(text.find(place), place.size(),
                        button == VolumeButton::Here ? R"(<value type="int" value="4"/>)" : "");
}

}  // namespace

XfcePanel::XfcePanel(const UserSession& session, VolumeButton button) : session_(session) {
    session.folder.write("config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml",
                         configurationWith(button));
    process_ = ChildProcess({"xfce4-panel", "--disable-wm-check"},
                            {.environment = session.environment(), .log = session.folder.log()});
    const auto isPainted = [&] {
        const auto windows = session.screen.windowsOf(panelClass);
        return !windows.empty() && session.screen.picture().at(5, thickness / 2) != 0;
    };
    if (!rigs::waitUntil(isPainted)) throw std::runtime_error("no panel: " + session.logged());
}

CGRect XfcePanel::place() const {
    return session_.screen.windowsOf(panelClass).at(0);
}

CGPoint XfcePanel::waitForIcon(const ScreenPicture& before) const {
    CGRect icon;
    const auto isThere = [&] {
        icon = session_.screen.picture().difference(before);
        constexpr CGFloat leastSize = 10;  // Until then it is being painted.
        return icon.size.width >= leastSize && icon.size.height >= leastSize &&
               CGRectGetMaxY(icon) <= thickness;
    };
    if (!rigs::waitUntil(isThere)) throw std::runtime_error("no icon: " + session_.logged());
    return {CGRectGetMidX(icon), CGRectGetMidY(icon)};
}

void XfcePanel::end() {
    process_.signal(SIGTERM);
    process_.wait();
}

}  // namespace test
