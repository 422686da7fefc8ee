#pragma once

#include "platform/foundation/NSString.hpp"

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Separate outputs for media, notifications, alarms and calls. Where a session has one output for
/// everything, turning the music down turns the ringtone down. With an output for each role in
/// front of the real one, each category has a volume of its own; the real output's volume limits
/// them all.
///
/// Get the one of a server from SoundServer::roleOutputs(). A program that stays calls follow(),
/// and the user's choice is kept from then on, also while other programs change it:
///
///     if (RoleOutputs* outputs = server->roleOutputs()) {
///         outputs->setChangeHandler([&] { showOffer(outputs->isOffered()); });
///         outputs->follow();
///     }
///
/// Requests return at once and are carried out from the main loop, over some hundred milliseconds.
/// The choice is stored in the user's state file, so that an interrupted change is finished by the
/// next program that follows. Main thread.
class RoleOutputs {
 public:
    enum class State {
        Unknown,    ///< No server answers, or it has no real output.
        Shared,     ///< Everything goes to one output.
        Changing,   ///< They are being switched on or off.
        Apart,      ///< Each role has its output.
        Foreign,    ///< The session has role outputs of its own, which are never touched.
        Unsettled,  ///< The server did not do what the last change needs; failure() says what.
    };
    /// What a role's output is, and where it plays.
    struct Output {
        std::string role;         ///< "multimedia", "notification", "alarm" or "call".
        std::string description;  ///< The name in mixers.
        std::string name;         ///< The sink's name.
        std::string real;         ///< The name of the real sink behind it; empty if unknown.
    };
    /// A stream that plays past the output of its role.
    struct Stray {
        std::string program;
        std::string role;    ///< Of the output that it belongs to.
        std::string sink;    ///< Where it plays.
        std::string reason;  ///< In words for users.
    };

    virtual ~RoleOutputs() = default;

    virtual State state() const = 0;
    /// Why the state is Unsettled, in words for users; nil otherwise.
    virtual NSString failure() const = 0;
    /// The outputs that exist, the session's own ones included.
    virtual std::vector<Output> outputs() const = 0;
    /// The streams that play past their outputs. Empty unless the state is Apart.
    virtual std::vector<Stray> strays() const = 0;
    /// Whether to offer the switch: everything shares one output, and the user has decided nothing.
    virtual bool isOffered() const = 0;

    /// Keeps to the user's choice from now on: outputs that vanish with their device or their
    /// server are restored, and the roles go where the user sends the sound.
    virtual void follow() = 0;
    enum class Choice { Apart, Shared };
    /// Stores the user's choice and carries it out.
    virtual void choose(Choice choice) = 0;
    /// Writes a file by which the server makes the outputs itself from the next log-in on, without
    /// a mixer; choosing Shared removes it. Returns nil, or why that is not possible, in words for
    /// users.
    virtual NSString makePermanent() = 0;
    /// Whether there is such a file.
    virtual bool isPermanent() const = 0;
    /// The user wants no offer any more.
    virtual void decline() = 0;
    /// Moves the streams that strays() lists to the outputs of their roles.
    virtual void adopt() = 0;
    /// Whether a request has been neither carried out nor given up.
    virtual bool isBusy() const = 0;

    /// Called when any of the above may have changed.
    void setChangeHandler(std::function<void()> handler) { changeHandler_ = std::move(handler); }

 protected:
    void tellChange() const {
        if (const auto handler = changeHandler_) handler();
    }

 private:
    std::function<void()> changeHandler_;
};
