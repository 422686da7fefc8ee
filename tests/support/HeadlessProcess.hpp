#pragma once

#include <nlohmann/json.hpp>
#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace test {

using Json = nlohmann::ordered_json;

/// What one command brought: its events in their order, then its result line.
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

/// A running tarnwick-headless, talked to over pipes. Every wait has a deadline; what does not
/// come in time, or is no JSON, is thrown as a std::runtime_error and so fails the test.
class HeadlessProcess {
 public:
    explicit HeadlessProcess(const std::vector<std::string>& arguments);
    /// Ends the program if it still runs.
    ~HeadlessProcess();
    HeadlessProcess(const HeadlessProcess&) = delete;
    HeadlessProcess& operator=(const HeadlessProcess&) = delete;

    /// Sends one line and reads up to its result.
    Reply send(std::string_view command);
    /// The events and the result of a line that was sent already.
    Reply readReply();
    /// The next line of the output as it is; nullopt at its end.
    std::optional<std::string> readLine();
    void write(std::string_view bytes) const;
    pid_t id() const { return process_; }
    void closeInput();
    void closeOutput();
    /// Closes the input and waits; the exit code, or minus the signal that ended the program.
    int finish();
    /// What the program has written to standard error so far.
    std::string standardError() const;

 private:
    pid_t process_ = -1;
    int input_ = -1;
    int output_ = -1;
    int error_ = -1;
    std::string unread_;
};

}  // namespace test
