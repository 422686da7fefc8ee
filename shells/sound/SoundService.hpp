#pragma once

#include "platform/foundation/OneShotTimer.hpp"
#include "shells/sound/SoundServer.hpp"

#include <functional>
#include <memory>
#include <string>
#include <thread>

enum class SoundSource { Server, Simulated };

/// Chooses the volume service that the widget works with and installs it: the sound server's, or
/// the simulated device where that was asked for. There is no other way to the simulated one:
/// while the server does not answer, no volume can be read. Main thread.
class SoundService {
 public:
    /// A server that does not answer for this long is taken for silent, seconds: one that is
    /// started anew is back sooner.
    static constexpr double patienceSeconds = 1;

    /// `serverModule` is the module's file.
    SoundService(SoundSource source, std::string serverModule);
    ~SoundService();
    SoundService(const SoundService&) = delete;
    SoundService& operator=(const SoundService&) = delete;

    /// Begins to load the module in a thread of its own, so that connect() finds it there. Whatever
    /// changes the environment comes before: the libraries read it.
    void loadAhead();
    /// Begins to connect, the first time only. Loads the module first, or waits for the thread that
    /// does: some milliseconds at most.
    void connect();
    /// Whether the volumes are known as far as they will be soon: simulated, answered, or silent.
    bool isSettled() const { return stage_ != Stage::Awaited; }
    /// Calls the handler once, as soon as it is settled, at the latest after that time. Within this
    /// call where it is settled already. The last handler counts.
    void whenSettled(double atMostSeconds, std::function<void()> handler);
    void forgetWhenSettled();
    /// Whether no server answers, and has not for a while.
    bool isSilent() const { return stage_ == Stage::Silent; }
    /// Whether a volume that was set is still on its way.
    bool isWriting() const { return server_ && server_->isWriting(); }

    /// Whether the widget is on the screen. While it is not, nothing is asked now and then.
    void setAttention(SoundServer::Attention attention);

    /// Called when the widget has to be assembled anew: another service was installed.
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }
    /// Called when its rows have to be read again, as no notification says what has changed.
    void setAvailabilityHandler(std::function<void()> handler) {
        availabilityHandler_ = std::move(handler);
    }
    /// Called when isSilent() has become another.
    void setSilenceHandler(std::function<void()> handler) { silenceHandler_ = std::move(handler); }

 private:
    enum class Stage { Awaited, Simulated, Answering, Silent };

    void serverAnswers(SoundServer::Answers answers);
    void beginToWait();
    void setStage(Stage stage);
    void tellThatSettled();
    void install(std::shared_ptr<AVSystemController> service);

    std::string serverModule_;
    LoadedSoundServer module_;
    std::jthread loading_;  ///< While it runs, the module is its own.
    std::unique_ptr<SoundServer> server_;
    SoundServer::Attention attention_ = SoundServer::Attention::Watched;
    bool connecting_ = false;
    Stage stage_ = Stage::Awaited;
    OneShotTimer patience_;  ///< While a server that doesn't answer may still be coming.
    std::function<void()> settledHandler_;
    OneShotTimer settledAtLast_;  ///< While that handler waits.
    std::function<void()> changeHandler_;
    std::function<void()> availabilityHandler_;
    std::function<void()> silenceHandler_;
};
