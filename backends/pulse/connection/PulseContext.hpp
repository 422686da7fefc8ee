#pragma once

#include "backends/pulse/connection/Operations.hpp"
#include "platform/foundation/NSString.hpp"

#include <pulse/context.h>
#include <pulse/def.h>
#include <pulse/mainloop-api.h>
#include <pulse/subscribe.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace pulse {

/// The parts of the server's state, each read separately. The server announces changes of all but
/// Clients, which is not subscribed to, because every program that looks at a volume is a client
/// for a moment.
enum class Part { Server, Sinks, Sources, Clients, SinkInputs, SourceOutputs, RestoreEntries };
inline constexpr std::size_t partCount = 7;

/// The result of a request that is answered only by success or failure.
struct Success {};
using Acknowledgement = Query<Success>;
/// The library's callback for such a request; `query` is its Acknowledgement.
void acknowledged(pa_context* context, int success, void* query);

/// One connection to the server, from its attempt to its failure. Afterwards another one is needed.
/// Destroying it cancels everything pending: no callback follows.
class PulseContext {
 public:
    struct Handlers {
        std::function<void()> ready;
        std::function<void()> failed;  ///< From the main run loop; may destroy the context.
        std::function<void(Part)> changed;
    };

    /// Starts to connect; calls nothing from inside. `server` nil: the address in the environment
    /// or the user's configuration. The server knows this program by `applicationName`.
    PulseContext(pa_mainloop_api* api, const NSString& server, const char* applicationName,
                 Handlers handlers);
    PulseContext(const PulseContext&) = delete;
    PulseContext& operator=(const PulseContext&) = delete;
    ~PulseContext();

    /// The library's context, for streams. Valid as long as this object.
    pa_context* handle() const { return context_.get(); }

    /// The server's address; empty without a connection.
    std::string address() const;
    /// Whether the connection failed because the server did not answer a request.
    bool isHung() const { return isHung_; }
    /// Why it failed, in words for users.
    std::string reason() const;

    /// Subscribes to the server's events.
    void subscribe();

    /// Sends a request for `what`: `begin(context, userdata)` starts the library's operation with a
    /// Query<Result> as its callback's user data, and `done` receives the collected result.
    template <class Result, class Begin>
    void ask(const char* what, typename Query<Result>::Done done, const Begin& begin) {
        Query<Result>& query = operations_.expect<Result>(
            [this, what, done = std::move(done)](std::optional<Result> result) {
                if (!result) debugRefusal(std::string("describe ") + what, reasonOfRefusal());
                done(std::move(result));
            });
        operations_.await(query, OperationPtr(begin(context_.get(), static_cast<void*>(&query))));
    }

    /// Creates the query for a request that is answered only by success or failure: start the
    /// operation next, with acknowledged() as its callback and the query as user data, and pass it
    /// to await(). `answered` gets PA_OK, or the library's code for the reason of the refusal.
    Acknowledgement& expect(std::function<void(int error)> answered);
    /// nullptr if the library refused to start it.
    void await(Acknowledgement& query, pa_operation* begun) {
        operations_.await(query, OperationPtr(begun));
    }

 private:
    struct ContextDeleter {
        void operator()(pa_context* context) const { pa_context_unref(context); }
    };

    int reasonOfRefusal() const;
    void debugRefusal(const std::string& request, int error);
    std::function<void(int error)> debuggingRefusalOf(const char* request);
    void stateChanged();
    void failSoon();
    void announce(pa_subscription_event_type_t event) const;

    Handlers handlers_;
    std::unique_ptr<pa_context, ContextDeleter> context_;
    OneShotTimer failure_;
    bool isHung_ = false;
    std::set<std::string> debuggedRefusals_;
    Operations operations_;
};

}  // namespace pulse
