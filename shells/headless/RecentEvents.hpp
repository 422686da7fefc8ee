#pragma once

#include "shells/headless/Commands.hpp"

#include <deque>
#include <optional>

namespace headless {

/// The events that nobody has waited for yet, back to the last command that was no "wait".
class RecentEvents {
 public:
    /// Beyond these the oldest is forgotten: a server may announce for hours between two commands.
    static constexpr std::size_t most = 10'000;

    void add(const Json& event);
    void forget() { events_.clear(); }
    /// The first event that the words describe; it is forgotten with those before it. The words are
    /// its name and its further entries in their order, of which "-" fits any. A number fits one
    /// that is a server's smallest step away at most.
    std::optional<Json> take(Arguments description);

 private:
    std::deque<Json> events_;
};

}  // namespace headless
