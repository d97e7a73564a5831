#pragma once

#include "platform/linux/sound/Mixer.h"
#include "platform/linux/sound/PulseStream.h"

#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace tapalong {

/// Plays clips on the user's sound server. It has a thread of its own, which keeps a stream open, pauses it after two
/// silent seconds, and looks for a server that is gone when the next sound is played, every two seconds at most.
///
/// play() and stop() only post a command to that thread. They take none of the sound library's locks: the library may
/// hold them while it reads files or asks the display for the server's address.
class PulseOutput {
public:
    /// Starts the thread and returns; the stream becomes ready later or never.
    PulseOutput();
    ~PulseOutput();
    PulseOutput(const PulseOutput&) = delete;
    PulseOutput& operator=(const PulseOutput&) = delete;

    [[nodiscard]] SoundId newSound() { return ++m_lastSound; }

    /// From any thread. Without a server the sound is dropped, not kept for later.
    void play(SoundId sound, std::shared_ptr<const Clip> clip);
    void stop(SoundId sound);

private:
    /// A null clip means stop.
    struct Command {
        SoundId sound;
        std::shared_ptr<const Clip> clip;
    };

    void post(Command command);

    [[nodiscard]] bool start();
    void takeCommands();
    void connect();
    void onFailure();
    void tryAgain();
    void render(std::span<float> samples);

    SoundId m_lastSound = 0;
    bool m_running = false; ///< set once, by the constructor

    std::mutex m_commandsMutex; ///< held only to move commands in or out
    std::vector<Command> m_commands;
    int m_wakeUp = -1; ///< readable while there may be commands

    // From here on: the sound thread's own.
    pa_threaded_mainloop* m_loop = nullptr;
    pa_io_event* m_wakeUpEvent = nullptr;
    pa_time_event* m_startEvent = nullptr; ///< connects, once, on the thread
    std::optional<PulseStream> m_stream;
    Mixer m_mixer;
    std::size_t m_silentSamples = 0;
    bool m_failureSaid = false;
    pa_usec_t m_failedAt = 0;
};

} // namespace tapalong
