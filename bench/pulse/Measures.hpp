#pragma once

#include "tests/rigs/SoundServer.hpp"

#include <string>
#include <vector>

/// Milliseconds, in the order of measurement.
using Samples = std::vector<double>;

/// One action done by the bare client and by the service in turns.
struct Comparison {
    std::string what;
    Samples bare;
    Samples service;
};

/// Runs every measure on the running server.
std::vector<Comparison> measure(const rigs::SoundServer& server);
