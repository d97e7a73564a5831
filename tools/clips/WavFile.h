#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace tapalong::clips {

/// Writes a mono 16-bit WAV file at `sampleRate`; false when it could not be written whole.
[[nodiscard]] bool writeWav(const std::filesystem::path& path, const std::vector<std::int16_t>& samples);

} // namespace tapalong::clips
