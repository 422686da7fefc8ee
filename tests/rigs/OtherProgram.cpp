#include "tests/rigs/OtherProgram.hpp"

#include "tests/rigs/Waiting.hpp"

#include <pulse/error.h>
#include <pulse/ext-stream-restore.h>
#include <pulse/proplist.h>
#include <pulse/volume.h>

#include <cmath>
#include <stdexcept>

namespace rigs {
namespace {

using Proplist = std::unique_ptr<pa_proplist, decltype(&pa_proplist_free)>;

Proplist proplist() {
    return {pa_proplist_new(), &pa_proplist_free};
}

[[noreturn]] void fail(pa_context* context, const std::string& what) {
    throw std::runtime_error(what + ": " + pa_strerror(pa_context_errno(context)));
}

constexpr unsigned rate = 48000;

pa_sample_spec samplesOf(unsigned channels) {
    return {PA_SAMPLE_FLOAT32NE, rate, static_cast<uint8_t>(channels)};
}

// 20 ms, so that a new volume is soon heard.
pa_buffer_attr shortBuffer(const pa_sample_spec& samples) {
    const auto bytes = static_cast<uint32_t>(pa_usec_to_bytes(20000, &samples));
    constexpr auto any = static_cast<uint32_t>(-1);
    return {any, bytes, any, any, bytes};
}

void waitForStream(pa_context* context, pa_stream* stream) {
    waitUntil([&] { return pa_stream_get_state(stream) != PA_STREAM_CREATING; });
    if (pa_stream_get_state(stream) != PA_STREAM_READY) fail(context, "no stream");
}

// PipeWire refuses streams while its session manager is not through with a device yet.
template <class Make>
auto untilTaken(const Make& make) {
    decltype(make()) stream;
    std::string refusal;
    const auto taken = [&] {
        try {
            stream = make();
        } catch (const std::runtime_error& error) {
            refusal = error.what();
        }
        return stream != nullptr;
    };
    if (!waitUntil(taken)) throw std::runtime_error(refusal);
    return stream;
}

void release(pa_operation* operation) {
    if (operation) pa_operation_unref(operation);
}

}  // namespace

OtherProgram::OtherProgram(const std::string& address, const Identity& identity)
    : loop_(pa_glib_mainloop_new(nullptr)) {
    const Proplist properties = proplist();
    if (identity.processId)
        pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_PROCESS_ID,
                         std::to_string(identity.processId).c_str());
    context_.reset(pa_context_new_with_proplist(pa_glib_mainloop_get_api(loop_.get()),
                                                identity.name.c_str(), properties.get()));
    pa_context_connect(context_.get(), address.c_str(), PA_CONTEXT_NOAUTOSPAWN, nullptr);
    const auto settled = [this] {
        const pa_context_state_t state = pa_context_get_state(context_.get());
        return state == PA_CONTEXT_READY || !PA_CONTEXT_IS_GOOD(state);
    };
    if (!waitUntil(settled) || pa_context_get_state(context_.get()) != PA_CONTEXT_READY)
        fail(context_.get(), "no connection to " + address);
}

OtherProgram::~OtherProgram() {
    pa_context_disconnect(context_.get());
}

std::unique_ptr<PlayingStream> OtherProgram::play(const Playing& playing) {
    return untilTaken([&] { return std::make_unique<PlayingStream>(context_.get(), playing); });
}

std::unique_ptr<RecordingStream> OtherProgram::record(const std::string& source) {
    return untilTaken([&] { return std::make_unique<RecordingStream>(context_.get(), source); });
}

void OtherProgram::sendSinkVolume(const std::string& sink, unsigned volume) {
    pa_cvolume channels;
    pa_cvolume_set(&channels, 2, volume);
    release(pa_context_set_sink_volume_by_name(context_.get(), sink.c_str(), &channels, nullptr,
                                               nullptr));
}

void OtherProgram::writeRoleEntry(const std::string& role, const std::vector<unsigned>& volumes) {
    const std::string name = "sink-input-by-media-role:" + role;
    pa_ext_stream_restore_info entry{};
    entry.name = name.c_str();
    pa_channel_map_init_auto(&entry.channel_map, static_cast<unsigned>(volumes.size()),
                             PA_CHANNEL_MAP_DEFAULT);
    entry.volume.channels = static_cast<uint8_t>(volumes.size());
    std::copy(volumes.begin(), volumes.end(), entry.volume.values);
    int answer = -1;
    release(pa_ext_stream_restore_write(
        context_.get(), PA_UPDATE_REPLACE, &entry, 1, 1,
        [](pa_context*, int success, void* place) { *static_cast<int*>(place) = success; },
        &answer));
    if (!waitUntil([&] { return answer >= 0; }) || !answer) fail(context_.get(), "no role entry");
}

