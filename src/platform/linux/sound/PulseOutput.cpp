#include "platform/linux/sound/PulseOutput.h"

#include <cstdint>
#include <cstdio>
#include <sys/eventfd.h>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace tapalong {

namespace {

constexpr pa_usec_t leastBetweenAttempts = 2 * PA_USEC_PER_SEC;
constexpr std::size_t silenceBeforePause = std::size_t{2} * clipRate;

void saySoundIsOff() {
    (void)std::fputs("Sound is off: no sound server answers.\n", stderr);
}

} // namespace

PulseOutput::PulseOutput() : m_wakeUp(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)), m_loop(pa_threaded_mainloop_new()) {
    m_running = m_wakeUp >= 0 && m_loop != nullptr && start();
    if (!m_running) {
        saySoundIsOff();
    }
}

bool PulseOutput::start() {
    pa_mainloop_api& api = *pa_threaded_mainloop_get_api(m_loop);
    m_wakeUpEvent = api.io_new(
        &api, m_wakeUp, PA_IO_EVENT_INPUT,
        [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* self) {
            static_cast<PulseOutput*>(self)->takeCommands();
        },
        this);
    timeval now{};
    pa_gettimeofday(&now);
    m_startEvent = api.time_new(
        &api, &now,
        [](pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
            static_cast<PulseOutput*>(self)->connect();
        },
        this);
    return pa_threaded_mainloop_start(m_loop) == 0;
}

PulseOutput::~PulseOutput() {
    if (m_loop != nullptr) {
        pa_threaded_mainloop_stop(m_loop);
        pa_mainloop_api& api = *pa_threaded_mainloop_get_api(m_loop);
        m_stream.reset();
        if (m_wakeUpEvent != nullptr) {
            api.io_free(m_wakeUpEvent);
            api.time_free(m_startEvent);
        }
        pa_threaded_mainloop_free(m_loop);
    }
    if (m_wakeUp >= 0) {
        close(m_wakeUp);
    }
}

void PulseOutput::play(SoundId sound, std::shared_ptr<const Clip> clip) {
    post({sound, std::move(clip)});
}

void PulseOutput::stop(SoundId sound) {
    post({sound, nullptr});
}

void PulseOutput::post(Command command) {
    if (!m_running) {
        return;
    }
    {
        const std::lock_guard lock(m_commandsMutex);
        m_commands.push_back(std::move(command));
    }
    // It can only fail when the counter is full, and then the thread is woken anyway.
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(m_wakeUp, &one, sizeof(one));
}

void PulseOutput::takeCommands() {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto size = read(m_wakeUp, &count, sizeof(count));
    std::vector<Command> commands;
    {
        const std::lock_guard lock(m_commandsMutex);
        commands.swap(m_commands);
    }
    if (!m_stream || m_stream->failed()) {
        tryAgain();
        return;
    }
    for (Command& command : commands) {
        if (command.clip == nullptr) {
            m_mixer.stop(command.sound);
        } else {
            m_mixer.play(command.sound, std::move(command.clip));
        }
    }
    if (!m_mixer.silent()) {
        m_silentSamples = 0;
        m_stream->resume();
    }
}

void PulseOutput::connect() {
    m_silentSamples = 0;
    m_stream.emplace(*pa_threaded_mainloop_get_api(m_loop),
                     PulseStream::Handlers{.render = [this](std::span<float> samples) { render(samples); },
                                           .failed = [this] { onFailure(); }});
}

void PulseOutput::onFailure() {
    if (!std::exchange(m_failureSaid, true)) {
        saySoundIsOff();
    }
    m_mixer.clear();
    m_failedAt = pa_rtclock_now();
}

// Not by a timer: it would search files and folders for ever on a machine without a sound server.
void PulseOutput::tryAgain() {
    if (m_stream && pa_rtclock_now() - m_failedAt >= leastBetweenAttempts) {
        connect();
    }
}

void PulseOutput::render(std::span<float> samples) {
    m_silentSamples = m_mixer.silent() ? m_silentSamples + samples.size() : 0;
    m_mixer.render(samples);
    if (m_silentSamples >= silenceBeforePause) {
        m_stream->pause();
    }
}

} // namespace tapalong
