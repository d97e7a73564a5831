#pragma once

#include <cstddef>
#include <vector>

namespace tapalong::test {

/// How much `recording` differs from `clip` when the clip begins at `start`, as a share of the clip's own energy, over
/// the clip's samples [from, to). 0 is equal, about 1 is silence.
[[nodiscard]] double difference(const std::vector<float>& recording, std::size_t start, const std::vector<float>& clip,
                                std::size_t from, std::size_t to);

/// The places in `recording` where `clip` begins, in order, at least `apart` samples from each other. A place counts
/// when 20 ms of the recording are those of the clip, after its first 3 ms, which a former sound's fade may cover.
[[nodiscard]] std::vector<std::size_t> findOnsets(const std::vector<float>& recording, const std::vector<float>& clip,
                                                  std::size_t apart);

} // namespace tapalong::test
