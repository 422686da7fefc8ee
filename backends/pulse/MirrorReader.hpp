#pragma once

#include "backends/pulse/PulseContext.hpp"
#include "backends/pulse/ServerMirror.hpp"

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace pulse {

/// Keeps the mirror after the server: reads every part at first, and a part again whenever it is
/// told to. One read under way for each part, and one more behind it, however often it is told.
class MirrorReader {
 public:
    /// All three outlive the reader; no answer reaches it after the context is gone. `changed` is
    /// called after each read.
    MirrorReader(PulseContext& context, ServerMirror& mirror, std::function<void()> changed);

    /// Reads the part. `afterwards` is called when a read that began after this call is through.
    void refresh(Part part, std::function<void()> afterwards = {});
    /// Whether each part has been read.
    bool isComplete() const;

 private:
    using Waiting = std::vector<std::function<void()>>;
    struct Reading {
        enum class Stage { Idle, UnderWay, UnderWayAndOutdated };
        Stage stage = Stage::Idle;
        bool wasRead = false;
        Waiting waitingForThis;
        Waiting waitingForNext;
    };

    Reading& readingOf(Part part) { return readings_[static_cast<std::size_t>(part)]; }
    void begin(Part part);
    void ask(Part part);
    void finish(Part part);

    PulseContext& context_;
    ServerMirror& mirror_;
    std::function<void()> changed_;
    std::array<Reading, 3> readings_;  // By Part.
};

}  // namespace pulse
