#pragma once

#include "platform/celestial/RoleOutputs.hpp"
#include "platform/foundation/NSRunLoop.hpp"
#include "shells/sound/SoundModule.hpp"

#include <functional>
#include <future>
#include <memory>
#include <string>

namespace shell {

enum class SoundSource { Server, Simulated };

/// Chooses and installs the volume service for the widget: the sound server, or the simulated
/// device if that was requested. While the server does not answer, no volume can be read; it is
/// never replaced by the simulated device.
///
///     SoundService sound(SoundSource::Server, module);
///     sound.setChangeHandler([&] { presentAgain(); });
///     sound.connect();
///
/// Main thread.
class SoundService {
 public:
    /// A server that does not answer for this many seconds counts as silent; one that restarts is
    /// back sooner.
    static constexpr double patienceSeconds = 1;

    /// `serverModule` is the module's file.
    SoundService(SoundSource source, std::string serverModule);
    ~SoundService();
    SoundService(const SoundService&) = delete;
    SoundService& operator=(const SoundService&) = delete;

    /// Starts loading the module in a thread, so that connect() finds it loaded. Change the
    /// environment before: the libraries read it.
    void loadAhead();
    /// Starts connecting on the first call. Loads the module or waits for the thread that does:
    /// some milliseconds at most.
    void connect();
    /// Whether the volumes are as complete as they will be soon: simulated, answered, or silent.
    bool isSettled() const { return stage_ != Stage::Awaited; }
    /// Calls the handler once when it is settled, or after that many seconds; from inside this call
    /// if it is settled already. A later handler replaces an earlier one.
    void whenSettled(double atMostSeconds, std::function<void()> handler);
    void forgetWhenSettled();
    /// Whether no server has answered for a while.
    bool isSilent() const { return stage_ == Stage::Silent; }
    /// Whether a write is pending, or a switch of the outputs for roles.
    bool isWriting() const;
    /// Whether the outputs for roles are being switched, by a server that answers.
    bool isSwitchingOutputs() const;

    /// Keeps to the user's choice of outputs for roles from now on. Has no effect before connect()
    /// and from the second call on. May read a file: call it when the picture is there.
    void followOutputs();
    /// The outputs that are followed; nullptr while no server answers, and of a simulated device.
    /// Use them at once.
    RoleOutputs* outputs() const { return stage_ == Stage::Answering ? outputs_ : nullptr; }

    /// Whether the widget is visible. While it is not, nothing is polled.
    void setAttention(SoundServer::Attention attention);

    /// Called when another service was installed, and the widget must be assembled again.
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }
    /// Called when its rows must be read again, because no notification says what changed.
    void setAvailabilityHandler(std::function<void()> handler) {
        availabilityHandler_ = std::move(handler);
    }
    /// Called when isSilent() has changed.
    void setSilenceHandler(std::function<void()> handler) { silenceHandler_ = std::move(handler); }
    /// Called when outputs() or what they say may have changed.
    void setOutputsHandler(std::function<void()> handler) { outputsHandler_ = std::move(handler); }

 private:
    enum class Stage { Awaited, Simulated, Answering, Silent };

    void serverIs(SoundServer::State state);
    void beginToWait();
    void setStage(Stage stage);
    void tellThatSettled();
    void tellOutputs() const;
    void install(std::shared_ptr<AVSystemController> service);

    std::string serverModule_;
    std::future<Result<SoundServerEntry>> loading_;  ///< From loadAhead() until connect().
    std::shared_ptr<SoundServer> server_;
    RoleOutputs* outputs_ = nullptr;  ///< The server's, once they are followed.
    SoundServer::Attention attention_ = SoundServer::Attention::Watched;
    bool connecting_ = false;
    Stage stage_ = Stage::Awaited;
    OneShotTimer patience_;  ///< Runs while a server may still answer.
    std::function<void()> settledHandler_;
    OneShotTimer settledAtLast_;  ///< The limit of that handler's wait.
    std::function<void()> changeHandler_;
    std::function<void()> availabilityHandler_;
    std::function<void()> silenceHandler_;
    std::function<void()> outputsHandler_;
};

}  // namespace shell
