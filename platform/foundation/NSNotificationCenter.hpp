#pragma once

#include "platform/foundation/NSObject.hpp"

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// What observers receive. Lives for the delivery only.
struct NSNotification {
    std::string name;
    const NSObject* object = nullptr;  ///< The sender, or nil.
    PropertyValue userInfo;            ///< A dictionary, or nil.
};

/// Delivers named notifications to their observers, on the thread that posts: here always the main
/// thread. Observers are not owned.
///
///     auto& center = NSNotificationCenter::defaultCenter();
///     center.addObserver(self, &Mixer::volumeChanged, "VolumeDidChange", nullptr);
///     center.postNotificationName("VolumeDidChange", nullptr);
///
/// Delivery is in the order of registration, to the observers registered when the notification was
/// posted:
///
///     - an observer added during the delivery gets the next notification, not this one;
///     - an observer removed or destroyed during the delivery, before its turn, is not called;
///     - an observer registered n times is called n times, and removeObserver() ends all of them;
///     - a notification posted from inside an observer is delivered at once, before the outer one
///       continues;
///     - an exception from an observer ends the delivery and reaches the poster.
class NSNotificationCenter {
 public:
    static NSNotificationCenter& defaultCenter();

    using Handler = std::function<void(const NSNotification&)>;

    /// Calls (observer.*selector)(notification). `name` nil: every name. `object` nil: every
    /// sender. A null observer is ignored.
    template <class T>
    void addObserver(const std::shared_ptr<T>& observer, void (T::*selector)(const NSNotification&),
                     const NSString& name, const NSObject* object) {
        T* target = observer.get();
        add(
            observer, [target, selector](const NSNotification& n) { (target->*selector)(n); }, name,
            object);
    }
    /// The same with a function. It is never called after the observer is gone.
    void add(const std::shared_ptr<NSObject>& observer, Handler handler, const NSString& name,
             const NSObject* object);

    /// Ends every registration of the observer. Safe from inside a destructor, and for an object
    /// that observes nothing.
    void removeObserver(const NSObject* observer);

    /// Whether any observer would receive a notification of that name, from some sender.
    bool isObserved(const std::string& name) const;

    void postNotificationName(const std::string& name, const NSObject* object,
                              const PropertyValue& userInfo = {});

 private:
    struct Registration;
    using Registrations = std::list<std::shared_ptr<Registration>>;
    static constexpr std::size_t smallestSweep = 64;  ///< Registrations.

    void dropRegistrationsOfTheGone();

    Registrations registrations_;  ///< In the order of registration.
    std::unordered_map<const NSObject*, std::vector<Registrations::iterator>> byObserver_;
    std::size_t sizeOfNextSweep_ = smallestSweep;
};
