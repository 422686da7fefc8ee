#pragma once

#include <algorithm>
#include <optional>
#include <string_view>

namespace control {

/// What "set" is asked for: a volume, or a step up or down from where the volume stands.
class VolumeChange {
 public:
    /// "40%", or "0.4" as a fraction of the whole; with a sign a step, "+5%" or "-0.05". nullopt
    /// for any other text. A bare "40" or "1" is none, nor is "40.0": it could mean either.
    static std::optional<VolumeChange> from(std::string_view text);

    /// The volume, 0 to 1; of a step how far, -1 to 1.
    double fraction() const { return fraction_; }
    bool isStep() const { return kind_ == Kind::Step; }

 private:
    enum class Kind { Volume, Step };
    VolumeChange(Kind kind, double fraction)
        : kind_(kind), fraction_(std::clamp(fraction, -1.0, 1.0)) {}

    Kind kind_;
    double fraction_;
};

}  // namespace control
