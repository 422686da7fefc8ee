#pragma once

#include "tests/rigs/ServerFolder.hpp"

namespace test {

/// A session bus in the folder, for this test alone, that starts no services of the machine's; it
/// ends with this object.
class PrivateBus {
 public:
    /// Returns once it takes connections.
    explicit PrivateBus(rigs::ServerFolder& folder);

    /// For DBUS_SESSION_BUS_ADDRESS.
    std::string address() const { return "unix:path=" + socket_.string(); }

 private:
    std::filesystem::path socket_;
    ChildProcess daemon_;
};

}  // namespace test
