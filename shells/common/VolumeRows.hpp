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

/// Those of a widget's sliders that are rows of a mixer, by category: with what the category file
/// says of them, or the list that a new user begins with where there is no readable one. The file
/// is read when there are sliders that may be rows, so this is for the moment at which they are
/// new. Main thread.
std::vector<VolumeRow> volumeRows(const std::vector<std::shared_ptr<UISlider>>& sliders);

}  // namespace shell
