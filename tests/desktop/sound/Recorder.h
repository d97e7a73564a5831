#pragma once

#include <cstddef>
#include <pulse/pulseaudio.h>
#include <vector>

namespace tapalong::test {

/// Records what a PrivateServer's sink plays: mono, 48 kHz, sample for sample.
class Recorder {
public:
    /// Waits until the server is up and recording runs.
    Recorder();
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Everything since the beginning or the last clear().
    [[nodiscard]] std::vector<float> samples() const;
    void clear();

    /// The server told of stretches that it could not deliver: the recording proves nothing about them.
    [[nodiscard]] bool lossy() const;

    /// How many playback streams the server has that run, and that are paused.
    struct Streams {
        int running = 0;
        int paused = 0;
    };
    [[nodiscard]] Streams playbackStreams() const;

private:
    [[nodiscard]] bool connect();
    [[nodiscard]] bool openStream();
    void disconnect();
    void onData();

    pa_threaded_mainloop* m_loop;
    pa_context* m_context = nullptr;
    pa_stream* m_stream = nullptr;
    std::vector<float> m_samples;
    bool m_lossy = false;
};

} // namespace tapalong::test
