#pragma once

#include "shells/sound/SoundServer.hpp"

#include <functional>
#include <memory>
#include <string>

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

    /// Loads the module and begins to connect, the first time only. Takes some milliseconds: best
    /// after the first picture.
    void connect();
    /// Whether the volumes are known as far as they will be soon: simulated, answered, or silent.
    bool isSettled() const { return stage_ != Stage::Awaited; }
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
    void install(std::shared_ptr<AVSystemController> service);

    std::string serverModule_;
    std::unique_ptr<SoundServer> server_;
    SoundServer::Attention attention_ = SoundServer::Attention::Watched;
    bool connecting_ = false;
    Stage stage_ = Stage::Awaited;
    /// What the waiting under way holds: a new one, or the end of this, makes it forget.
    std::shared_ptr<const bool> waiting_;
    std::function<void()> changeHandler_;
    std::function<void()> availabilityHandler_;
    std::function<void()> silenceHandler_;
};
