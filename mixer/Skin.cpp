#include "mixer/Skin.hpp"

namespace {

constexpr SkinColor creamCaption = {214.0 / 255, 192.0 / 255, 159.0 / 255};
constexpr SkinColor metalCaption = {184.0 / 255, 184.0 / 255, 184.0 / 255};

constexpr Skin defaultSkin = {
    .captionColor = std::nullopt,
    .thumb = "thumb_default",
    .thumbHighlighted = nullptr,
    .minimumValueImage = "speaker_quiet",
    .maximumValueImage = "speaker_loud",
    .minimumTrack = nullptr,
    .maximumTrack = nullptr,
    .maximumTrackHighlighted = nullptr,
};

constexpr Skin creamSkin(const char* thumb, const char* thumbHighlighted) {
    return {
        .captionColor = creamCaption,
        .thumb = thumb,
        .thumbHighlighted = thumbHighlighted,
        .minimumValueImage = "speaker_quiet_cream",
        .maximumValueImage = "speaker_loud_cream",
        .minimumTrack = "left_track_cream2@2x",
        .maximumTrack = "right_track_cream@2x",
        .maximumTrackHighlighted = "right_track_cream_highlighted",
    };
}

constexpr Skin creamRoundSkin = creamSkin("thumb_cream", "thumb_cream_active");
constexpr Skin creamRectangularSkin = creamSkin("thumb_cream_rect", "thumb_cream_rect_active");

constexpr Skin metalSkin = {
    .captionColor = metalCaption,
    .thumb = "thumb_metal",
    .thumbHighlighted = "thumb_metal_active",
    .minimumValueImage = "speaker_quiet",
    .maximumValueImage = "speaker_loud",
    .minimumTrack = "left_track_metal@2x",
    .maximumTrack = "right_track_metal@2x",
    .maximumTrackHighlighted = "right_track_metal_highlighted",
};

}  // namespace

const Skin* skinNamed(std::string_view name) {
    if (name == "Default iOS") return &defaultSkin;
    if (name.starts_with("Cream"))
        return name == "Cream Round" ? &creamRoundSkin : &creamRectangularSkin;
    if (name.starts_with("Metal")) return &metalSkin;
    return nullptr;
}
