#pragma once

#include "tests/wayland/HeadlessPhoc.hpp"
#include "tests/wayland/PrivateBus.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace test {

/// The phone's shell itself, locked from its start, with the plugin under test on its lock screen;
/// it ends with this object. Everything lies in the compositor's folder.
class PhoneShell {
 public:
    /// The pages beside the clock's.
    enum class Pages { Mixer, MixerAndEmptyOne };

    /// Returns once it is locked. `variables` are its environment's on top of the rest. Throws
    /// std::runtime_error with what it said when that fails, as do lock() and unlock().
    explicit PhoneShell(HeadlessPhoc& compositor, const Environment& variables = {},
                        Pages pages = Pages::Mixer);
    ~PhoneShell();

    /// As the shell's screen saver says: from 0.46 on that is of a screen that is blank, which a
    /// lock screen in use is not.
    bool isLocked() const;
    /// With the lock screen to be seen.
    void lock();
    void unlock();
    /// From the clock's page to the plugin's by two fingers, and until that stands still.
    void swipeToWidgets();

    /// Whether it has not ended.
    bool isRunning();
    /// Descriptors that it has open.
    std::size_t descriptors() const;
    /// Memory of its own, in kilobytes.
    std::size_t memory() const;

 private:
    std::string call(const std::string& method,
                     const std::vector<std::string>& arguments = {}) const;
    bool showsClock() const;
    bool showsWidgets() const;

    HeadlessPhoc& compositor_;
    PrivateBus bus_;
    Environment variables_;
    ChildProcess process_;
    bool activeIsBlank_ = false;
};

}  // namespace test
