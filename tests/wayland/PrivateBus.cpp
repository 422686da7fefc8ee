#include "tests/wayland/PrivateBus.hpp"

#include "tests/rigs/UnixSocket.hpp"
#include "tests/rigs/Waiting.hpp"

#include <stdexcept>

namespace test {
namespace {

std::string configuration(const std::string& address) {
    return "<busconfig><type>session</type><listen>" + address +
           "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
           "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
           "<allow own=\"*\"/></policy></busconfig>\n";
}

}  // namespace

PrivateBus::PrivateBus(rigs::ServerFolder& folder) : socket_(folder.path() / "session-bus") {
    folder.write("session-bus.conf", configuration(address()));
    daemon_ = ChildProcess(
        {"dbus-daemon", "--config-file=" + (folder.path() / "session-bus.conf").string(),
         "--nofork", "--nopidfile", "--nosyslog"},
        {.environment = folder.environment(), .log = folder.log()});
    if (!rigs::waitUntil([this] { return rigs::takesConnections(socket_); }))
        throw std::runtime_error("no bus: " + folder.logged());
}

}  // namespace test
