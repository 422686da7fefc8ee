#include "backends/pulse/ServerReads.hpp"

#include "backends/pulse/ServerAnswers.hpp"

#include <pulse/ext-stream-restore.h>
#include <pulse/introspect.h>

#include <utility>

namespace pulse {
namespace {

// One item of a list, its end (above 0) or its failure (below).
template <class List, class Info>
void gather(pa_context*, const Info* info, int end, void* userdata) {
    auto& query = *static_cast<Query<List>*>(userdata);
    if (end < 0)
        query.fail();
    else if (end > 0)
        query.succeed();
    else if (info)
        add(query.result, *info);
}

void takeServer(pa_context*, const pa_server_info* info, void* userdata) {
    auto& query = *static_cast<Query<ServerInfo>*>(userdata);
    if (!info) return query.fail();
    query.result = copyOf(*info);
    query.succeed();
}

}  // namespace

void readServer(PulseContext& context, Query<ServerInfo>::Done done) {
    context.ask<ServerInfo>(std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_server_info(server, takeServer, query);
    });
}

void readSinks(PulseContext& context, Query<DeviceMap>::Done done) {
    context.ask<DeviceMap>(std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_sink_info_list(server, gather<DeviceMap>, query);
    });
}

void readSources(PulseContext& context, Query<DeviceMap>::Done done) {
    context.ask<DeviceMap>(std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_source_info_list(server, gather<DeviceMap>, query);
    });
}

void readClients(PulseContext& context, Query<ClientMap>::Done done) {
    context.ask<ClientMap>(std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_client_info_list(server, gather<ClientMap>, query);
    });
}

void readStreams(PulseContext& context, Query<StreamList>::Done done) {
    context.ask<StreamList>(std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_sink_input_info_list(server, gather<StreamList>, query);
    });
}

void readRecordings(PulseContext& context, Query<RecordingList>::Done done) {
    context.ask<RecordingList>(std::move(done), [](pa_context* server, void* query) {
        return pa_context_get_source_output_info_list(server, gather<RecordingList>, query);
    });
}

void readRoleEntries(PulseContext& context, Query<RoleEntryMap>::Done done) {
    context.ask<RoleEntryMap>(std::move(done), [](pa_context* server, void* query) {
        return pa_ext_stream_restore_read(server, gather<RoleEntryMap>, query);
    });
}

}  // namespace pulse
