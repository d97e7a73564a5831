#pragma once

#include <functional>
#include <pulse/pulseaudio.h>
#include <span>

namespace tapalong {

/// One attempt at one playback stream on one sound server: it connects, becomes ready or fails, and never comes back
/// from a failure. Lives wholly on the thread of the main loop whose interface it is given; no call waits for the
/// server.
class PulseStream {
public:
    struct Handlers {
        std::function<void(std::span<float>)> render; ///< fill with the next samples (mono, clipRate)
        std::function<void()> failed; ///< once, perhaps from the constructor; the stream is still alive then
    };

    /// Connects to the server that the user's environment and configuration name; starts none.
    PulseStream(pa_mainloop_api& api, Handlers handlers);
    ~PulseStream();
    PulseStream(const PulseStream&) = delete;
    PulseStream& operator=(const PulseStream&) = delete;

    [[nodiscard]] bool failed() const { return m_failed; }

    /// A paused stream costs no processor time on either side. Nothing happens before the stream is ready: it starts
    /// running.
    void pause() { cork(true); }
    void resume() { cork(false); }

private:
    void onContextState();
    void onStreamState();
    void onWritable(std::size_t bytes);
    void openStream();
    void cork(bool paused);
    void fail();

    Handlers m_handlers;
    pa_context* m_context = nullptr;
    pa_stream* m_stream = nullptr;
    bool m_failed = false;
    bool m_paused = false;
};

} // namespace tapalong
