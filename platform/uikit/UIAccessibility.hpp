#pragma once

#include "platform/foundation/NSString.hpp"
#include "platform/uikit/UISlider.hpp"

#include <memory>
#include <vector>

/// What a view is called by somebody who cannot see it: a label by its text, a button by its own
/// label; another view by the label that stands last before it among its siblings. nil when there
/// is none. Main thread.
NSString accessibilityLabel(const UIView& view);

/// The same without what the text tells of the view's value, as in "Media (Speaker): 40%" or
/// "Calls: unknown": it stays as it is while the value changes, which is heard on its own. Of a
/// label its whole text. Main thread.
NSString accessibilityName(const UIView& view);

/// What the text says in the value's place, "40%" or "unknown"; nil where it says nothing of it.
NSString accessibilityValue(const UISlider& slider);

/// The labels, sliders and buttons of a subtree that are not hidden, as one reads them: of the
/// views beside each other those that begin further up first, else in document order. Main thread.
std::vector<std::shared_ptr<UIView>> accessibilityElements(const std::shared_ptr<UIView>& root);
