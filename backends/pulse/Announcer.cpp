#include "backends/pulse/Announcer.hpp"

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
    if (settling_.isRunning() || !onlyVolumesMoved()) return changed();
    settle(settlingSeconds - (NSRunLoop::mainRunLoop().currentTime() - comparedSeconds_));
}

void Announcer::settle(double afterSeconds) {
    settling_.start(afterSeconds, [this] {
        if (onlyVolumesMoved()) return compare();
        settling_.start(longSettlingSeconds - settlingSeconds, [this] { compare(); });
    });
}

bool Announcer::onlyVolumesMoved() const {
    return std::ranges::all_of(told_, [this](const auto& entry) {
        const auto& [place, told] = entry;
        const CategoryState now = look_(place.second);
        return now.volume.has_value() == told.state.volume.has_value() &&
               now.route == told.state.route;
    });
}

void Announcer::changedAtOnce() {
    settling_.start(0, [this] { compare(); });
}

void Announcer::compare() {
    comparedSeconds_ = NSRunLoop::mainRunLoop().currentTime();
    bool mustReread = false;
    for (auto& [place, told] : told_) {
        const std::string& category = place.second;
        const CategoryState now = look_(category);
        const Consequence consequence =
            told.isAnsweredOtherwise ? consequenceOfAnswering(now) : consequenceOf(told.state, now);
        told = {now};
        if (consequence == Consequence::Volume)
            toTell_.push_back([name = category, volume = *now.volume] {
                postEffectiveVolumeDidChange(name, volume);
            });
        mustReread |= consequence == Consequence::Reread;
    }
    if (mustReread && reread_) toTell_.push_back(reread_);
    if (!toTell_.empty()) telling_.start(0, [this] { tellNext(); });
}

// One in each turn, the next one prepared before: an observer may end the delivery by an
// exception, and may destroy the announcer.
void Announcer::tellNext() {
    const std::function<void()> tell = std::move(toTell_.front());
    toTell_.pop_front();
    if (!toTell_.empty()) telling_.start(0, [this] { tellNext(); });
    tell();
}

}  // namespace pulse
