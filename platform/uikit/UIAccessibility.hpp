#pragma once

#include "platform/foundation/NSString.hpp"
#include "platform/uikit/UISlider.hpp"

#include <memory>
#include <vector>

/// What a view is called by somebody who cannot see it: a label by its text, a button by its own
/// label; another view by the label that stands last before it among its siblings. nil when there
/// is none. Main thread.
NSString accessibilityLabel(const UIView& view);

/// The labels, sliders and buttons of a subtree that are not hidden, in document order: what a
/// reader of the screen would say. Main thread.
std::vector<std::shared_ptr<UIView>> accessibilityElements(const std::shared_ptr<UIView>& root);
