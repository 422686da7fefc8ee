#pragma once

#include "backends/pulse/outputs/OutputStep.hpp"

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace pulse {

/// What a process has seen of the server since it connected.
struct OutputsMemory {
    /// Sinks that have run since, by index. Others may report 100 % whatever their volume is.
    std::set<std::uint32_t> awake{};
    /// Whether streams are sent to outputs by their role; PipeWire's session managers always do.
    bool isRouting = false;
    /// Whether nothing is linked anew any more since the default sink was last set.
    bool isSettled = false;
    /// The sinks that streams were moved to, by indexes: they stay there, whatever the default is.
    std::map<std::uint32_t, std::uint32_t> moved{};
    /// The last volumes of our outputs, by role.
    std::map<std::string, ObjectVolume> levels{};
    /// The real sinks of the last look, by name. Empty before the first.
    std::set<std::string> realSinks{};
    /// Steps that had no effect on the server, as describe() puts them. They are left out.
    std::set<std::string> givenUp{};
};

/// The steps that come next, to be sent in this order and without waiting in between; when the
/// mirror shows their effect, ask again. Empty if nothing is to be done.
///
/// The server's state and the journal determine them, so a change that was interrupted anywhere is
/// continued by whoever asks next. No step makes anything louder than it was before the change: the
/// real output's volume is never raised, volumes are lowered before the sound takes another way,
/// and what attenuates twice in between is raised last.
OutputSteps nextSteps(const ServerMirror& mirror, const OutputsJournal& journal,
                      const OutputsMemory& memory);

/// The names of the sinks that are not virtual.
std::set<std::string> realSinksOf(const ServerMirror& mirror);

/// Brings the memory up to date, after nextSteps().
void observe(OutputsMemory& memory, const ServerMirror& mirror, const OutputsJournal& journal);

}  // namespace pulse
