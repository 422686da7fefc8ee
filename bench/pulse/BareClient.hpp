#pragma once

#include "tests/rigs/OtherProgram.hpp"

#include <functional>
#include <string>

/// What a program does that uses the client library and nothing else: it sets a device's volume,
/// and reads it anew at every event.
class BareClient {
 public:
    enum class Settling { None, AsTheService };

    /// Knows the device of that name from when the server has answered, which it waits for.
    BareClient(const std::string& address, std::string sink, Settling settling);
    BareClient(const BareClient&) = delete;
    BareClient& operator=(const BareClient&) = delete;
    ~BareClient();

    void set(unsigned volume) { program_.sendSinkVolume(sink_, volume); }
    unsigned known() const { return known_; }
    /// Called with each volume that is new to it.
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
