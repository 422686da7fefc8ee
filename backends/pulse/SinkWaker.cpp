#include "backends/pulse/SinkWaker.hpp"

#include <pulse/def.h>
#include <pulse/sample.h>
#include <pulse/timeval.h>

#include <cstdint>
#include <utility>

namespace pulse {

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
        const auto over = wakes_.extract(sink);  // Holds this call and what it has captured.
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
