#include "shells/headless/RecentEvents.hpp"

#include <algorithm>
#include <cmath>

namespace headless {
namespace {

constexpr double smallestStep = 1.0 / 65536;

bool fits(const Json& entry, const Word& word) {
    if (word.isBare("-")) return true;
    if (entry.is_string()) return entry.get_ref<const std::string&>() == word.text;
    const auto number = numberFrom(word);
    if (entry.is_number() && number) return std::abs(entry.get<double>() - *number) <= smallestStep;
    return !word.quoted && entry.dump() == word.text;  // true, false, null
}

bool fits(const Json& event, Arguments description) {
    if (event.size() < description.size()) return false;
    return std::equal(description.begin(), description.end(), event.begin(),
                      [](const Word& word, const Json& entry) { return fits(entry, word); });
}

}  // namespace

void RecentEvents::add(const Json& event) {
    events_.push_back(event);
    if (events_.size() > most) events_.pop_front();
}

std::optional<Json> RecentEvents::take(Arguments description) {
    const auto found =
        std::ranges::find_if(events_, [&](const Json& event) { return fits(event, description); });
    if (found == events_.end()) return std::nullopt;
    Json event = std::move(*found);
    events_.erase(events_.begin(), found + 1);
    return event;
}

}  // namespace headless
