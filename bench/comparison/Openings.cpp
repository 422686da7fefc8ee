#include "bench/comparison/Openings.hpp"

#include "tests/rigs/Waiting.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace comparison {
namespace {

using peers::Clock;

// After the click. The slowest mixer needs a quarter of it.
constexpr std::chrono::milliseconds watching(2000);
// Between closing one mixer and opening the next.
constexpr double pauseSeconds = 0.7;

using Look = std::pair<double, peers::Picture>;

std::vector<Look> looksAfter(peers::Screen& screen, Clock::time_point click) {
    std::vector<Look> looks;
    while (const auto told = screen.waitForPaint(click + watching)) {
        const double took = std::chrono::duration<double, std::milli>(*told - click).count();
        peers::Picture now = screen.picture();
        if (looks.empty() || looks.back().second != now) looks.emplace_back(took, std::move(now));
    }
    return looks;
}

}  // namespace

void OpeningWatch::open(const Mixer& mixer, Openings& openings) {
    const CGPoint target = mixer.approach(desk_);
    screen_.lookForNewWindow();
    const Clock::time_point click = Clock::now();
    desk_.click(target);
    const std::vector<Look> looks = looksAfter(screen_, click);
    const auto painted =
        std::ranges::find_if(looks, [](const Look& each) { return each.second.showsSomething(); });
    if (painted == looks.end()) throw std::runtime_error(mixer.name + " does not come");
    openings.painted.push_back(painted->first);
    openings.complete.push_back(looks.back().first);
    last_ = looks.back().second;
    mixer.close(desk_, screen_.window());
    if (!desk_.waitForNoWindow(mixer.windowClass, leastHeight))
        throw std::runtime_error(mixer.name + " does not go");
    desk_.putPointerAside();
    rigs::runFor(pauseSeconds);
}

}  // namespace comparison
