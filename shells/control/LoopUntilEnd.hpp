#pragma once

#include <glib.h>

#include <memory>
#include <vector>

namespace control {

/// Runs the main loop until the user interrupts it, the program is told to end, nobody reads
/// standard output any more, or end() is called. From then on such a signal ends it as usual.
class LoopUntilEnd {
 public:
    LoopUntilEnd();
    ~LoopUntilEnd();
    LoopUntilEnd(const LoopUntilEnd&) = delete;
    LoopUntilEnd& operator=(const LoopUntilEnd&) = delete;

    void run() { g_main_loop_run(loop_.get()); }
    void end() { g_main_loop_quit(loop_.get()); }

 private:
    struct Unref {
        void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
    };
    std::unique_ptr<GMainLoop, Unref> loop_;
    std::vector<guint> sources_;
};

}  // namespace control
