#include "platform/uikit/TagIndex.hpp"

#include <algorithm>
#include <utility>

TagIndex::TagIndex(std::vector<Entry> entries) : entries_(std::move(entries)) {
    std::ranges::stable_sort(entries_, {}, &Entry::tag);
    const auto isRepeated = [](const Entry& one, const Entry& next) { return one.tag == next.tag; };
    entries_.erase(std::unique(entries_.begin(), entries_.end(), isRepeated), entries_.end());
    entries_.shrink_to_fit();
}

UIView* TagIndex::find(NSInteger tag) const {
    const auto found = std::ranges::lower_bound(entries_, tag, {}, &Entry::tag);
    return found != entries_.end() && found->tag == tag ? found->view : nullptr;
}
