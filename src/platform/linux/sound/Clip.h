#pragma once

#include <filesystem>
#include <memory>
#include <string_view>
#include <vector>

namespace tapalong {

/// The one sample rate of clips, mixer and stream, so that nothing of ours resamples.
inline constexpr int clipRate = 48'000;

/// A short sound in memory: mono, clipRate samples per second, each between -1 and 1, at least one.
struct Clip {
    std::vector<float> samples;
};

/// Reads `folder`/`name`.wav. Null when there is no such file, when it is no mono sound file at clipRate, or when it
/// lasts longer than ten seconds. `name` is a plain name: one with a slash is not looked for,
/// nor is anything in an empty `folder`.
[[nodiscard]] std::shared_ptr<const Clip> loadClip(const std::filesystem::path& folder, std::string_view name);

} // namespace tapalong
