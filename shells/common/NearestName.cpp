#include "shells/common/NearestName.hpp"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace shell {
namespace {

// Longer words are no typing errors, and the cost grows with the square of the length.
constexpr std::size_t longestWord = 64;

char lowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// The number of letters to insert, remove or replace; two swapped letters count as one.
std::size_t distance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> beforeLast(right.size() + 1);
    std::vector<std::size_t> last(right.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::vector<std::size_t> row(right.size() + 1, i);
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const auto same = [&](std::size_t a, std::size_t b) {
                return lowerCase(left[a]) == lowerCase(right[b]);
            };
            const std::size_t exchanged = last[j - 1] + (same(i - 1, j - 1) ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, exchanged});
            if (i > 1 && j > 1 && same(i - 1, j - 2) && same(i - 2, j - 1))
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast = std::exchange(last, std::move(row));
    }
    return last.back();
}

}  // namespace

std::optional<std::string> nearestName(std::string_view word,
                                       std::span<const std::string_view> names) {
    if (word.empty() || word.size() > longestWord) return std::nullopt;
    std::optional<std::string> nearest;
    std::size_t least = 0;
    for (const std::string_view name : names) {
        const std::size_t changes = distance(word, name);
        // At most a third of the letters: names that differ more are unrelated.
        const bool isNear = 3 * changes <= std::max(word.size(), name.size());
        if (!isNear || (nearest && changes >= least)) continue;
        nearest = name;
        least = changes;
    }
    return nearest;
}

}  // namespace shell
