#include "platform/linux/sound/Mixer.h"

#include "base/Fatal.h"

#include <algorithm>
#include <utility>

namespace tapalong {

float Mixer::Voice::next() {
    const float sample = clip->samples[position++];
    if (!cut) {
        return sample;
    }
    --fadeLeft;
    return sample * static_cast<float>(fadeLeft) / static_cast<float>(fadeLength);
}

void Mixer::play(SoundId sound, std::shared_ptr<const Clip> clip) {
    verify(clip != nullptr && !clip->samples.empty(), "a sound has a clip with samples");
    stop(sound);
    m_voices.push_back({.sound = sound, .clip = std::move(clip)});
}

void Mixer::stop(SoundId sound) {
    // A voice of which nothing was rendered yet has nothing to fade. Dropping it also keeps the list short while no
    // server asks for samples.
    std::erase_if(m_voices, [&](const Voice& voice) { return voice.sound == sound && voice.position == 0; });
    for (Voice& voice : m_voices) {
        voice.cut = voice.cut || voice.sound == sound;
    }
}

void Mixer::render(std::span<float> samples) {
    std::fill(samples.begin(), samples.end(), 0.0F);
    for (Voice& voice : m_voices) {
        for (std::size_t i = 0; i < samples.size() && !voice.over(); ++i) {
            samples[i] += voice.next();
        }
    }
    std::erase_if(m_voices, [](const Voice& voice) { return voice.over(); });
    for (float& sample : samples) {
        sample = std::clamp(sample, -1.0F, 1.0F);
    }
}

} // namespace tapalong
