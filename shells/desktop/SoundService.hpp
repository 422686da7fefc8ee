#pragma once

#include <functional>
#include <memory>

class AVSystemController;

enum class SoundSource { Server, Simulated };

/// Chooses the volume service that the widget works with and installs it: the sound server's, or
/// the simulated device when that was asked for or no server answers. Main thread.
class SoundService {
 public:
    explicit SoundService(SoundSource source);
    ~SoundService();
    SoundService(const SoundService&) = delete;
    SoundService& operator=(const SoundService&) = delete;

    /// Whether it is known which service it will be.
    bool isSettled() const { return settled_; }
    /// Called when another service than the first was installed.
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }

 private:
    void useSimulatedDevice();

    bool settled_ = false;
    std::function<void()> changeHandler_;
};
