#pragma once

#include "backends/glib/FileWatch.hpp"
#include "backends/pulse/outputs/OutputsPlan.hpp"
#include "backends/pulse/writes/ConnectedServer.hpp"
#include "platform/celestial/RoleOutputs.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace pulse {

/// Implements RoleOutputs, which documents the behaviour: asks the plan for the next steps, takes
/// them, and waits until the mirror shows their effect. The plan decides everything about the
/// server; the keeper decides who acts, by the lock, and when to give up.
///
/// Call mirrorChanged() after each change of the mirror, and begin() and end() with the connection.
/// Does nothing until follow() or a request.
class OutputsKeeper final : public RoleOutputs {
 public:
    /// How long a step may take to show, in seconds, before it is sent again.
    static constexpr double patienceSeconds = 0.5;
    /// How often a step without effect is sent before it is given up.
    static constexpr int longestTries = 3;
    /// Seconds between two looks at the server, and at another process's lock.
    static constexpr double lookSeconds = 0.004;
    static constexpr double lockedSeconds = 0.02;
    /// For how long after a move PipeWire shows the stream on its new output, whether or not the
    /// session manager has moved it: its PulseAudio server pretends so for a second.
    static constexpr double pretendedSeconds = 1.2;

    /// `mirror` outlives the keeper.
    explicit OutputsKeeper(const ServerMirror& mirror) : mirror_(mirror) {}

    /// The mirror is complete; the server outlives the use, until end().
    void begin(ConnectedServer& server);
    void end();
    void mirrorChanged();

    State state() const override;
    NSString failure() const override { return failure_; }
    std::vector<Output> outputs() const override;
    std::vector<Stray> strays() const override;
    bool isOffered() const override;
    void follow() override;
    void choose(Choice choice) override;
    NSString makePermanent() override;
    bool isPermanent() const override;
    void decline() override;
    void adopt() override;
    bool isBusy() const override { return request_ || adoption_ || run_.has_value(); }

 private:
    /// A step that was sent, and what became of it.
    struct Sent {
        OutputStep step;
        std::string text;
        NSString refusal{};
    };
    /// The steps on their way; none during the first look.
    struct Run {
        std::vector<Sent> sent;
        int tries = 1;
        int answersMissing = 0;
        double sentSeconds = 0;
    };

    /// The streams that play past their outputs are being moved.
    struct Adoption {
        int tries = 0;
        std::size_t answersMissing = 0;
    };

    bool mayAct() const { return server_ && server_->isLocal() && !isStuck_; }
    void open();
    void readJournal();
    bool takeLock();
    bool storeRequest();
    void evaluate();
    void look();
    void judge();
    void send(const OutputSteps& steps);
    void take(std::size_t index);
    void answered(std::size_t index, int error);
    void awaitEffect(const std::vector<std::size_t>& missing);
    void giveUp(const std::vector<std::size_t>& missing);
    void fail(const std::string& reason);
    void finish();
    void moveStrays();
    void movesAnswered();
    /// What changes are told of.
    std::string tellable() const;
    void tellIfChanged();

    const ServerMirror& mirror_;
    ConnectedServer* server_ = nullptr;
    std::optional<OutputsFile> file_;
    std::unique_ptr<glib::FileWatch> watch_;
    OutputsJournal journal_;
    OutputsMemory memory_;
    bool follows_ = false;
    std::optional<OutputsJournal::Choice> request_;
    std::optional<Adoption> adoption_;
    OneShotTimer pretence_;
    bool isStuck_ = false;  // After a failure, until a request or another server.
    std::optional<Run> run_;
    NSString failure_;
    std::string told_;  // What tellable() was then.
    OneShotTimer telling_;
    OneShotTimer timer_;
};

}  // namespace pulse
