#pragma once

#include "tests/processes/RunningProgram.hpp"
#include "tests/rigs/SoundServer.hpp"
#include "tests/support/MixerFiles.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace test {

/// The server's smallest step of a volume's fraction; other programs may be off by one.
inline constexpr double volumeStep = 1.0 / 65536;

using Words = std::vector<std::string>;
using Json = nlohmann::ordered_json;

/// The program, a sound server for it and a preferences folder.
class ControlFixture : public testing::Test {
 protected:
    /// With four categories: Ringtone ("Bell"), Audio/Video ("Music"), HeadsetBT ("BT Headset")
    /// and HeadphonesBT ("BT Headphones").
    explicit ControlFixture(rigs::ServerKind kind = rigs::ServerKind::PulseAudio);

    void startServer() { server_->startAndWait(); }
    /// The program's whole command line.
    Words commandLine(const Words& arguments) const;
    Ended run(const Words& arguments) const { return runToEnd(commandLine(arguments)); }
    /// The same, which must succeed and complain of nothing.
    std::string outputOf(const Words& arguments) const;
    Json jsonOf(const Words& arguments) const { return Json::parse(outputOf(arguments)); }

    /// By another program; in percent.
    void setSinkVolume(int percent) const;
    double sinkFraction() const { return server_->sinkVolumes("spk").at(0) / 65536.0; }

    MixerFiles files_;
    rigs::ServerFolder folder_;
    std::unique_ptr<rigs::SoundServer> server_;
};

/// The same on each of the servers.
class ControlOnEachServer : public ControlFixture,
                            public testing::WithParamInterface<rigs::ServerKind> {
 protected:
    ControlOnEachServer() : ControlFixture(GetParam()) {}
};
inline const auto eachServer =
    testing::Values(rigs::ServerKind::PulseAudio, rigs::ServerKind::PipeWire);

}  // namespace test
