#pragma once

#include "tests/rigs/SoundServer.hpp"

/// What the outputs for roles cost on one server: without them and with them, in the same run.
struct OutputsCost {
    struct Side {
        double latencyMs = 0;       ///< From a program to the real sink's monitor; the median.
        double playingPercent = 0;  ///< Of one processor core, the server's processes together.
        double idlePercent = 0;     ///< The same while nothing plays.
    };
    Side plain;
    Side apart;
};

/// Switches the outputs on and off on the running server, and measures in turns.
OutputsCost measureOutputs(const rigs::SoundServer& server);
