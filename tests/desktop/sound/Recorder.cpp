#include "Recorder.h"

#include "PrivateServer.h"
#include "base/Fatal.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <thread>

namespace tapalong::test {

namespace {

class Locked {
public:
    explicit Locked(pa_threaded_mainloop* loop) : m_loop(loop) { pa_threaded_mainloop_lock(m_loop); }
    ~Locked() { pa_threaded_mainloop_unlock(m_loop); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

private:
    pa_threaded_mainloop* m_loop;
};

void wake(void* loop) {
    pa_threaded_mainloop_signal(static_cast<pa_threaded_mainloop*>(loop), 0);
}

} // namespace

Recorder::Recorder() : m_loop(pa_threaded_mainloop_new()) {
    verify(m_loop != nullptr && pa_threaded_mainloop_start(m_loop) == 0, "the recorder's thread starts");
    for (int attempt = 0; attempt < 200; ++attempt) {
        if (connect() && openStream()) {
            return;
        }
        disconnect();
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    fatal("the private sound server is up within 20 s (is pulseaudio installed?)");
}

Recorder::~Recorder() {
    disconnect();
    pa_threaded_mainloop_stop(m_loop);
    pa_threaded_mainloop_free(m_loop);
}

bool Recorder::connect() {
    const Locked locked(m_loop);
    m_context = pa_context_new(pa_threaded_mainloop_get_api(m_loop), "Recorder");
    pa_context_set_state_callback(
        m_context, [](pa_context*, void* loop) { wake(loop); }, m_loop);
    if (pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        return false;
    }
    for (;;) {
        const auto state = pa_context_get_state(m_context);
        if (state == PA_CONTEXT_READY || !PA_CONTEXT_IS_GOOD(state)) {
            return state == PA_CONTEXT_READY;
        }
        pa_threaded_mainloop_wait(m_loop);
    }
}

bool Recorder::openStream() {
    const Locked locked(m_loop);
    const pa_sample_spec format{.format = PA_SAMPLE_FLOAT32NE, .rate = 48'000, .channels = 1};
    m_stream = pa_stream_new(m_context, "Recording", &format, nullptr);
    pa_stream_set_state_callback(
        m_stream, [](pa_stream*, void* loop) { wake(loop); }, m_loop);
    pa_stream_set_read_callback(
        m_stream, [](pa_stream*, std::size_t, void* self) { static_cast<Recorder*>(self)->onData(); }, this);
    constexpr auto serverChooses = static_cast<std::uint32_t>(-1);
    const pa_buffer_attr sizes{.maxlength = serverChooses,
                               .tlength = serverChooses,
                               .prebuf = serverChooses,
                               .minreq = serverChooses,
                               .fragsize = 48'000 / 100 * sizeof(float)};
    const std::string monitor = std::string(sinkName) + ".monitor";
    if (pa_stream_connect_record(m_stream, monitor.c_str(), &sizes, PA_STREAM_ADJUST_LATENCY) < 0) {
        return false;
    }
    while (m_samples.empty()) {
        if (!PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream))) {
            return false;
        }
        pa_threaded_mainloop_wait(m_loop);
    }
    return true;
}

void Recorder::disconnect() {
    const Locked locked(m_loop);
    if (m_stream != nullptr) {
        pa_stream_set_state_callback(m_stream, nullptr, nullptr);
        pa_stream_set_read_callback(m_stream, nullptr, nullptr);
        pa_stream_disconnect(m_stream);
        pa_stream_unref(m_stream);
        m_stream = nullptr;
    }
    if (m_context != nullptr) {
        pa_context_set_state_callback(m_context, nullptr, nullptr);
        pa_context_disconnect(m_context);
        pa_context_unref(m_context);
        m_context = nullptr;
    }
}

void Recorder::onData() {
    const void* data = nullptr;
    std::size_t size = 0;
    while (pa_stream_readable_size(m_stream) > 0 && pa_stream_peek(m_stream, &data, &size) == 0 && size > 0) {
        const std::size_t count = size / sizeof(float);
        if (data == nullptr) {
            m_lossy = true;
            m_samples.resize(m_samples.size() + count);
        } else {
            const auto* samples = static_cast<const float*>(data);
            m_samples.insert(m_samples.end(), samples, samples + count);
        }
        pa_stream_drop(m_stream);
    }
    wake(m_loop);
}

std::vector<float> Recorder::samples() const {
    const Locked locked(m_loop);
    return m_samples;
}

void Recorder::clear() {
    const Locked locked(m_loop);
    m_samples.clear();
    m_lossy = false;
}

bool Recorder::lossy() const {
    const Locked locked(m_loop);
    return m_lossy;
}

Recorder::Streams Recorder::playbackStreams() const {
    struct Answer {
        Streams streams;
        pa_threaded_mainloop* loop;
    } answer{{}, m_loop};
    const Locked locked(m_loop);
    pa_operation* operation = pa_context_get_sink_input_info_list(
        m_context,
        [](pa_context*, const pa_sink_input_info* input, int end, void* data) {
            auto* to = static_cast<Answer*>(data);
            if (end == 0) {
                ++(input->corked != 0 ? to->streams.paused : to->streams.running);
            } else {
                wake(to->loop);
            }
        },
        &answer);
    verify(operation != nullptr, "the private server can be asked for its streams");
    while (pa_operation_get_state(operation) == PA_OPERATION_RUNNING) {
        pa_threaded_mainloop_wait(m_loop);
    }
    pa_operation_unref(operation);
    return answer.streams;
}

} // namespace tapalong::test
