#pragma once

#include <array>
#include <cstdint>

/// The mixer elements of the fake ALSA card and their state, which lies in a file: the test writes
/// what a user plugs, the sound server writes what it sets.
struct Element {
    enum class Kind { Volume, Switch, Jack };
    const char* name;
    Kind kind;
    int channels() const { return kind == Kind::Jack ? 1 : 2; }
    int highest() const { return kind == Kind::Volume ? 100 : 1; }
};

inline constexpr std::array<Element, 10> elements{{
    {"Master Playback Volume", Element::Kind::Volume},
    {"Master Playback Switch", Element::Kind::Switch},
    {"Headphone Playback Volume", Element::Kind::Volume},
    {"Headphone Playback Switch", Element::Kind::Switch},
    {"Speaker Playback Volume", Element::Kind::Volume},
    {"Speaker Playback Switch", Element::Kind::Switch},
    {"Line Out Playback Switch", Element::Kind::Switch},
    {"Headphone Jack", Element::Kind::Jack},
    {"Line Out Jack", Element::Kind::Jack},
    {"HDMI/DP,pcm=0 Jack", Element::Kind::Jack},
}};

/// One element's values in the file, in the order of the elements.
using ElementState = std::array<std::int32_t, 2>;

/// The variable that holds the file's path.
inline constexpr const char* stateVariable = "FAKE_ALSA_STATE";
