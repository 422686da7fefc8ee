#pragma once

#include "tests/rigs/SoundServer.hpp"

namespace rigs {

/// PulseAudio, with the role entries.
class PulseAudioServer : public SoundServer {
 public:
    enum class RoleEntries { Kept, None };

    using SoundServer::SoundServer;
    ServerKind kind() const override { return ServerKind::PulseAudio; }

    /// Before start(): one more line of its script.
    void addScriptLine(const std::string& line) { extraLines_ += line + "\n"; }
    void beAsInASession() override;
    void setRoleEntries(RoleEntries roleEntries) { roleEntries_ = roleEntries; }

    void start() override;
    void stop(int signal) override;
    void suspend() override;
    void resume() override;

 private:
    std::string script() const;

    std::string extraLines_;
    RoleEntries roleEntries_ = RoleEntries::Kept;
    test::ChildProcess process_;
};

}  // namespace rigs
