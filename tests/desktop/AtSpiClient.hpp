#pragma once

#include "platform/uikit/Geometry.hpp"

#include <gio/gio.h>

#include <memory>
#include <string>
#include <vector>

namespace test {

/// A session bus for this test program alone, with the accessibility service on it and nothing
/// switched on yet.
class SessionBus {
 public:
    SessionBus();
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

 private:
    GTestDBus* bus_;
};

/// What a screen reader does, over the bus. Every call runs the main loop until it is answered, so
/// that the window of this very process can answer.
class AtSpiClient {
 public:
    /// An object of a program.
    struct Object {
        std::string program;  ///< Its name on the bus; empty for no object.
        std::string path;
    };
    static constexpr unsigned roleFrame = 23;
    static constexpr unsigned roleLabel = 29;
    static constexpr unsigned roleButton = 43;
    static constexpr unsigned roleSlider = 51;
    static constexpr unsigned roleNotification = 101;

    AtSpiClient() = default;
    AtSpiClient(const AtSpiClient&) = delete;
    AtSpiClient& operator=(const AtSpiClient&) = delete;
    ~AtSpiClient();

    /// Of the accessibility bus.
    std::string busAddress();
    /// The session's switch, as a desktop's settings set it.
    void setEnabled(bool enabled);
    /// The program of that name; no object where none of the programs that answer has it.
    Object findProgram(const std::string& name);
    /// The same; waits until it comes.
    Object waitForProgram(const std::string& name);
    std::vector<Object> children(const Object& object);
    std::string name(const Object& object);
    unsigned role(const Object& object);
    double value(const Object& slider);
    double greatestValue(const Object& slider);
    double leastValue(const Object& slider);
    double increment(const Object& slider);
    /// Whether the object has the state, by its number in the protocol.
    bool hasState(const Object& object, unsigned state);
    static constexpr unsigned stateEnabled = 8;
    static constexpr unsigned stateFocusable = 11;
    static constexpr unsigned stateFocused = 12;
    static constexpr unsigned stateSensitive = 24;
    static constexpr unsigned stateShowing = 25;
    /// Left, top, width and height, in the window.
    CGRect extents(const Object& object);
    void setValue(const Object& slider, double value);
    bool grabFocus(const Object& object);
    /// Answers whether the object has an action and did it.
    bool act(const Object& object);
    /// Counts the changes of that property that are told from now on.
    void watch(const std::string& property);
    int toldChanges() const { return toldChanges_; }

    /// An event that a program has told.
    struct Event {
        std::string member;  ///< "Activate", "StateChanged"
        std::string detail;  ///< "showing"; empty where there is none.
        int value = 0;
        Object source;
    };
    /// Keeps the events of that kind that are told from now on, such as "window:activate" or
    /// "object:state-changed:showing".
    void listen(const std::string& kind);
    const std::vector<Event>& events() const { return events_; }

 private:
    struct Unref {
        void operator()(GVariant* variant) const { g_variant_unref(variant); }
        void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
    };
    using Variant = std::unique_ptr<GVariant, Unref>;
    using Connection = std::unique_ptr<GDBusConnection, Unref>;

    GDBusConnection* session();
    GDBusConnection* bus();
    static Variant call(GDBusConnection* connection, const Object& object, const char* interface,
                        const char* method, GVariant* arguments);
    Variant property(const Object& object, const char* interface, const char* name);

    void subscribe(const char* interface, const char* member, GDBusSignalCallback told);
    void hearEvents(const char* interface);

    Connection session_;
    Connection bus_;
    std::vector<guint> subscriptions_;  // On the accessibility bus.
    std::string watched_;
    std::vector<Event> events_;
    bool isHearing_ = false;
    int toldChanges_ = 0;
};

}  // namespace test
