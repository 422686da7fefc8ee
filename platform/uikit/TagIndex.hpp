#pragma once

#include "platform/foundation/NSString.hpp"

#include <vector>

class UIView;

/// Finds views by their tags, in the time of a binary search. Knows the views by address alone and
/// keeps none alive.
class TagIndex {
 public:
    struct Entry {
        NSInteger tag;
        UIView* view;
    };

    /// Of several views with the same tag it finds the first.
    explicit TagIndex(std::vector<Entry> entries);
    /// nullptr when no view has the tag.
    UIView* find(NSInteger tag) const;

 private:
    std::vector<Entry> entries_;  ///< By tag, each tag once.
};
