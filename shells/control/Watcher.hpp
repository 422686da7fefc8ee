#pragma once

#include "config/CategoryList.hpp"
#include "platform/foundation/NSNotificationCenter.hpp"
#include "shells/control/CategoryReport.hpp"
#include "shells/control/Service.hpp"

#include <functional>
#include <string>
#include <vector>

namespace control {

/// Tells the line of a category whenever it has become another.
class Watcher {
 public:
    using LineFor = std::function<std::string(const CategoryReport&)>;
    using Tell = std::function<void(const std::string& line)>;

    /// `service` outlives it. What the lines are now counts as told.
    Watcher(Service& service, CategoryList categories, LineFor lineFor, Tell tell);
    ~Watcher();
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

 private:
    std::string lineNow(const CategoryRecord& record) const {
        return lineFor_(reportOf(record, service_.volumes()));
    }
    void compare();

    Service& service_;
    CategoryList categories_;
    LineFor lineFor_;
    Tell tell_;
    std::vector<std::string> told_;
    std::shared_ptr<NSObject> observer_ = std::make_shared<NSObject>();
};

}  // namespace control
