#pragma once

#include "platform/uikit/UISlider.hpp"

#include <memory>
#include <vector>

namespace shell {

/// One row of a mixer, as its host sees it.
struct VolumeRow {
    std::weak_ptr<UISlider> slider;
    NSString category;  ///< The volume service's name; nil where the list names none.
};

/// The rows of the mixer that was assembled in that view, by category: its sliders, with what the
/// category file says of them, or the list that a new user begins with where there is no readable
/// one. The file is read when there are sliders that may be rows, so this is for the moment at
/// which they are new. Sliders that are no row of a mixer are left out. Main thread.
std::vector<VolumeRow> volumeRows(const std::shared_ptr<UIView>& view);

}  // namespace shell
