#pragma once

#include "backends/glib/GLibRunLoop.hpp"
#include "shells/desktop/DesktopOptions.hpp"
#include "shells/desktop/SingleInstance.hpp"
#include "shells/panel/PanelWidget.hpp"
#include "shells/sound/SoundService.hpp"

#include <memory>
#include <string>

// GDK's type, declared here without its header.
typedef struct _GdkDisplay GdkDisplay;

namespace desktop {

/// The program: owns the sound service, the widget, and the window or picture that shows it.
///
///     return DesktopApplication(options).run();
class DesktopApplication {
 public:
    explicit DesktopApplication(const DesktopOptions& options) : options_(options) {}

    /// Runs until the window is closed or the picture is written; returns the exit status.
    int run();

 private:
    void loadAhead();
    /// Reports what could not be loaded; returns whether anything could.
    bool openWidget();
    int runWindow(GdkDisplay* display);
    /// Whether another mixer runs; if so, it has been told what to do.
    bool isTakenOver();
    /// Tells the running mixer to end.
    int quitOther();
    /// Without a display: prints the rows as text and, if possible, writes a picture to the user's
    /// cache folder.
    int reportRows();
    int paint(const std::string& path);
    void waitForSound();

    const DesktopOptions& options_;
    glib::GLibRunLoop runLoop_;
    SingleInstance instance_;
    std::unique_ptr<shell::SoundService> sound_;
    std::unique_ptr<shell::PanelWidget> widget_;
};

}  // namespace desktop
