#pragma once

#include "platform/foundation/NSString.hpp"
#include "shells/common/Options.hpp"
#include "shells/headless/Answer.hpp"
#include "shells/headless/Timeline.hpp"

#include <optional>
#include <vector>

namespace headless {

enum class ServerKind { Simulated, Pulse };

/// The choices on the headless program's command line.
struct HeadlessOptions {
    shell::CommonOptions common;
    std::optional<double> parentWidth;  ///< Points; nullopt: no parent view controller.
    std::optional<ClockKind> chosenClock;
    ServerKind server = ServerKind::Simulated;
    NSString serverAddress;  ///< As libpulse takes it; nil: where it finds one.

    /// A server uses the system's clock, a simulated device the manual one unless told otherwise.
    ClockKind clock() const;
};

/// The program's options; they write into `target`, which must outlive them.
std::vector<shell::Option> headlessOptions(HeadlessOptions& target);

/// The error of options that exclude each other.
Problem contradictionIn(const HeadlessOptions& options);

}  // namespace headless
