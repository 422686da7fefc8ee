#pragma once

#include "shells/headless/Session.hpp"

namespace headless {

enum class LoopEnd { Finished, InputFailed, OutputFailed };

/// Whether the lines written so far have reached the reader.
using OutputState = std::function<bool()>;

/// Hands the lines of a file descriptor to the session until its end or "quit". With the real
/// clock, timers and animations run while it waits.
LoopEnd runInputLoop(Session& session, int input, const OutputState& outputIsGood);

}  // namespace headless
