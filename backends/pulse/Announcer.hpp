#pragma once

#include "backends/pulse/CategoryMapping.hpp"
#include "platform/foundation/OneShotTimer.hpp"

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace pulse {

/// Tells what changed in what the categories show, by comparing with what was told last: the
/// server's events come doubled, late and with passing values. Everything is told from the main
/// run loop, and each may destroy the announcer. The known categories are compared always, others
/// from when somebody has asked for them.
class Announcer {
 public:
    /// How long passing values are given to pass. A change right behind another doesn't prolong
    /// it, so a flood is told about every so often too.
    static constexpr double settlingSeconds = 0.010;
    /// The same for what appears, goes or takes another route. Its own volume comes from a session
    /// manager, which is a program of its own: 6 ms after it on a machine with nothing else to do,
    /// 20 ms on a busy one, and until then the server has it at full or silent.
    static constexpr double longSettlingSeconds = 0.050;

    using Look = std::function<CategoryState(const std::string& category)>;

    /// `look` answers what a category shows now. What it shows at first counts as told.
    explicit Announcer(Look look);

    /// Somebody was answered that the category shows this. From then on it is compared; and where
    /// the answer was ahead of what has been told, it is told anew even if it returns to that.
    void answered(const std::string& category, const CategoryState& state);

    /// Something may have changed.
    void changed();
    /// The same where a volume alone has no passing values: what has moved and nothing else is told
    /// at once, unless something was told just now.
    void refreshed();
    /// The same for what needs no settling.
    void changedAtOnce();

    /// Called once for all the changes that no notification tells.
    void setRereadHandler(std::function<void()> handler) { reread_ = std::move(handler); }

 private:
    /// What the categories show, in the order of what was told of them.
    using States = std::vector<CategoryState>;

    void settle(double afterSeconds);
    States shown() const;
    bool onlyVolumesMoved(const States& now) const;
    void compare(const States& now);
    void tellNext();

    Look look_;
    std::function<void()> reread_;
    /// The known categories in their order and the others behind them: of rows that are bound to
    /// each other the media's volume, which everything sounds with, is told last and so is seen.
    using Place = std::pair<std::size_t, std::string>;
    struct Told {
        CategoryState state;
        bool isAnsweredOtherwise = false;
    };
    static Place placeOf(const std::string& category);

    std::map<Place, Told> told_;
    std::deque<std::function<void()>> toTell_;
    double comparedSeconds_ = 0;  // On the run loop's clock.
    OneShotTimer settling_;
    OneShotTimer telling_;
};

}  // namespace pulse
