#pragma once

#include "platform/foundation/NSString.hpp"
#include "shells/common/CommonOptions.hpp"
#include "shells/headless/Answer.hpp"
#include "shells/headless/Timeline.hpp"

#include <optional>
#include <vector>

namespace headless {

enum class ServerKind { Simulated, Pulse };

/// What the user of the headless program chose.
struct HeadlessOptions {
    shell::CommonOptions common;
    std::optional<double> parentWidth;  ///< Points; nullopt: no parent view controller.
    std::optional<ClockKind> chosenClock;
    ServerKind server = ServerKind::Simulated;
    NSString serverAddress;  ///< As libpulse takes it; nil: where it finds one.

    /// A server goes by the system's clock, a simulated device by the manual one unless told.
    ClockKind clock() const;
};

/// The program's options; they write into `target`, which must outlive them.
std::vector<shell::Option> headlessOptions(HeadlessOptions& target);

/// What does not fit together among the options.
Failure contradictionIn(const HeadlessOptions& options);

}  // namespace headless
