#include "platform/linux/sound/PulseStream.h"

#include "platform/linux/sound/Clip.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tapalong {

namespace {

constexpr pa_sample_spec sampleFormat{.format = PA_SAMPLE_FLOAT32NE, .rate = clipRate, .channels = 1};

/// How far the stream is filled ahead: a key is heard about this much later. Shorter ones starve under load.
constexpr int filledAheadMilliseconds = 16;

pa_buffer_attr bufferSizes() {
    constexpr auto serverChooses = static_cast<std::uint32_t>(-1);
    constexpr std::uint32_t ahead = filledAheadMilliseconds * clipRate / 1000 * sizeof(float);
    return {.maxlength = serverChooses,
            .tlength = ahead,
            .prebuf = serverChooses,
            .minreq = ahead / 4,
            .fragsize = serverChooses};
}

} // namespace

PulseStream::PulseStream(pa_mainloop_api& api, Handlers handlers)
    : m_handlers(std::move(handlers)), m_context(pa_context_new(&api, "Tapalong")) {
    if (m_context == nullptr) {
        fail();
        return;
    }
    pa_context_set_state_callback(
        m_context, [](pa_context*, void* self) { static_cast<PulseStream*>(self)->onContextState(); }, this);
    if (pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        fail();
    }
}

PulseStream::~PulseStream() {
    if (m_stream != nullptr) {
        pa_stream_set_state_callback(m_stream, nullptr, nullptr);
        pa_stream_set_write_callback(m_stream, nullptr, nullptr);
        pa_stream_disconnect(m_stream);
        pa_stream_unref(m_stream);
    }
    if (m_context != nullptr) {
        pa_context_set_state_callback(m_context, nullptr, nullptr);
        pa_context_disconnect(m_context);
        pa_context_unref(m_context);
    }
}

void PulseStream::onContextState() {
    const pa_context_state_t state = pa_context_get_state(m_context);
    if (state == PA_CONTEXT_READY) {
        openStream();
    } else if (!PA_CONTEXT_IS_GOOD(state)) {
        fail();
    }
}

void PulseStream::openStream() {
    m_stream = pa_stream_new(m_context, "Key sounds", &sampleFormat, nullptr);
    if (m_stream == nullptr) {
        fail();
        return;
    }
    pa_stream_set_state_callback(
        m_stream, [](pa_stream*, void* self) { static_cast<PulseStream*>(self)->onStreamState(); }, this);
    pa_stream_set_write_callback(
        m_stream, [](pa_stream*, std::size_t bytes, void* self) { static_cast<PulseStream*>(self)->onWritable(bytes); },
        this);
    const pa_buffer_attr sizes = bufferSizes();
    if (pa_stream_connect_playback(m_stream, nullptr, &sizes, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr) < 0) {
        fail();
    }
}

void PulseStream::onStreamState() {
    const pa_stream_state_t state = pa_stream_get_state(m_stream);
    if (!PA_STREAM_IS_GOOD(state)) {
        fail();
    }
}

void PulseStream::onWritable(std::size_t bytes) {
    while (bytes >= sizeof(float)) {
        void* room = nullptr;
        std::size_t size = bytes;
        if (pa_stream_begin_write(m_stream, &room, &size) < 0 || room == nullptr || size < sizeof(float)) {
            return;
        }
        const std::size_t count = std::min(size, bytes) / sizeof(float);
        m_handlers.render({static_cast<float*>(room), count});
        if (pa_stream_write(m_stream, room, count * sizeof(float), nullptr, 0, PA_SEEK_RELATIVE) < 0) {
            return;
        }
        bytes -= count * sizeof(float);
    }
}

void PulseStream::cork(bool paused) {
    if (m_paused == paused || m_failed || m_stream == nullptr || pa_stream_get_state(m_stream) != PA_STREAM_READY) {
        return;
    }
    m_paused = paused;
    if (pa_operation* operation = pa_stream_cork(m_stream, paused ? 1 : 0, nullptr, nullptr); operation != nullptr) {
        pa_operation_unref(operation);
    }
}

void PulseStream::fail() {
    if (!std::exchange(m_failed, true)) {
        m_handlers.failed();
    }
}

} // namespace tapalong
