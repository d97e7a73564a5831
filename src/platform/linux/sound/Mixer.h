#pragma once

#include "platform/linux/sound/Clip.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace tapalong {

/// Tells the sounds of one mixer apart.
using SoundId = std::uint64_t;

/// Adds the playing sounds up into one stream of samples. Knows no sound server and no thread: its one user is the
/// thread that fills the stream.
class Mixer {
public:
    /// A sound that is cut fades for 3 ms, since a jump to zero would be heard as a click.
    static constexpr std::size_t fadeLength = 3 * clipRate / 1000;

    /// Starts the sound from its beginning with the next rendered sample. What it still plays is cut.
    void play(SoundId sound, std::shared_ptr<const Clip> clip);

    /// Cuts the sound; one that does not play stays silent.
    void stop(SoundId sound);

    /// Forgets all sounds at once, without a fade.
    void clear() { m_voices.clear(); }

    /// Overwrites `samples` with the next stretch of the mix, each between -1 and 1.
    void render(std::span<float> samples);

    /// Nothing plays and nothing fades: render() would give zeros.
    [[nodiscard]] bool silent() const { return m_voices.empty(); }

private:
    /// One run through a clip. A restarted sound has two for the length of the fade.
    struct Voice {
        SoundId sound;
        std::shared_ptr<const Clip> clip;
        std::size_t position = 0;
        bool cut = false;
        std::size_t fadeLeft = fadeLength;

        [[nodiscard]] bool over() const { return fadeLeft == 0 || position == clip->samples.size(); }
        [[nodiscard]] float next();
    };

    std::vector<Voice> m_voices;
};

} // namespace tapalong
