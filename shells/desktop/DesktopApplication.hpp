#pragma once

#include "backends/glib/GLibRunLoop.hpp"
#include "shells/desktop/DesktopOptions.hpp"
#include "shells/desktop/SingleInstance.hpp"
#include "shells/panel/PanelWidget.hpp"
#include "shells/sound/SoundService.hpp"

#include <memory>
#include <string>

// The library's own name for it, declared without its header.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
typedef struct _GdkDisplay GdkDisplay;

/// The program: the sound service, the widget, and the window or the picture that shows it.
class DesktopApplication {
 public:
    explicit DesktopApplication(const DesktopOptions& options) : options_(options) {}

    /// Runs until the window is closed or the picture is written; answers the exit status.
    int run();

 private:
    void loadAhead();
    /// Says what could not be loaded; answers whether anything could.
    bool openWidget();
    int runWindow(GdkDisplay* display);
    /// Whether another one runs, which then has been told what to do.
    bool isTakenOver();
    /// Tells the one that runs to end.
    int quitOther();
    /// Without a display: the rows as text, and where there is a place for it a picture in the
    /// user's cache folder.
    int reportRows();
    int paint(const std::string& path);
    void waitForSound();

    const DesktopOptions& options_;
    GLibRunLoop runLoop_;
    SingleInstance instance_;
    std::unique_ptr<SoundService> sound_;
    std::unique_ptr<PanelWidget> widget_;
};