PlayingStream::PlayingStream(pa_context* context, const OtherProgram::Playing& playing)
    : context_(context), samples_(std::size_t{rate} * playing.channels / 10, playing.level) {
    const Proplist properties = proplist();
    if (!playing.role.empty())
        pa_proplist_sets(properties.get(), PA_PROP_MEDIA_ROLE, playing.role.c_str());
    const pa_sample_spec samples = samplesOf(playing.channels);
    stream_.reset(
        pa_stream_new_with_proplist(context, "sound", &samples, nullptr, properties.get()));
    if (!stream_) fail(context, "no stream");
    const auto fill = [](pa_stream* stream, std::size_t bytes, void* self) {
        const auto& sound = static_cast<PlayingStream*>(self)->samples_;
        const std::size_t most = std::min(bytes, sound.size() * sizeof(float));
        pa_stream_write(stream, sound.data(), most, nullptr, 0, PA_SEEK_RELATIVE);
    };
    pa_stream_set_write_callback(stream_.get(), fill, this);
    const pa_buffer_attr buffer = shortBuffer(samples);
    const char* sink = playing.sink.empty() ? nullptr : playing.sink.c_str();
    if (pa_stream_connect_playback(stream_.get(), sink, &buffer, PA_STREAM_ADJUST_LATENCY, nullptr,
                                   nullptr) < 0)
        fail(context, "no stream");
    waitForStream(context, stream_.get());
}

PlayingStream::~PlayingStream() {
    pa_stream_set_write_callback(stream_.get(), nullptr, nullptr);
    pa_stream_disconnect(stream_.get());
}

std::string PlayingStream::index() const {
    return std::to_string(pa_stream_get_index(stream_.get()));
}

PlayingStream::Answer PlayingStream::ask() const {
    Answer answer;
    const auto keep = [](pa_context*, const pa_sink_input_info* info, int, void* place) {
        auto& kept = *static_cast<Answer*>(place);
        kept.came = true;
        if (!info) return;
        kept.volumes.assign(info->volume.values, info->volume.values + info->volume.channels);
        kept.isMuted = info->mute;
        kept.sink = info->sink;
    };
    pa_operation* operation =
        pa_context_get_sink_input_info(context_, pa_stream_get_index(stream_.get()), keep, &answer);
    // Until its end, as more than one call may come.
    const bool ended = operation && waitUntil([&] {
                           return pa_operation_get_state(operation) != PA_OPERATION_RUNNING;
                       });
    if (!ended && operation) pa_operation_cancel(operation);
    release(operation);
    if (!ended || !answer.came) fail(context_, "the stream cannot be asked for");
    return answer;
}

RecordingStream::RecordingStream(pa_context* context, const std::string& source) {
    const pa_sample_spec samples = samplesOf(2);
    const Proplist properties = proplist();
    stream_.reset(pa_stream_new_with_proplist(context, "ear", &samples, nullptr, properties.get()));
    if (!stream_) fail(context, "no stream");
    pa_stream_set_read_callback(
        stream_.get(),
        [](pa_stream*, std::size_t, void* self) { static_cast<RecordingStream*>(self)->read(); },
        this);
    const pa_buffer_attr buffer = shortBuffer(samples);
    // A monitor that is named goes on being heard when another device becomes the default.
    const auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY |
                                                      (source.empty() ? 0 : PA_STREAM_DONT_MOVE));
    if (pa_stream_connect_record(stream_.get(), source.empty() ? nullptr : source.c_str(), &buffer,
                                 flags) < 0)
        fail(context, "no recording");
    waitForStream(context, stream_.get());
}

RecordingStream::~RecordingStream() {
    pa_stream_set_read_callback(stream_.get(), nullptr, nullptr);
    pa_stream_disconnect(stream_.get());
}

void RecordingStream::read() {
    const void* data = nullptr;
    std::size_t bytes = 0;
    while (pa_stream_readable_size(stream_.get()) > 0 &&
           pa_stream_peek(stream_.get(), &data, &bytes) == 0 && bytes > 0) {
        const std::size_t frames = bytes / (2 * sizeof(float));
        if (data && isListening_)
            for (std::size_t frame = 0; frame < frames; ++frame)
                keep(std::abs(static_cast<const float*>(data)[2 * frame]));
        if (data && frames > 0) {
            const float* last = static_cast<const float*>(data) + 2 * (frames - 1);
            left_ = std::abs(last[0]);
            right_ = std::abs(last[1]);
        }
        pa_stream_drop(stream_.get());
    }
}

void RecordingStream::keep(float sample) {
    constexpr auto samplesInWindow = static_cast<unsigned>(rate * windowSeconds);
    sum_ += sample;
    if (++count_ < samplesInWindow) return;
    windows_.push_back(sum_ / samplesInWindow);
    sum_ = 0;
    count_ = 0;
}

}  // namespace rigs
