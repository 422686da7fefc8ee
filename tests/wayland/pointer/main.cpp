#include "tests/wayland/pointer/Pointer.hpp"

#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

/// "move X Y WIDTH HEIGHT", "press", "release", "swipe DX DY STEPS".
void obey(pointer::Pointer& hand, const std::string& line) {
    std::istringstream words(line);
    std::string command;
    words >> command;
    if (command == "move") {
        unsigned x = 0;
        unsigned y = 0;
        unsigned width = 0;
        unsigned height = 0;
        if (words >> x >> y >> width >> height) return hand.move(x, y, width, height);
    } else if (command == "press") {
        return hand.press();
    } else if (command == "release") {
        return hand.release();
    } else if (command == "swipe") {
        double dx = 0;
        double dy = 0;
        int steps = 0;
        if (words >> dx >> dy >> steps) return hand.swipe(dx, dy, steps);
    }
    throw std::runtime_error("cannot " + line);
}

}  // namespace

/// A pointer without a device, for a compositor without a screen: one command a line on standard
/// input, one line each as the answer.
int main() try {
    pointer::Pointer hand;
    std::cout << "ready" << std::endl;
    for (std::string line; std::getline(std::cin, line);) {
        obey(hand, line);
        std::cout << "done" << std::endl;
    }
    return 0;
} catch (const std::exception& error) {
    std::cout << "error: " << error.what() << std::endl;
    return 1;
}
