#pragma once

#include "tests/processes/RunningProgram.hpp"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace test {

using Json = nlohmann::ordered_json;

/// The events of one command, in order, and its result line.
struct Reply {
    std::vector<Json> events;
    Json line;

    bool isOk() const { return line.at("ok").get<bool>(); }
    /// Empty when there is none.
    std::string error() const { return line.value("error", ""); }
    const Json& result() const { return line.at("result"); }
    /// The events as short texts that read well in a table: "log TW: dealloc",
    /// "post org.tarnwick.mixer.isvisible", "host invalidatePreferredViewSize",
    /// "host widget:didUpdatePreferredSize: 320 x 270", "set Ringtone 0.376",
    /// "volume Ringtone 0.376".
    std::vector<std::string> happened() const;
};

/// A running tarnwick-headless that takes commands. An exception, which fails the test, reports a
/// line that is not JSON or does not come in time.
class HeadlessProcess : public RunningProgram {
 public:
    explicit HeadlessProcess(const std::vector<std::string>& arguments);

    /// Sends one line and reads up to its result.
    Reply send(std::string_view command);
    /// The events and the result of a line that was sent already.
    Reply readReply();
};

}  // namespace test
