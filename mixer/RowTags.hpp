#pragma once

#include "platform/foundation/NSString.hpp"

/// How a category's caption and slider are found in the mixer: by tags made from its number, its
/// position in the whole list.
constexpr NSInteger captionTag(NSInteger categoryNumber) {
    return 1000 + categoryNumber;
}
constexpr NSInteger sliderTag(NSInteger categoryNumber) {
    return 2000 + categoryNumber;
}
constexpr NSInteger categoryNumberOfSlider(NSInteger tag) {
    return tag - 2000;
}
