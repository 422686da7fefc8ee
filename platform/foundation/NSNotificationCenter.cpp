#include "platform/foundation/NSNotificationCenter.hpp"

#include <algorithm>
#include <utility>
#include <vector>

struct NSNotificationCenter::Registration {
    std::weak_ptr<NSObject> observer;
    const NSObject* identity = nullptr;  ///< Still tells which observer it was once it is gone.
    Handler handler;
    NSString name;
    const NSObject* object = nullptr;
    bool isEnded = false;

    bool matches(const NSNotification& notification) const {
        return (!name || *name == notification.name) && (!object || object == notification.object);
    }
};

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
    // Never destroyed: observers end their registrations in their destructors, some of them while
    // the process ends.
    static auto& center = *std::make_unique<NSNotificationCenter>().release();
    return center;
}

void NSNotificationCenter::add(const std::shared_ptr<NSObject>& observer, Handler handler,
                               const NSString& name, const NSObject* object) {
    if (!observer || !handler) return;
    if (registrations_.size() >= sizeOfNextSweep_) dropRegistrationsOfTheGone();
    Registration registration{observer, observer.get(), std::move(handler), name, object, false};
    registrations_.push_back(std::make_shared<Registration>(std::move(registration)));
    byObserver_[observer.get()].push_back(std::prev(registrations_.end()));
}

void NSNotificationCenter::removeObserver(const NSObject* observer) {
    // Out of the lists before any handler is destroyed: that may come back here.
    const auto ended = byObserver_.extract(observer);
    if (ended.empty()) return;
    Registrations dropped;
    for (const auto& place : ended.mapped()) {
        (*place)->isEnded = true;
        dropped.splice(dropped.end(), registrations_, place);
    }
}

bool NSNotificationCenter::isObserved(const std::string& name) const {
    return std::ranges::any_of(registrations_, [&](const auto& registration) {
        const bool concerned = !registration->name || *registration->name == name;
        return concerned && !registration->observer.expired();
    });
}

void NSNotificationCenter::postNotificationName(const std::string& name, const NSObject* object,
                                                const PropertyValue& userInfo) {
    const NSNotification notification{name, object, userInfo};
    std::vector<std::shared_ptr<Registration>> receivers;
    for (const auto& registration : registrations_) {
        if (registration->matches(notification)) receivers.push_back(registration);
    }
    for (const auto& registration : receivers) {
        if (registration->isEnded) continue;
        // Held, so that an observer may let go of itself while it is being called.
        const auto observer = registration->observer.lock();
        if (observer) registration->handler(notification);
    }
}

/// Destroyed observers leave their registrations behind. They are swept when the number of
/// registrations has doubled, so that a sweep costs little for each.
void NSNotificationCenter::dropRegistrationsOfTheGone() {
    std::vector<const NSObject*> gone;
    for (const auto& [identity, places] : byObserver_) {
        const bool isGone = std::ranges::all_of(
            places, [](const auto& place) { return (*place)->observer.expired(); });
        if (isGone) gone.push_back(identity);
    }
    for (const NSObject* identity : gone)
        removeObserver(identity);
    sizeOfNextSweep_ = std::max(smallestSweep, 2 * registrations_.size());
}
