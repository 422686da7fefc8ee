#pragma once

#include <string>
#include <utility>
#include <vector>

namespace comparison {

/// What somebody who sees nothing gets of a mixer.
struct Reading {
    std::string name;
    /// What was done, and what the screen reader said then.
    std::vector<std::pair<std::string, std::vector<std::string>>> words;
    /// Every slider that it may ask for, as it is told: name and value.
    std::vector<std::string> sliders;
};

/// Opens the mixers one after the other and goes through them with the keyboard.
std::vector<Reading> readMixers();

}  // namespace comparison
