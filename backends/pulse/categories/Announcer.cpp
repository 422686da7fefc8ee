#include "backends/pulse/categories/Announcer.hpp"

#include "platform/celestial/AVSystemController.hpp"
#include "platform/foundation/NSRunLoop.hpp"

#include <algorithm>
#include <utility>

namespace pulse {

Announcer::Announcer(Look look) : look_(std::move(look)) {
    for (const std::string& category : knownCategories())
        told_[placeOf(category)].state = look_(category);
}

Announcer::Place Announcer::placeOf(const std::string& category) {
    const auto& known = knownCategories();
    const auto found = std::ranges::find(known, category);
    return {static_cast<std::size_t>(found - known.begin()), category};
}

void Announcer::answered(const std::string& category, const CategoryState& state) {
    const auto [found, isNew] = told_.try_emplace(placeOf(category), Told{state});
    if (!isNew && found->second.state != state) found->second.isAnsweredOtherwise = true;
}

void Announcer::changed() {
    if (!settling_.isRunning()) settle(settlingSeconds);
}

void Announcer::refreshed() {
    if (settling_.isRunning()) return;
    settle(settlingSeconds - (NSRunLoop::mainRunLoop().currentTime() - comparedSeconds_));
}

void Announcer::settle(double afterSeconds) {
    settling_.start(afterSeconds, [this] {
        const States now = shown();
        if (onlyVolumesMoved(now)) return compare(now);
        settling_.start(longSettlingSeconds - settlingSeconds, [this] { compare(shown()); });
    });
}

Announcer::States Announcer::shown() const {
    States states;
    states.reserve(told_.size());
    for (const auto& [place, told] : told_)
        states.push_back(look_(place.second));
    return states;
}

bool Announcer::onlyVolumesMoved(const States& now) const {
    return std::ranges::equal(told_, now, [](const auto& entry, const CategoryState& after) {
        const CategoryState& before = entry.second.state;
        return before.volume.has_value() == after.volume.has_value() && before.route == after.route;
    });
}

void Announcer::changedAtOnce() {
    settling_.start(0, [this] { compare(shown()); });
}

void Announcer::compare(const States& now) {
    comparedSeconds_ = NSRunLoop::mainRunLoop().currentTime();
    bool mustReread = false;
    auto next = now.begin();
    for (auto& [place, told] : told_) {
        const CategoryState& state = *next++;
        const Consequence consequence = told.isAnsweredOtherwise ? consequenceOfAnswering(state)
                                                                 : consequenceOf(told.state, state);
        told = {state};
        if (consequence == Consequence::Volume)
            toTell_.push_back([name = place.second, volume = *state.volume] {
                postEffectiveVolumeDidChange(name, volume);
            });
        mustReread |= consequence == Consequence::Reread;
    }
    if (mustReread && reread_) toTell_.push_back(reread_);
    if (!toTell_.empty()) telling_.start(0, [this] { tellNext(); });
}

// Posts one notification in each turn of the main loop and schedules the next one first, because an
// observer may throw or destroy the announcer.
void Announcer::tellNext() {
    const std::function<void()> tell = std::move(toTell_.front());
    toTell_.pop_front();
    if (!toTell_.empty()) telling_.start(0, [this] { tellNext(); });
    tell();
}

}  // namespace pulse
