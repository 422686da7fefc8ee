#include "backends/pulse/ServerWrites.hpp"

#include <pulse/ext-stream-restore.h>
#include <pulse/introspect.h>

#include <memory>
#include <utility>

namespace pulse {
namespace {

using Answered = PulseContext::Answered;
using Callback = pa_context_success_cb_t;

void writeVolume(PulseContext& context, const TargetWrite& write, const Answered& answered) {
    const char* name = write.target.name.c_str();
    context.tell(answered, [&](pa_context* server, Callback callback, void* query) {
        switch (write.target.kind) {
            case Target::Kind::Source:
                return pa_context_set_source_volume_by_name(server, name, &*write.volume, callback,
                                                            query);
            case Target::Kind::Stream:
                return pa_context_set_sink_input_volume(server, write.target.streamIndex,
                                                        &*write.volume, callback, query);
            default:
                return pa_context_set_sink_volume_by_name(server, name, &*write.volume, callback,
                                                          query);
        }
    });
}

void writeMute(PulseContext& context, const TargetWrite& write, const Answered& answered) {
    const char* name = write.target.name.c_str();
    const int mute = write.mute == Mute::On ? 1 : 0;
    context.tell(answered, [&](pa_context* server, Callback callback, void* query) {
        switch (write.target.kind) {
            case Target::Kind::Source:
                return pa_context_set_source_mute_by_name(server, name, mute, callback, query);
            case Target::Kind::Stream:
                return pa_context_set_sink_input_mute(server, write.target.streamIndex, mute,
                                                      callback, query);
            default:
                return pa_context_set_sink_mute_by_name(server, name, mute, callback, query);
        }
    });
}

enum class Apply { Later, Now };

void writeEntry(PulseContext& context, const TargetWrite& write, const pa_cvolume& volume,
                Apply apply, const Answered& answered) {
    pa_ext_stream_restore_info entry{};
    entry.name = write.target.name.c_str();
    entry.device = write.rememberedDevice.empty() ? nullptr : write.rememberedDevice.c_str();
    entry.volume = volume;
    entry.mute = write.mute == Mute::On ? 1 : 0;
    pa_channel_map_init_stereo(&entry.channel_map);
    const int atOnce = apply == Apply::Now ? 1 : 0;
    context.tell(answered, [&](pa_context* server, Callback callback, void* query) {
        return pa_ext_stream_restore_write(server, PA_UPDATE_REPLACE, &entry, 1, atOnce, callback,
                                           query);
    });
}

void keepForRole(PulseContext& context, const TargetWrite& write, const Answered& answered) {
    const bool all = write.toStreams == TargetWrite::ToStreams::Everything;
    writeEntry(context, write, write.volume.value_or(pa_cvolume{}), all ? Apply::Now : Apply::Later,
               answered);
}

// An entry without a volume, which moves none. The whole one follows.
void muteStreamsOfRole(PulseContext& context, const TargetWrite& write, const Answered& answered) {
    writeEntry(context, write, {}, Apply::Now, answered);
}

/// The answers that are still to come, and the first refusal among those that have.
class Progress {
 public:
    explicit Progress(std::function<void(int error)> ended) : ended_(std::move(ended)) {}

    /// One more answer that comes.
    void expect() { ++left_; }
    void answered(const Target& target, int error) {
        const bool hasEnded = target.kind == Target::Kind::Stream && error == PA_ERR_NOENTITY;
        if (refusal_ == PA_OK && !hasEnded) refusal_ = error;
        if (--left_ == 0) ended_(refusal_);
    }

 private:
    std::function<void(int error)> ended_;
    std::size_t left_ = 0;
    int refusal_ = PA_OK;
};

using Step = void (*)(PulseContext&, const TargetWrite&, const Answered&);

// What is silenced falls silent before its volume moves, and what is unmuted has its volume before:
// nothing is heard that was not asked for.
std::vector<Step> stepsFor(const TargetWrite& write) {
    std::vector<Step> steps;
    if (write.target.kind == Target::Kind::RoleEntry) {
        if (write.toStreams == TargetWrite::ToStreams::MuteAlone) steps = {muteStreamsOfRole};
        steps.push_back(keepForRole);
        return steps;
    }
    if (write.volume) steps.push_back(writeVolume);
    if (write.mute) steps.insert(write.mute == Mute::On ? steps.begin() : steps.end(), writeMute);
    return steps;
}

}  // namespace

void writeTargets(PulseContext& context, const std::vector<TargetWrite>& writes,
                  const std::function<void(int error)>& written) {
    const auto progress = std::make_shared<Progress>(written);
    progress->expect();  // Until everything is sent.
    for (const TargetWrite& write : writes)
        for (const Step step : stepsFor(write)) {
            progress->expect();
            step(context, write, [progress, target = write.target](int error) {
                progress->answered(target, error);
            });
        }
    progress->answered({}, PA_OK);
}

}  // namespace pulse
