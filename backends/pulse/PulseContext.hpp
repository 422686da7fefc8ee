#pragma once

#include "backends/pulse/Operations.hpp"
#include "backends/pulse/ServerMirror.hpp"
#include "platform/foundation/NSString.hpp"

#include <pulse/context.h>
#include <pulse/mainloop-api.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace pulse {

/// The parts of the server's state that are read and announced separately.
enum class Part { Server, Sinks, RoleEntries };

/// One connection to the server, from its attempt to its failure; after that there has to be
/// another. Destroying it withdraws whatever is under way: nothing is called any more.
class PulseContext {
 public:
    struct Handlers {
        std::function<void()> ready;
        std::function<void()> failed;  ///< From the main run loop; may destroy the context.
        std::function<void(Part)> changed;
    };
    using Sinks = std::map<std::string, Sink>;
    using RoleEntries = std::map<std::string, RoleEntry>;
    using Written = std::function<void()>;

    /// Begins to connect; nothing is called from inside. `server` nil: where the environment and
    /// the user's configuration say.
    PulseContext(pa_mainloop_api* api, const NSString& server, Handlers handlers);
    PulseContext(const PulseContext&) = delete;
    PulseContext& operator=(const PulseContext&) = delete;
    ~PulseContext();

    /// Asks to be told of changes.
    void subscribe();

    void readDefaultSinkName(Query<std::string>::Done done);
    void readSinks(Query<Sinks>::Done done);
    /// nullopt when the server keeps none.
    void readRoleEntries(Query<RoleEntries>::Done done);

    /// `written` comes when the server has answered, whatever it said. Both unmute.
    void writeSinkVolume(const std::string& name, Mute muteBefore, const pa_cvolume& volume,
                         Written written);
    void writeRoleVolume(const std::string& entryName, const std::string& device,
                         const pa_cvolume& volume, Written written);

 private:
    struct ContextDeleter {
        void operator()(pa_context* context) const { pa_context_unref(context); }
    };

    void stateChanged();
    void failSoon();

    Handlers handlers_;
    std::unique_ptr<pa_context, ContextDeleter> context_;
    OneShotTimer failure_;
    Operations operations_;
};

}  // namespace pulse
