#include "shells/headless/HeadlessOptions.hpp"

#include "shells/headless/Words.hpp"

namespace headless {

ClockKind HeadlessOptions::clock() const {
    const bool isSimulated = server == ServerKind::Simulated;
    return chosenClock.value_or(isSimulated ? ClockKind::Manual : ClockKind::Real);
}

std::vector<shell::Option> headlessOptions(HeadlessOptions& target) {
    std::vector<shell::Option> options = shell::commonOptions(target.common);
    options.push_back({"--parent-width", "W",
                       "a parent view controller whose view is W points wide",
                       [&target](const std::string& value) -> Problem {
                           target.parentWidth = parentWidthFrom({value});
                           if (target.parentWidth) return std::nullopt;
                           return "W is a number from 0 to 100000";
                       }});
    options.push_back({"--clock", "manual|real", "whether only 'advance' and 'wait' move the clock",
                       [&target](const std::string& value) -> Problem {
                           if (value != "manual" && value != "real")
                               return "the clock is 'manual' or 'real'";
                           target.chosenClock =
                               value == "real" ? ClockKind::Real : ClockKind::Manual;
                           return std::nullopt;
                       }});
    options.push_back({"--server", "simulated|pulse", "where the volumes come from (simulated)",
                       [&target](const std::string& value) -> Problem {
                           if (value != "simulated" && value != "pulse")
                               return "the server is 'simulated' or 'pulse'";
                           target.server =
                               value == "pulse" ? ServerKind::Pulse : ServerKind::Simulated;
                           return std::nullopt;
                       }});
    options.push_back({"--server-address", "ADDRESS", "the sound server, as PULSE_SERVER names it",
                       [&target](const std::string& value) -> Problem {
                           if (value.empty()) return "the value is empty";
                           target.serverAddress = value;
                           return std::nullopt;
                       }});
    return options;
}

Problem contradictionIn(const HeadlessOptions& options) {
    const bool isPulse = options.server == ServerKind::Pulse;
    if (isPulse && options.clock() == ClockKind::Manual)
        return "--clock: a sound server goes by the real clock";
    if (!isPulse && options.serverAddress) return "--server-address: that is for '--server pulse'";
    return std::nullopt;
}

}  // namespace headless
