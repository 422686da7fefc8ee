#include "shells/control/Watcher.hpp"

#include <utility>

namespace control {

Watcher::Watcher(Service& service, CategoryList categories, LineFor lineFor, Tell tell)
    : service_(service),
      categories_(std::move(categories)),
      lineFor_(std::move(lineFor)),
      tell_(std::move(tell)) {
    for (const CategoryRecord& record : categories_)
        told_.push_back(lineNow(record));
    NSNotificationCenter::defaultCenter().add(
        observer_, [this](const NSNotification&) { compare(); },
        AVSystemController_EffectiveVolumeDidChangeNotification, nullptr);
    service_.volumes().setAvailabilityHandler([this] { compare(); });
}

Watcher::~Watcher() {
    service_.volumes().setAvailabilityHandler({});
    NSNotificationCenter::defaultCenter().removeObserver(observer_.get());
}

void Watcher::compare() {
    for (std::size_t i = 0; i < categories_.size(); ++i) {
        const std::string now = lineNow(categories_[i]);
        if (std::exchange(told_[i], now) != now) tell_(now);
    }
}

}  // namespace control
