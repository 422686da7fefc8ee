#pragma once

#include "shells/headless/Commands.hpp"
#include "shells/headless/Device.hpp"
#include "shells/headless/EventSink.hpp"
#include "shells/headless/EventWatcher.hpp"
#include "shells/headless/Painter.hpp"
#include "shells/headless/RecentEvents.hpp"
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

/// Carries out the lines of one conversation. It installs its device as the process's volume
/// service and takes over the log and the main loop's clock, so there is one at a time.
class Session {
 public:
    Session(const SessionOptions& options, std::unique_ptr<Device> device,
            EventSink::Writer writer);
    /// Without another word, whatever the controller says at its end.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Does what the line says and what follows from it; writes the events and one result line.
    void execute(std::string_view line);
    /// Writes the result line of a line that could not be read.
    void refuse(const std::string& reason);
    /// What has come due between two lines, with its events.
    void runDueCalls();
    /// Lets what was set arrive, for a moment at most.
    void finish();
    bool hasQuit() const { return quit_; }

    // What the commands work on.
    EventSink& events() { return events_; }
    Stage& stage() { return stage_; }
    Device& device() { return *device_; }
    Timeline& timeline() { return timeline_; }
    RecentEvents& recentEvents() { return recent_; }
    Painter& painter() { return painter_; }
    void quit() { quit_ = true; }

 private:
    void watchServer();

    EventSink events_;
    RecentEvents recent_;
    EventWatcher watcher_{events_};
    std::unique_ptr<Device> device_;
    Timeline timeline_;
    Painter painter_;
    Stage stage_;
    bool quit_ = false;
};

}  // namespace headless
