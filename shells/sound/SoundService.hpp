#pragma once

#include "shells/sound/SoundServer.hpp"

#include <functional>
#include <memory>
#include <string>

enum class SoundSource { Server, Simulated };

/// Chooses the volume service that the widget works with and installs it: the sound server's, or
/// the simulated device when that was asked for. Until the server is connected to, no volume can
/// be read. Where it does not answer within a second it says so and installs the simulated device
/// until it does. Main thread.
class SoundService {
 public:
    /// `serverModule` is the module's file.
    SoundService(SoundSource source, std::string serverModule);
    ~SoundService();
    SoundService(const SoundService&) = delete;
    SoundService& operator=(const SoundService&) = delete;

    /// Loads the module and begins to connect, the first time only. Takes some milliseconds: best
    /// after the first picture.
    void connect();
    /// Whether the choice has been made, so that volumes are known where they ever will be.
    bool isSettled() const { return settled_; }
    /// Called when the widget has to be assembled anew: another service was installed, or what
    /// can be read has changed.
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }

 private:
    bool openServer();
    void serverIsReady();
    void useSimulatedDevice(const char* reason);
    void installed(std::shared_ptr<AVSystemController> service);

    std::string serverModule_;
    std::unique_ptr<SoundServer> server_;
    bool connecting_ = false;
    bool settled_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    std::function<void()> changeHandler_;
};
