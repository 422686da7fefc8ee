#pragma once

#include "backends/pulse/PulseContext.hpp"
#include "backends/pulse/ServerMirror.hpp"

namespace pulse {

// Each asks for one part of the server's state. `done` gets nullopt when the server refuses; for
// role entries that means that it keeps none.

void readServer(PulseContext& context, Query<ServerInfo>::Done done);
void readSinks(PulseContext& context, Query<DeviceMap>::Done done);
void readSources(PulseContext& context, Query<DeviceMap>::Done done);
void readClients(PulseContext& context, Query<ClientMap>::Done done);
void readStreams(PulseContext& context, Query<StreamList>::Done done);
void readRecordings(PulseContext& context, Query<RecordingList>::Done done);
void readRoleEntries(PulseContext& context, Query<RoleEntryMap>::Done done);

}  // namespace pulse
