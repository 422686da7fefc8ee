#pragma once

#include <string>
#include <utility>
#include <vector>

namespace comparison {

/// How a mixer is used with a screen reader.
struct Reading {
    std::string name;
    /// Each action, and what the screen reader said after it.
    std::vector<std::pair<std::string, std::vector<std::string>>> words;
    /// The name and value of each slider that assistive technology can find.
    std::vector<std::string> sliders;
};

/// Opens the mixers one after another and uses them with the keyboard.
std::vector<Reading> readMixers();

}  // namespace comparison
