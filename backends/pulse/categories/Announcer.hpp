#pragma once

#include "backends/pulse/categories/CategoryMapping.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace pulse {

/// Posts the volume notification for each category whose state differs from what was announced
/// last. The server's events are repeated, late, and contain transient values, so an event only
/// starts a short wait, after which all categories are compared.
///
///     Announcer announcer([&](const std::string& category) { return stateOf(category); });
///     announcer.changed();  // The mirror has changed: compares in 10 ms.
///
/// The known categories are always compared, others from the first time that a caller asks for
/// them. Notifications come from the main run loop, and each may destroy the announcer.
class Announcer {
 public:
    /// How long to wait for transient values to pass, in seconds. Further changes do not prolong
    /// the wait, so a steady stream of them is announced at this interval.
    static constexpr double settlingSeconds = 0.010;
    /// The same for objects that appear, go or change their route. Their volume is set by a session
    /// manager in another process, 6 ms later on an idle machine and 20 ms on a busy one; until
    /// then the server reports full volume or silence.
    static constexpr double longSettlingSeconds = 0.050;

    using Look = std::function<CategoryState(const std::string& category)>;

    /// `look` returns a category's current state. The first state of each counts as announced.
    explicit Announcer(Look look);

    /// A caller has received `state` for the category, which is compared from now on. If the state
    /// differs from what was announced last, the next comparison announces the category in any
    /// case, because that caller shows something that was never announced.
    void answered(const std::string& category, const CategoryState& state);

    /// The mirror may have changed: compares after settlingSeconds.
    void changed();
    /// The same for a server whose volumes have no transient values: if nothing but volumes
    /// changed, they are announced at once, unless something was announced just before.
    void refreshed();
    /// The mirror has changed in a way that needs no settling: compares in the next turn of the
    /// main loop.
    void changedAtOnce();

    /// Called once for all changes that no notification can express.
    void setRereadHandler(std::function<void()> handler) { reread_ = std::move(handler); }

 private:
    /// The categories' states, in the order of told_.
    using States = std::vector<CategoryState>;

    void settle(double afterSeconds);
    States shown() const;
    bool onlyVolumesMoved(const States& now) const;
    void compare(const States& now);
    void tellNext();

    Look look_;
    std::function<void()> reread_;
    /// The known categories come first, in their order, and others after them. Media come after the
    /// ringtone: when the two rows are bound to each other, the one that is announced last is seen
    /// on both.
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
