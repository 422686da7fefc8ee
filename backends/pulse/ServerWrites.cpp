#include "backends/pulse/ServerWrites.hpp"

#include <pulse/ext-stream-restore.h>
#include <pulse/introspect.h>

#include <memory>

namespace pulse {
namespace {

using Answered = std::function<void()>;
using Callback = pa_context_success_cb_t;

void writeVolume(PulseContext& context, const TargetWrite& write, const Answered& answered) {
    const char* name = write.target.name.c_str();
    context.tell(answered, [&](pa_context* server, Callback callback, void* query) {
        switch (write.target.kind) {
            case Target::Kind::Source:
                return pa_context_set_source_volume_by_name(server, name, &write.volume, callback,
                                                            query);
            case Target::Kind::Stream:
                return pa_context_set_sink_input_volume(server, write.target.streamIndex,
                                                        &write.volume, callback, query);
            default:
                return pa_context_set_sink_volume_by_name(server, name, &write.volume, callback,
                                                          query);
        }
    });
}

void unmute(PulseContext& context, const Target& target, const Answered& answered) {
    const char* name = target.name.c_str();
    context.tell(answered, [&](pa_context* server, Callback callback, void* query) {
        switch (target.kind) {
            case Target::Kind::Source:
                return pa_context_set_source_mute_by_name(server, name, 0, callback, query);
            case Target::Kind::Stream:
                return pa_context_set_sink_input_mute(server, target.streamIndex, 0, callback,
                                                      query);
            default:
                return pa_context_set_sink_mute_by_name(server, name, 0, callback, query);
        }
    });
}

void writeEntry(PulseContext& context, const TargetWrite& write, const Answered& answered) {
    pa_ext_stream_restore_info entry{};
    entry.name = write.target.name.c_str();
    entry.device = write.rememberedDevice.empty() ? nullptr : write.rememberedDevice.c_str();
    entry.volume = write.volume;
    pa_channel_map_init_stereo(&entry.channel_map);
    context.tell(answered, [&](pa_context* server, Callback callback, void* query) {
        return pa_ext_stream_restore_write(server, PA_UPDATE_REPLACE, &entry, 1, 1, callback,
                                           query);
    });
}

// The volume first: unmuting at the old one could be loud. Answers come in the order of the
// questions, so the last one's stands for all.
void write(PulseContext& context, const TargetWrite& write, const Answered& answered) {
    if (write.target.kind == Target::Kind::RoleEntry) return writeEntry(context, write, answered);
    const bool unmutes = write.muteBefore == Mute::On;
    writeVolume(context, write, unmutes ? Answered() : answered);
    if (unmutes) unmute(context, write.target, answered);
}

}  // namespace

void writeVolumes(PulseContext& context, const std::vector<TargetWrite>& writes,
                  const std::function<void()>& written) {
    if (writes.empty()) return written();
    const auto left = std::make_shared<std::size_t>(writes.size());
    for (const TargetWrite& each : writes)
        write(context, each, [left, written] {
            if (--*left == 0) written();
        });
}

}  // namespace pulse
