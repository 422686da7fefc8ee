#include "shells/control/VolumeChange.hpp"

#include <charconv>

namespace control {
namespace {

constexpr double percentOfAll = 100;

/// Digits with at most one point among them, and nothing else.
std::optional<double> plainDecimal(std::string_view text) {
    if (text.find_first_not_of("0123456789.") != std::string_view::npos) return std::nullopt;
    const char* const end = text.data() + text.size();
    double number = 0;
    const auto [stop, error] = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

std::optional<double> fractionFrom(std::string_view text) {
    if (text.ends_with('%')) {
        const auto percent = plainDecimal(text.substr(0, text.size() - 1));
        return percent ? std::optional(*percent / percentOfAll) : std::nullopt;
    }
    if (text.find('.') == std::string_view::npos) return std::nullopt;
    // Past the whole, who wrote it thought of a percentage: "40.0" is not everything.
    const auto fraction = plainDecimal(text);
    return fraction && *fraction <= 1 ? fraction : std::nullopt;
}

}  // namespace

std::optional<VolumeChange> VolumeChange::from(std::string_view text) {
    const bool isSigned = text.starts_with('+') || text.starts_with('-');
    const double direction = text.starts_with('-') ? -1 : 1;
    const auto fraction = fractionFrom(text.substr(isSigned ? 1 : 0));
    if (!fraction) return std::nullopt;
    return VolumeChange(isSigned ? Kind::Step : Kind::Volume, direction * *fraction);
}

}  // namespace control
