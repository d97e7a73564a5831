#include "sound/SoundPack.h"

#include <algorithm>

namespace tapalong {

const std::array<SoundPack, 6>& SoundPack::allPacks() {
    static constexpr std::array<SoundPack, 6> packs{{
        {"tink", "Tink", "Light, gentle tap", "Tink"},
        {"pop", "Pop", "Bubbly pop sound", "Pop"},
        {"frog", "Frog", "Quirky ribbit", "Frog"},
        {"funk", "Funk", "Playful boing", "Funk"},
        {"glass", "Glass", "Gentle chime", "Glass"},
        {"morse", "Morse", "Retro telegraph beep", "Morse"},
    }};
    return packs;
}

const SoundPack& SoundPack::packWithID(std::string_view id) {
    const auto& packs = allPacks();
    const auto* const found =
        std::find_if(packs.begin(), packs.end(), [id](const SoundPack& pack) { return pack.id == id; });
    return found != packs.end() ? *found : packs.front();
}

} // namespace tapalong
