#pragma once

#include "backends/pulse/Operations.hpp"
#include "platform/foundation/NSString.hpp"

#include <pulse/context.h>
#include <pulse/def.h>
#include <pulse/mainloop-api.h>
#include <pulse/subscribe.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace pulse {

/// The parts of the server's state that are read separately. Their changes are announced, but for
/// the clients': each program that looks at a volume is one for a moment.
enum class Part { Server, Sinks, Sources, Clients, Streams, Recordings, RoleEntries };
inline constexpr std::size_t partCount = 7;

/// One connection to the server, from its attempt to its failure; after that there has to be
/// another. Destroying it withdraws whatever is under way: nothing is called any more.
class PulseContext {
 public:
    struct Handlers {
        std::function<void()> ready;
        std::function<void()> failed;  ///< From the main run loop; may destroy the context.
        std::function<void(Part)> changed;
    };

    /// Begins to connect; nothing is called from inside. `server` nil: where the environment and
    /// the user's configuration say.
    PulseContext(pa_mainloop_api* api, const NSString& server, Handlers handlers);
    PulseContext(const PulseContext&) = delete;
    PulseContext& operator=(const PulseContext&) = delete;
    ~PulseContext();

    /// The library's own, for streams. Valid as long as this.
    pa_context* handle() const { return context_.get(); }

    /// Why it failed, in a few words for people.
    std::string reason() const;

    /// Asks to be told of changes.
    void subscribe();

    /// Asks the server: `begin(context, userdata)` starts the library's operation with a
    /// Query<Result> as its callback's user data, and `done` is called with what that gathered.
    template <class Result, class Begin>
    void ask(typename Query<Result>::Done done, const Begin& begin) {
        operations_.start<Result>(std::move(done), [&](Query<Result>* query) {
            return begin(context_.get(), static_cast<void*>(query));
        });
    }

    /// The same for what is answered by its success alone: `begin(context, callback, userdata)`.
    /// `answered` comes whatever the server said: with PA_OK, or the library's code for what it
    /// refused it for.
    using Answered = std::function<void(int error)>;
    template <class Begin>
    void tell(Answered answered, const Begin& begin) {
        ask<Success>(
            [this, answered = std::move(answered)](std::optional<Success> success) {
                if (answered) answered(success ? int{PA_OK} : reasonOfRefusal());
            },
            [&](pa_context* context, void* query) { return begin(context, succeeded, query); });
    }

 private:
    struct Success {};
    struct ContextDeleter {
        void operator()(pa_context* context) const { pa_context_unref(context); }
    };

    static void succeeded(pa_context* context, int success, void* userdata);
    int reasonOfRefusal() const;
    void stateChanged();
    void failSoon();
    void announce(pa_subscription_event_type_t event) const;

    Handlers handlers_;
    std::unique_ptr<pa_context, ContextDeleter> context_;
    OneShotTimer failure_;
    Operations operations_;
};

}  // namespace pulse
