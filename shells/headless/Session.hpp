#pragma once

#include "shells/headless/Commands.hpp"
#include "shells/headless/Device.hpp"
#include "shells/headless/Events.hpp"
#include "shells/headless/Painter.hpp"
#include "shells/headless/Stage.hpp"
#include "shells/headless/Timeline.hpp"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace headless {

struct SessionOptions {
    std::string bundlePath;
    std::optional<double> parentWidth;  ///< Points; nullopt: no parent view controller.
    ClockKind clock = ClockKind::Manual;
    PaintFiles paintFiles = PaintFiles::Written;
};

/// Executes the lines of one conversation. It installs its device as the process's volume service
/// and replaces the log and the main loop's clock, so only one exists at a time.
///
///     Session session(options, std::move(device), writeLine);
///     session.execute("create");
class Session {
 public:
    Session(const SessionOptions& options, Device device, EventSink::Writer writer);
    /// Writes nothing more, whatever the controller does at its end.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Executes a line; writes its events and one result line.
    void execute(std::string_view line);
    /// Writes the result of a line that could not be read.
    void refuse(const std::string& reason);
    /// Runs what has become due between two lines.
    void runDueCalls();
    /// Waits briefly for pending writes.
    void finish();
    bool hasQuit() const { return quit_; }

    // What the commands work on.
    EventSink& events() { return events_; }
    Stage& stage() { return stage_; }
    Device& device() { return device_; }
    /// Whether the volumes are known, as last reported to the reader.
    bool isReady() const { return isReady_; }
    Timeline& timeline() { return timeline_; }
    RecentEvents& recentEvents() { return recent_; }
    Painter& painter() { return painter_; }
    void quit() { quit_ = true; }

 private:
    void watchDevice();
    void serverIs(SoundServer::State state);

    EventSink events_;
    RecentEvents recent_;
    EventWatcher watcher_{events_};
    Device device_;
    bool isReady_;
    Timeline timeline_;
    Painter painter_;
    Stage stage_;
    bool quit_ = false;
};

}  // namespace headless
