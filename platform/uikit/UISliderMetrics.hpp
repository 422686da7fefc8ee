#pragma once

#include "platform/uikit/Geometry.hpp"

/// The measures of the platform's slider, in points.
namespace UISliderMetrics {
constexpr CGFloat trackHeight = 4;
constexpr CGFloat thumbDiameter = 27;
constexpr CGFloat thumbOverhang = 2;  ///< Of the thumb past the ends of the track.
constexpr CGFloat imageGap = 8;       ///< Between an image and the track.
constexpr CGFloat aroundThumb = 5;    ///< What its shadow and the focus ring need.
/// What an image needs around the thumb, whose corner is drawn on a device pixel.
constexpr CGFloat aroundThumbImage = 1;
}  // namespace UISliderMetrics
