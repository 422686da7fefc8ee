#include "backends/pulse/writes/ConnectedServer.hpp"

#include <pulse/def.h>
#include <pulse/ext-stream-restore.h>
#include <pulse/introspect.h>
#include <pulse/sample.h>
#include <pulse/timeval.h>

#include <cstdint>
#include <optional>
#include <set>
#include <utility>

namespace pulse {

namespace {

WritableServer::Answered forgivingEnded(const Target& target, WritableServer::Answered answered) {
    if (target.kind != Target::Kind::SinkInput) return answered;
    return [answered = std::move(answered)](int error) {
        answered(error == PA_ERR_NOENTITY ? int{PA_OK} : error);
    };
}

}  // namespace

void ConnectedServer::setVolume(const Target& target, const pa_cvolume& volume, Answered answered) {
    pa_context* const server = context_.handle();
    Acknowledgement& query = context_.expect(forgivingEnded(target, std::move(answered)));
    const char* name = target.name.c_str();
    pa_operation* begun = nullptr;
    if (target.kind == Target::Kind::Source)
        begun = pa_context_set_source_volume_by_name(server, name, &volume, acknowledged, &query);
    else if (target.kind == Target::Kind::SinkInput)
        begun = pa_context_set_sink_input_volume(server, target.sinkInputIndex, &volume,
                                                 acknowledged, &query);
    else
        begun = pa_context_set_sink_volume_by_name(server, name, &volume, acknowledged, &query);
    context_.await(query, begun);
}

void ConnectedServer::setMute(const Target& target, Mute mute, Answered answered) {
    pa_context* const server = context_.handle();
    Acknowledgement& query = context_.expect(forgivingEnded(target, std::move(answered)));
    const char* name = target.name.c_str();
    const int isMuted = mute == Mute::On ? 1 : 0;
    pa_operation* begun = nullptr;
    if (target.kind == Target::Kind::Source)
        begun = pa_context_set_source_mute_by_name(server, name, isMuted, acknowledged, &query);
    else if (target.kind == Target::Kind::SinkInput)
        begun = pa_context_set_sink_input_mute(server, target.sinkInputIndex, isMuted, acknowledged,
                                               &query);
    else
        begun = pa_context_set_sink_mute_by_name(server, name, isMuted, acknowledged, &query);
    context_.await(query, begun);
}

void ConnectedServer::writeEntry(const std::string& name, const RestoreEntry& entry, Apply apply,
                                 Answered answered) {
    pa_ext_stream_restore_info info{};
    info.name = name.c_str();
    info.device = entry.device.empty() ? nullptr : entry.device.c_str();
    info.volume = entry.volume;
    info.mute = entry.mute == Mute::On ? 1 : 0;
    pa_channel_map_init_stereo(&info.channel_map);
    const int atOnce = apply == Apply::Now ? 1 : 0;
    Acknowledgement& query = context_.expect(std::move(answered));
    context_.await(query, pa_ext_stream_restore_write(context_.handle(), PA_UPDATE_REPLACE, &info,
                                                      1, atOnce, acknowledged, &query));
}

void ConnectedServer::loadModule(const std::string& module, const std::string& arguments,
                                 Answered answered) {
    const auto loaded = +[](pa_context*, std::uint32_t index, void* query) {
        auto& acknowledgement = *static_cast<Acknowledgement*>(query);
        if (index == PA_INVALID_INDEX)
            acknowledgement.fail();
        else
            acknowledgement.succeed();
    };
    Acknowledgement& query = context_.expect(std::move(answered));
    context_.await(query, pa_context_load_module(context_.handle(), module.c_str(),
                                                 arguments.c_str(), loaded, &query));
}

void ConnectedServer::askForModule(const std::string& module,
                                   std::function<void(bool isLoaded)> answered) {
    using Names = std::set<std::string>;
    const auto gathered = +[](pa_context*, const pa_module_info* info, int end, void* userdata) {
        auto& query = *static_cast<Query<Names>*>(userdata);
        if (end < 0)
            query.fail();
        else if (end > 0)
            query.succeed();
        else if (info && info->name)
            query.result.insert(info->name);
    };
    context_.ask<Names>(
        "modules",
        [module, answered = std::move(answered)](const std::optional<Names>& names) {
            answered(names && names->contains(module));
        },
        [&](pa_context* context, void* query) {
            return pa_context_get_module_info_list(context, gathered, query);
        });
}

void ConnectedServer::unloadModule(std::uint32_t index, Answered answered) {
    Acknowledgement& query = context_.expect(std::move(answered));
    context_.await(query, pa_context_unload_module(context_.handle(), index, acknowledged, &query));
}

void ConnectedServer::setDefaultSink(const std::string& sink, Answered answered) {
    Acknowledgement& query = context_.expect(std::move(answered));
    context_.await(
        query, pa_context_set_default_sink(context_.handle(), sink.c_str(), acknowledged, &query));
}

void ConnectedServer::moveSinkInput(std::uint32_t index, const std::string& sink,
                                    Answered answered) {
    Acknowledgement& query = context_.expect(std::move(answered));
    context_.await(query, pa_context_move_sink_input_by_name(context_.handle(), index, sink.c_str(),
                                                             acknowledged, &query));
}

void SinkWaker::StreamDeleter::operator()(pa_stream* stream) const {
    pa_stream_set_read_callback(stream, nullptr, nullptr);
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}

void SinkWaker::wake(pa_context* context, const std::string& sink, std::function<void()> ended) {
    wakes_.erase(sink);
    Wake& wake = wakes_[sink];
    wake.finish = [this, sink, ended = std::move(ended)] {
        const auto over =
            wakes_.extract(sink);  // Keeps the running callback and its captures alive.
        ended();
    };
    wake.end.start(longestSeconds, wake.finish);
    record(wake, context, sink + ".monitor");
}

void SinkWaker::record(Wake& wake, pa_context* context, const std::string& monitor) {
    constexpr pa_sample_spec mono = {.format = PA_SAMPLE_S16NE, .rate = 48000, .channels = 1};
    wake.stream.reset(pa_stream_new(context, "Volume", &mono, nullptr));
    if (!wake.stream) return wake.end.start(0, wake.finish);
    pa_stream_set_read_callback(
        wake.stream.get(),
        [](pa_stream*, std::size_t, void* data) {
            auto& heard = *static_cast<Wake*>(data);
            heard.end.start(0, heard.finish);
        },
        &wake);
    pa_stream_set_state_callback(
        wake.stream.get(),
        [](pa_stream* stream, void* data) {
            auto& changed = *static_cast<Wake*>(data);
            if (!PA_STREAM_IS_GOOD(pa_stream_get_state(stream)))
                changed.end.start(0, changed.finish);
        },
        &wake);
    pa_buffer_attr small{};
    small.maxlength = static_cast<std::uint32_t>(-1);
    small.fragsize = static_cast<std::uint32_t>(pa_usec_to_bytes(10 * PA_USEC_PER_MSEC, &mono));
    if (pa_stream_connect_record(wake.stream.get(), monitor.c_str(), &small, PA_STREAM_DONT_MOVE) <
        0)
        wake.end.start(0, wake.finish);
}

}  // namespace pulse
