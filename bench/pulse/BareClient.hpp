#pragma once

#include "tests/rigs/OtherProgram.hpp"

#include <functional>
#include <string>

/// A program on the client library alone: sets a device's volume and reads it again at every event.
class BareClient {
 public:
    enum class Settling { None, AsTheService };

    /// Connects and waits until the server has described the device of that name.
    BareClient(const std::string& address, std::string sink, Settling settling);
    BareClient(const BareClient&) = delete;
    BareClient& operator=(const BareClient&) = delete;
    ~BareClient();

    void set(unsigned volume) { program_.sendSinkVolume(sink_, volume); }
    unsigned known() const { return known_; }
    /// Called with each new volume.
    void setHandler(std::function<void(unsigned volume)> handler) { handler_ = std::move(handler); }

 private:
    void subscribe();
    void read();
    void answered(unsigned volume);
    void tell();

    rigs::OtherProgram program_;
    std::string sink_;
    Settling settling_;
    unsigned known_ = 0;
    unsigned told_ = 0;
    unsigned timer_ = 0;
    std::function<void(unsigned)> handler_;
};
