#pragma once

#include "backends/pulse/CategoryMapping.hpp"
#include "backends/pulse/OneShotTimer.hpp"

#include <deque>
#include <functional>
#include <map>
#include <string>

namespace pulse {

/// Tells what changed in what the categories show, by comparing with what was told last: the
/// server's events come doubled, late and with passing values. Everything is told from the main
/// run loop, and each may destroy the announcer. The known categories are compared always, others
/// from when somebody watches them.
class Announcer {
 public:
    /// How long passing values are given to pass. A change right behind another doesn't prolong
    /// it, so a flood is told about every so often too.
    static constexpr double settlingSeconds = 0.010;

    using Look = std::function<CategoryState(const std::string& category)>;

    /// `look` answers what a category shows now. What it shows at first counts as told.
    explicit Announcer(Look look);

    /// Adds a category to those that are compared. What it shows now counts as told.
    void watch(const std::string& category);

    /// Something may have changed.
    void changed();
    /// The same for what needs no settling.
    void changedAtOnce();

    /// Called once for all the changes that no notification tells.
    void setRereadHandler(std::function<void()> handler) { reread_ = std::move(handler); }

 private:
    void compare();
    void tellNext();

    Look look_;
    std::function<void()> reread_;
    std::map<std::string, CategoryState> told_;
    std::deque<std::function<void()>> toTell_;
    OneShotTimer settling_;
    OneShotTimer telling_;
};

}  // namespace pulse
