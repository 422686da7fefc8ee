#pragma once

#include <gio/gio.h>

#include <atomic>
#include <string>
#include <thread>

namespace test {

/// A screen reader's ears for keys: hears each key that a program tells of and takes one of them
/// for itself. Works in a thread of its own, since a program waits for the answer.
class KeyTaker {
 public:
    /// `busAddress` is that of the accessibility bus. The key is named by the library's name for
    /// its symbol: "F7".
    KeyTaker(std::string busAddress, std::string takenKey);
    ~KeyTaker();
    KeyTaker(const KeyTaker&) = delete;
    KeyTaker& operator=(const KeyTaker&) = delete;

    /// Whether the service has accepted it; false until then. The main loop is woken when it has.
    bool isListening() const { return listening_; }
    int heard() const { return heard_; }
    int taken() const { return taken_; }

 private:
    void work();
    void listen(GDBusConnection* bus);
    static void answer(GDBusConnection* bus, const char* sender, const char* path,
                       const char* interface, const char* method, GVariant* arguments,
                       GDBusMethodInvocation* invocation, gpointer taker);

    std::string busAddress_;
    std::string takenKey_;
    GMainContext* context_;
    std::atomic<bool> ended_ = false;
    std::atomic<bool> listening_ = false;
    std::atomic<int> heard_ = 0;
    std::atomic<int> taken_ = 0;
    std::thread thread_;
};

}  // namespace test
