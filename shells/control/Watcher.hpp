#pragma once

#include "config/CategoryList.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "shells/control/CategoryReport.hpp"
#include "shells/control/Service.hpp"

#include <functional>
#include <vector>

namespace control {

/// Tells of every change of what the categories show, as the difference from what was told last.
class Watcher {
 public:
    using Tell = std::function<void(const CategoryReport&)>;

    /// `service` outlives it. What the categories show now counts as told.
    Watcher(Service& service, CategoryList categories, Tell tell);
    ~Watcher();
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

 private:
    void compare();

    Service& service_;
    CategoryList categories_;
    Tell tell_;
    std::vector<CategoryReport> told_;
    std::shared_ptr<NSObject> observer_ = std::make_shared<NSObject>();
};

}  // namespace control
