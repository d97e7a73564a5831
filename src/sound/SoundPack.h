#pragma once

#include <array>
#include <string_view>

namespace tapalong {

/// One selectable key sound. The views point to literals.
struct SoundPack {
    std::string_view id; ///< what the settings store
    std::string_view name;
    std::string_view description;
    std::string_view systemSoundName;

    /// The six packs, in the order of the picker.
    [[nodiscard]] static const std::array<SoundPack, 6>& allPacks();
    /// The pack of exactly that id, `tink` when there is none.
    [[nodiscard]] static const SoundPack& packWithID(std::string_view id);

    bool operator==(const SoundPack&) const = default;
};

} // namespace tapalong
