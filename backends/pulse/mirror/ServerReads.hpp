#pragma once

#include "backends/pulse/connection/PulseContext.hpp"
#include "backends/pulse/mirror/ServerMirror.hpp"

#include <pulse/ext-stream-restore.h>
#include <pulse/introspect.h>

#include <string>
#include <vector>

namespace pulse {

// Each reads one part of the server's state. `done` gets nullopt if the server refuses; for restore
// entries that means that it has none.

void readServer(PulseContext& context, Query<ServerInfo>::Done done);
void readSinks(PulseContext& context, Query<DeviceMap>::Done done);
void readSources(PulseContext& context, Query<DeviceMap>::Done done);
void readClients(PulseContext& context, Query<ClientMap>::Done done);
void readSinkInputs(PulseContext& context, Query<SinkInputList>::Done done);
void readSourceOutputs(PulseContext& context, Query<SourceOutputList>::Done done);
void readRestoreEntries(PulseContext& context, Query<RestoreEntryMap>::Done done);

/// Copies the part of the library's description that the mirror contains. Missing texts become
/// empty, and objects without a name are left out.
void add(DeviceMap& devices, const pa_sink_info& info);
void add(DeviceMap& devices, const pa_source_info& info);
void add(ClientMap& clients, const pa_client_info& info);
void add(SinkInputList& streams, const pa_sink_input_info& info);
void add(SourceOutputList& recordings, const pa_source_output_info& info);
void add(RestoreEntryMap& entries, const pa_ext_stream_restore_info& info);
ServerInfo copyOf(const pa_server_info& info);

/// The names in "a b" or in the JSON array ["a","b"].
std::vector<std::string> namesInList(const std::string& text);

}  // namespace pulse
