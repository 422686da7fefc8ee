#pragma once

#include "platform/foundation/NSRunLoop.hpp"

/// The main loop's clock for one scope; it moves only when told to.
class VirtualClock {
 public:
    VirtualClock() {
        NSRunLoop::mainRunLoop().setClock([this] { return now_; });
    }
    ~VirtualClock() { NSRunLoop::mainRunLoop().setClock({}); }
    VirtualClock(const VirtualClock&) = delete;
    VirtualClock& operator=(const VirtualClock&) = delete;

    double now() const { return now_; }
    void advance(double seconds) { now_ += seconds; }

 private:
    double now_ = 1000;
};
