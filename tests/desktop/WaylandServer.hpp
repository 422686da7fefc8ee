#pragma once

#include "tests/processes/ChildProcess.hpp"

#include <filesystem>
#include <string>

namespace test {

/// A Wayland compositor without a screen to look at, for this test program alone; it ends with it.
/// The environment of the program leads to it from then on.
class WaylandServer {
 public:
    WaylandServer();
    ~WaylandServer();
    WaylandServer(const WaylandServer&) = delete;
    WaylandServer& operator=(const WaylandServer&) = delete;

    bool isRunning() const { return running_; }

 private:
    std::filesystem::path folder_;
    ChildProcess process_;
    bool running_ = false;
};

}  // namespace test
