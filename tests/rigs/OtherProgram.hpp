#pragma once

#include <pulse/context.h>
#include <pulse/glib-mainloop.h>
#include <pulse/introspect.h>
#include <pulse/stream.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace rigs {

class PlayingStream;
class RecordingStream;

/// Another program that uses the sound server, with a connection of its own on GLib's default main
/// loop. Its calls run that loop until the server has answered, and throw std::runtime_error when
/// it doesn't or refuses.
class OtherProgram {
 public:
    struct Identity {
        std::string name = "Other program";
        unsigned processId = 0;  ///< 0 for this process's own.
    };
    struct Playing {
        std::string role{};  ///< Empty for a stream without one.
        std::string sink{};  ///< Empty for wherever the server puts it.
        unsigned channels = 2;
        float level = 0;  ///< Of every sample, -1 to 1. 0 is silence.
    };

    OtherProgram(const std::string& address, const Identity& identity);
    explicit OtherProgram(const std::string& address) : OtherProgram(address, Identity()) {}
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;
    ~OtherProgram();

    /// The streams end with the answer, or with the program.
    std::unique_ptr<PlayingStream> play(const Playing& playing);
    /// `source` empty for the default one; "NAME.monitor" hears what a device plays.
    std::unique_ptr<RecordingStream> record(const std::string& source = "");

    /// Sets all of the device's channels, without waiting for the answer.
    void sendSinkVolume(const std::string& sink, unsigned volume);
    /// What the server remembers for streams of the role, for as many channels as there are
    /// volumes.
    void writeRoleEntry(const std::string& role, const std::vector<unsigned>& volumes);

    pa_context* context() { return context_.get(); }

 private:
    struct Unref {
        void operator()(pa_glib_mainloop* loop) const { pa_glib_mainloop_free(loop); }
        void operator()(pa_context* context) const { pa_context_unref(context); }
    };
    std::unique_ptr<pa_glib_mainloop, Unref> loop_;
    std::unique_ptr<pa_context, Unref> context_;
};

struct StreamUnref {
    void operator()(pa_stream* stream) const { pa_stream_unref(stream); }
};

/// Plays until its end, whatever is asked for.
class PlayingStream {
 public:
    PlayingStream(pa_context* context, const OtherProgram::Playing& playing);
    PlayingStream(const PlayingStream&) = delete;
    PlayingStream& operator=(const PlayingStream&) = delete;
    ~PlayingStream();

    /// The server's number for it, as a word for the command line client.
    std::string index() const;
    /// What the server says now of its channels, in its units.
    std::vector<unsigned> volumes() const { return ask().volumes; }
    bool isMuted() const { return ask().isMuted; }
    unsigned sinkIndex() const { return ask().sink; }
    /// Of what is written from now on.
    void setLevel(float level) { std::ranges::fill(samples_, level); }

 private:
    struct Answer {
        bool came = false;
        std::vector<unsigned> volumes;
        bool isMuted = false;
        unsigned sink = 0;
    };
    Answer ask() const;

    pa_context* context_;
    std::unique_ptr<pa_stream, StreamUnref> stream_;
    std::vector<float> samples_;
};

/// Hears in stereo.
class RecordingStream {
 public:
    RecordingStream(pa_context* context, const std::string& source);
    RecordingStream(const RecordingStream&) = delete;
    RecordingStream& operator=(const RecordingStream&) = delete;
    ~RecordingStream();

    /// The last sample of each channel, 0 to 1; both 0 until something comes.
    float left() const { return left_; }
    float right() const { return right_; }

    /// Begins to keep the level of the left channel: the mean of each window of 2 ms, 0 to 1.
    void listen() {
        isListening_ = true;
        windows_.clear();
    }
    /// The windows since listen().
    const std::vector<float>& windows() const { return windows_; }
    static constexpr double windowSeconds = 0.002;

 private:
    void read();
    void keep(float sample);

    bool isListening_ = false;
    std::vector<float> windows_;
    float sum_ = 0;
    unsigned count_ = 0;

    std::unique_ptr<pa_stream, StreamUnref> stream_;
    float left_ = 0;
    float right_ = 0;
};

}  // namespace rigs
