#pragma once

#include "config/CategoryList.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "shells/control/Categories.hpp"
#include "shells/control/Service.hpp"

#include <glib.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace control {

/// Runs the main loop until a signal asks the program to end, the reader of standard output is
/// gone, or end() is called. After that, such a signal has its default effect.
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

/// Reports the line of a category whenever it changes.
class Watcher {
 public:
    using LineFor = std::function<std::string(const CategoryReport&)>;
    using Tell = std::function<void(const std::string& line)>;

    /// `service` must outlive the watcher. The current lines count as reported.
    Watcher(Service& service, CategoryList categories, LineFor lineFor, Tell tell);
    ~Watcher();
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

 private:
    std::string lineNow(const CategoryRecord& record) const {
        return lineFor_(reportOf(record, service_.volumes()));
    }
    void compare();

    Service& service_;
    CategoryList categories_;
    LineFor lineFor_;
    Tell tell_;
    std::vector<std::string> told_;
    std::shared_ptr<NSObject> observer_ = std::make_shared<NSObject>();
};

}  // namespace control
