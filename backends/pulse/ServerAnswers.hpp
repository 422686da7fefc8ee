#pragma once

#include "backends/pulse/ServerMirror.hpp"

#include <pulse/ext-stream-restore.h>
#include <pulse/introspect.h>

namespace pulse {

/// What the mirror keeps of the library's descriptions. Missing texts become empty, and what has
/// no name to be found by is left out.
void add(DeviceMap& devices, const pa_sink_info& info);
void add(DeviceMap& devices, const pa_source_info& info);
void add(ClientMap& clients, const pa_client_info& info);
void add(StreamList& streams, const pa_sink_input_info& info);
void add(RecordingList& recordings, const pa_source_output_info& info);
void add(RoleEntryMap& entries, const pa_ext_stream_restore_info& info);
ServerInfo copyOf(const pa_server_info& info);

/// The names in "a b" or in the JSON array ["a","b"].
std::vector<std::string> namesInList(const std::string& text);

}  // namespace pulse
